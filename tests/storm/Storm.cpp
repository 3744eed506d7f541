#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <iostream>
#include <map>
#include <optional>
#include <thread>

#include "storm/Blows.h"
#include "support/GdiCount.h"
#include "support/Input.h"
#include "support/MessageLoop.h"

// A storm of random messages over flat controls. Each round is played on a flat dialog and on its
// plain twin, one after the other, and both must tell the same of themselves; every eighth round is
// played without a twin, with real input, and anything goes. Whatever the round, it may leave
// nothing behind.
//
//     StormTests6 [--messages N] [--seed S] [--class NAME] [--round N]
//
// The numbers of a round depend on seed, class and round only: what failed can be played alone.

using namespace QkDlgTest;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBlowsPerRound = 200;
constexpr int kBlowsPerLook = 50;
constexpr int kFreeRounds = 8;
// The first three rounds are one of each sort, and so are the two before them.
constexpr int kFirstRound = 5;
constexpr int kWarmUpRounds[] = {1'000'001, 1'000'007};
constexpr std::size_t kTrail = 25;
// The system's caches of device contexts and theme parts grow with the most that was ever in use at
// once, and so now and then, but not on and on.
constexpr int kCaches = 150;
constexpr auto kPatience = std::chrono::seconds(60);

struct Options {
    int messages = 3 * kBlowsPerRound;
    std::uint64_t seed = 1;
    std::string kind;
    std::optional<int> round;
};

std::string current;            ///< what is being played
std::deque<std::string> trail;  ///< its last blows
std::atomic<long long> blows = 0;

void tell(const std::string& what) {
    std::cout << "storm: FAILED: " << current << ": " << what << "\nthe last blows:\n";
    for (const std::string& blow : trail)
        std::cout << "  " << blow << '\n';
    std::cout << std::flush;
}

/// The report of the library ends the process.
void WINAPI exitProcess(UINT status) {
    if (status == 999)
        tell("assertion report");
    TerminateProcess(GetCurrentProcess(), status);
}

LONG CALLBACK onFault(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION ||
        record.ExceptionCode == EXCEPTION_STACK_OVERFLOW) {
        HMODULE module = nullptr;
        char name[MAX_PATH]{};
        GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           static_cast<const char*>(record.ExceptionAddress), &module);
        GetModuleFileNameA(module, name, MAX_PATH);
        std::printf("fault at %p in %s, loaded at %p\n", record.ExceptionAddress, name,
                    static_cast<void*>(module));
        tell("memory fault");
        TerminateProcess(GetCurrentProcess(), 1);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

/// A loop that does not end is a fault like any other.
void watch() {
    long long seen = -1;
    auto since = Clock::now();
    while (true) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        if (blows != seen) {
            seen = blows;
            since = Clock::now();
        } else if (Clock::now() - since > kPatience) {
            tell("no end");
            TerminateProcess(GetCurrentProcess(), 1);
        }
    }
}

/// Where the common controls keep the subclasses of a window. Each look there is a question to
/// Wine's server, and they were half of what a storm had to wait for: so they look into a map.
namespace Properties {

std::map<std::pair<HWND, LPCWSTR>, HANDLE> kept;

HANDLE WINAPI get(HWND window, LPCWSTR name) {
    const auto found = kept.find({window, name});
    return found != kept.end() ? found->second : nullptr;
}
HANDLE WINAPI remove(HWND window, LPCWSTR name) {
    const auto node = kept.extract({window, name});
    return node ? node.mapped() : nullptr;
}
BOOL WINAPI set(HWND window, LPCWSTR name, HANDLE value) {
    kept[{window, name}] = value;
    return TRUE;
}
void forgetEndedWindows() {
    std::erase_if(kept, [](const auto& entry) { return !IsWindow(entry.first.first); });
}

struct Patch {
    HMODULE commonControls = GetModuleHandleW(L"comctl32");
    ImportPatch get{"GetPropW", &Properties::get, commonControls};
    ImportPatch remove{"RemovePropW", &Properties::remove, commonControls};
    ImportPatch set{"SetPropW", &Properties::set, commonControls};
};

}  // namespace Properties

struct Round {
    std::string name;  ///< of a kind, "mixed" or "dialog"
    std::uint64_t seed = 0;
    int number = 0;

    /// Off the screen nothing is painted, and more messages go into a second.
    [[nodiscard]] bool onScreen() const { return number % 4 == 1 || free(); }
    [[nodiscard]] bool free() const { return number % kFreeRounds == kFreeRounds - 1; }
    [[nodiscard]] std::uint64_t dice() const {
        std::uint64_t hash = seed * 1'000'003 + static_cast<std::uint64_t>(number);
        for (const char letter : name)
            hash = hash * 31 + static_cast<unsigned char>(letter);
        return hash;
    }
};

