#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <iostream>
#include <thread>

#include "Messages.h"
#include "support/FaultWatch.h"
#include "support/GdiCount.h"
#include "support/Input.h"
#include "support/MessageLoop.h"

// A storm of random messages over flat controls. Each round is played on a flat dialog and on its
// plain twin, one after the other, and both must tell the same of themselves; every fourth round is
// played without a twin, with real input, and anything goes. Whatever the round, it may leave
// nothing behind.
//
//     StormTests [--messages N] [--seed S] [--class NAME] [--round N]
//
// The numbers of a round depend on seed, class and round only: what failed can be played alone.

using namespace QkDlgTest;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBlowsPerRound = 400;
constexpr int kBlowsPerLook = 20;
constexpr int kFreeRounds = 4;
constexpr int kWarmUpRounds = 8;
constexpr int kWarmUpNumber = 1'000'000;
constexpr int kActors = 3;
constexpr std::size_t kTrail = 25;
// The system's caches of device contexts and theme parts grow with the most that was ever in use at
// once, and so now and then, but not on and on.
constexpr int kCaches = 40;
constexpr auto kPatience = std::chrono::seconds(60);

struct Options {
    long long messages = 4000;
    std::uint64_t seed = 1;
    std::string kind;
    int round = -1;
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

struct Round {
    std::string name;  ///< of a kind, "mixed" or "dialog"
    std::uint64_t seed = 0;
    int number = 0;

    /// Hidden dialogs, where nothing is painted, bear far more messages a second.
    [[nodiscard]] bool visible() const { return number % 2 != 0; }
    [[nodiscard]] bool free() const { return number % kFreeRounds == kFreeRounds - 1; }
    [[nodiscard]] std::uint64_t dice() const {
        std::uint64_t hash = seed * 1'000'003 + static_cast<std::uint64_t>(number);
        for (const char letter : name)
            hash = hash * 31 + static_cast<unsigned char>(letter);
        return hash;
    }
};

std::vector<const Kind*> castOf(const Round& round, Dice& dice) {
    std::vector<const Kind*> cast;
    for (const Kind& kind : kinds()) {
        if (round.name == kind.name)
            cast.assign(kActors, &kind);
    }
    const int all = static_cast<int>(kinds().size());
    while (cast.size() < static_cast<std::size_t>(3 * kActors) &&
           (cast.empty() || round.name == "mixed" || round.name == "dialog")) {
        cast.push_back(&kinds()[static_cast<std::size_t>(dice.roll(all))]);
    }
    return cast;
}

/// What was seen during a round, look by look.
std::vector<std::string> play(const Round& round, bool flat, int blowsPerLook,
                              int count = kBlowsPerRound) {
    Dice dice(round.dice());
    Dice flatDice(round.dice() + 1);
    Surroundings surroundings;
    current = round.name + " --seed " + std::to_string(round.seed) + " --round " +
              std::to_string(round.number) + (flat ? " flat" : " plain");
    trail.clear();
    std::vector<std::string> looks;
    const auto how = !flat                    ? Stage::Play::Plain
                     : round.name == "dialog" ? Stage::Play::Converted
                                              : Stage::Play::Flat;
    Stage stage(how, round.visible(), castOf(round, dice), dice);
    for (int i = 0; i < count; ++i) {
        std::string& told = trail.emplace_back();
        if (trail.size() > kTrail)
            trail.pop_front();
        Blow{stage, dice, flatDice, surroundings, round.free(), told}.strike();
        ++blows;
        if (!round.free() && i % blowsPerLook == 0)
            looks.push_back(stage.state());
    }
    stage.end(dice);
    if (round.free())
        releaseEverything();
    drain();
    return looks;
}

/// Both plays once more, with a look after each blow, and up to the first difference.
void explain(const Round& round) {
    const auto plain = play(round, false, 1);
    const auto flat = play(round, true, 1);
    const auto [difference, same] = std::mismatch(flat.begin(), flat.end(), plain.begin());
    if (difference != flat.end()) {
        play(round, true, 1, static_cast<int>(difference - flat.begin()) + 1);
        std::cout << "plain: " << *same << "\nflat:  " << *difference << '\n';
    }
    tell("the flat controls tell of themselves what their plain twins do not");
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
    for (int i = 0; i < kWarmUpRounds; ++i)
        play({name, options.seed, kWarmUpNumber + i}, true, kBlowsPerLook);
    const Holdings before = holdings();
    long long sent = 0;
    for (int number = std::max(options.round, 0); sent < options.messages; ++number) {
        if (!playRound({name, options.seed, number}) || !leftNothing(before))
            return false;
        sent += kBlowsPerRound;
        if (options.round >= 0)
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
            options.messages = std::atoll(value);
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
        std::cout << "usage: StormTests [--messages N] [--seed S] [--class NAME] [--round N]\n";
        return 2;
    }
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    AddVectoredExceptionHandler(1, &onFault);
    const ImportPatch exit("ExitProcess", &exitProcess);
    const ManualTimers timers;
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