/// Nine of all sorts, or three of the kind that the round is named after.
std::vector<const Kind*> castOf(const Round& round, Dice& dice) {
    std::vector<const Kind*> cast(9);
    for (const Kind*& each : cast)
        each = &dice.one(kinds());
    for (const Kind& kind : kinds()) {
        if (round.name == kind.name)
            cast.assign(3, &kind);
    }
    return cast;
}

/// What was seen during a round, look by look.
std::vector<std::string> play(const Round& round, bool flat, int blowsPerLook,
                              int count = kBlowsPerRound) {
    current = round.name + " --seed " + std::to_string(round.seed) + " --round " +
              std::to_string(round.number) + (flat ? " flat" : " plain");
    trail.clear();
    Dice dice(round.dice());
    Surroundings surroundings;
    std::vector<std::string> looks;
    const Play how = !flat ? Play::Plain : round.name == "dialog" ? Play::Converted : Play::Flat;
    Stage stage(how, round.onScreen(), castOf(round, dice), dice);
    Blows storm(stage, dice, surroundings, round.free());
    for (int i = 1; i <= count; ++i) {
        if (trail.size() == kTrail)
            trail.pop_front();
        storm.strike(trail.emplace_back());
        ++blows;
        if (!round.free() && i % blowsPerLook == 0)
            looks.push_back(stage.state());
    }
    const std::string last = stage.end(dice);
    // A converted dialog keeps its objects.
    if (!round.free() && round.name != "dialog")
        looks.push_back(last);
    drain();
    Properties::forgetEndedWindows();
    return looks;
}

/// Both plays once more, with a look after each blow, and up to the first difference. Some show
/// only to who looks less often, as looking asks the control.
void explain(const Round& round) {
    for (const int blowsPerLook : {1, kBlowsPerLook}) {
        const auto plain = play(round, false, blowsPerLook);
        const auto flat = play(round, true, blowsPerLook);
        const auto [difference, same] = std::mismatch(flat.begin(), flat.end(), plain.begin());
        if (difference == flat.end())
            continue;
        const auto look = static_cast<int>(difference - flat.begin());
        play(round, true, blowsPerLook, std::min((look + 1) * blowsPerLook, kBlowsPerRound));
        std::cout << "plain: " << *same << "\nflat:  " << *difference << '\n';
        return tell("the flat controls tell of themselves what their plain twins do not");
    }
    tell("the twins differed, but no longer do");
}

bool playRound(const Round& round) {
    const auto flat = play(round, true, kBlowsPerLook);
    if (round.free() || play(round, false, kBlowsPerLook) == flat)
        return true;
    explain(round);
    return false;
}

bool leftNothing(const Holdings& before) {
    const Holdings after = holdings();
    if (after.windows == before.windows &&
        after.gdiObjects - after.fonts <= before.gdiObjects - before.fonts + kCaches)
        return true;
    std::cout << "before " << before << ", after " << after << '\n';
    tell("something was left behind");
    return false;
}

bool storm(const std::string& name, const Options& options) {
    const auto begin = Clock::now();
    // The caches of library and system fill first.
    for (const int number : kWarmUpRounds)
        play({name, options.seed, number}, true, kBlowsPerLook);
    const Holdings before = holdings();
    int sent = 0;
    for (int number = options.round.value_or(kFirstRound); sent < options.messages; ++number) {
        if (!playRound({name, options.seed, number}) || !leftNothing(before))
            return false;
        sent += kBlowsPerRound;
        if (options.round)
            break;
    }
    const auto seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    std::cout << "storm: " << name << ": " << sent << " messages, nothing wrong ("
              << static_cast<long long>(static_cast<double>(sent) / seconds) << " a second)"
              << std::endl;
    return true;
}

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        const char* const value = argv[i + 1];
        if (name == "--messages")
            options.messages = std::atoi(value);
        else if (name == "--seed")
            options.seed = std::strtoull(value, nullptr, 10);
        else if (name == "--class")
            options.kind = value;
        else if (name == "--round")
            options.round = std::atoi(value);
        else
            return false;
    }
    return argc % 2 == 1;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options)) {
        std::cout << "usage: StormTests6 [--messages N] [--seed S] [--class NAME] [--round N]\n";
        return 2;
    }
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    AddVectoredExceptionHandler(1, &onFault);
    const ImportPatch exit("ExitProcess", &exitProcess);
    const Properties::Patch properties;
    const QuickInput quick;
    std::thread(watch).detach();
    moveAway();

    std::vector<std::string> names{"mixed", "dialog"};
    for (const Kind& kind : kinds())
        names.insert(names.begin(), kind.name);
    bool passed = true;
    for (const std::string& name : names) {
        if (options.kind.empty() || options.kind == name)
            passed = storm(name, options) && passed;
    }
    std::cout << std::flush;
    return passed ? 0 : 1;
}
