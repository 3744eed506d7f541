#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <deque>
#include <iostream>
#include <map>
#include <thread>
#include <utility>

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

std::string current;            ///< what is being played
std::deque<std::string> trail;  ///< its last blows
std::atomic<long long> blows = 0;

void tell(const std::string& what) {
    std::cout << "storm: FAILED: " << current << ": " << what << "\nthe last blows:\n";
    for (const std::string& blow : trail)
        std::cout << "  " << blow << '\n';
    std::cout << std::flush;
}

void fail(const char* what) {
    tell(what);
    TerminateProcess(GetCurrentProcess(), 1);
}

/// The report of the library ends the process.
void WINAPI exitProcess(UINT) {
    fail("assertion report");
}

LONG CALLBACK onFault(EXCEPTION_POINTERS* exception) {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_STACK_OVERFLOW)
        fail("memory fault");
    return EXCEPTION_CONTINUE_SEARCH;
}

/// A loop that does not end is a fault like any other.
void watch() {
    for (long long seen = -1; seen != blows; std::this_thread::sleep_for(kPatience))
        seen = blows;
    fail("no end");
}

/// Where the common controls keep the subclasses of a window. Each look there is a question to
/// Wine's server, and they were half of what a storm had to wait for: so they look into a map.
std::map<std::pair<HWND, LPCWSTR>, HANDLE> properties;

HANDLE WINAPI getProperty(HWND window, LPCWSTR name) {
    return properties[{window, name}];
}

HANDLE WINAPI removeProperty(HWND window, LPCWSTR name) {
    return std::exchange(properties[{window, name}], nullptr);
}

BOOL WINAPI setProperty(HWND window, LPCWSTR name, HANDLE value) {
    properties[{window, name}] = value;
    return TRUE;
}

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
std::vector<std::string> play(const Round& round, bool flat, int blowsPerLook = kBlowsPerLook,
                              int count = kBlowsPerRound) {
    current = round.name + " --seed " + std::to_string(round.seed) + " --round " +
              std::to_string(round.number) + (flat ? " flat" : " plain");
    trail.clear();
    Dice dice(round.dice());
    std::vector<std::string> looks;
    const Play how = !flat ? Play::Plain : round.name == "dialog" ? Play::Converted : Play::Flat;
    Stage stage(how, round.onScreen(), castOf(round, dice), dice);
    for (int i = 1; i <= count; ++i) {
        if (trail.size() == kTrail)
            trail.pop_front();
        strike(stage, dice, round.free(), trail.emplace_back());
        ++blows;
        if (!round.free() && i % blowsPerLook == 0)
            looks.push_back(stage.state());
    }
    const std::string last = stage.end(dice);
    // A converted dialog keeps its objects.
    if (!round.free() && round.name != "dialog")
        looks.push_back(last);
    drain();
    properties.clear();
    return looks;
}

/// Both plays of a round tell the same.
bool isSame(const Round& round, int blowsPerLook) {
    const auto flat = play(round, true, blowsPerLook);
    if (round.free())
        return true;
    const auto plain = play(round, false, blowsPerLook);
    const auto [difference, same] = std::mismatch(flat.begin(), flat.end(), plain.begin());
    if (difference == flat.end())
        return true;
    // Once more as far as there, for the last blows.
    const auto look = static_cast<int>(difference - flat.begin()) + 1;
    play(round, true, blowsPerLook, std::min(look * blowsPerLook, kBlowsPerRound));
    std::cout << "plain: " << *same << "\nflat:  " << *difference << '\n';
    tell("the flat controls tell of themselves what their plain twins do not");
    return false;
}

bool playRound(const Round& round) {
    if (isSame(round, kBlowsPerLook))
        return true;
    // Closer, if the difference shows to who looks after each blow: looking asks the control.
    (void)isSame(round, 1);
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

/// One round when its number is given.
bool storm(const std::string& name, std::uint64_t seed, int messages, const std::string& round) {
    const auto begin = Clock::now();
    // The caches of library and system fill first.
    for (const int number : kWarmUpRounds)
        play({name, seed, number}, true);
    const Holdings before = holdings();
    int number = round.empty() ? kFirstRound : std::stoi(round);
    int sent = 0;
    do {
        if (!playRound({name, seed, number++}) || !leftNothing(before))
            return false;
        sent += kBlowsPerRound;
    } while (round.empty() && sent < messages);
    const std::chrono::duration<double> seconds = Clock::now() - begin;
    std::cout << "storm: " << name << ": " << sent << " messages, nothing wrong ("
              << std::llround(sent / seconds.count()) << " a second)" << std::endl;
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::map<std::string, std::string> options{
        {"--messages", "600"}, {"--seed", "1"}, {"--class", ""}, {"--round", ""}};
    for (int i = 1; i + 1 < argc; i += 2)
        options[argv[i]] = argv[i + 1];
    if (argc % 2 == 0 || options.size() != 4) {
        std::cout << "usage: StormTests6 [--messages N] [--seed S] [--class NAME] [--round N]\n";
        return 2;
    }
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    AddVectoredExceptionHandler(1, &onFault);
    const ImportPatch exit("ExitProcess", &exitProcess);
    const HMODULE commonControls = GetModuleHandleW(L"comctl32");
    const ImportPatch get("GetPropW", &getProperty, commonControls);
    const ImportPatch remove("RemovePropW", &removeProperty, commonControls);
    const ImportPatch set("SetPropW", &setProperty, commonControls);
    const QuickInput quick;
    std::thread(watch).detach();
    moveAway();

    std::vector<std::string> names{"mixed", "dialog"};
    for (const Kind& kind : kinds())
        names.insert(names.begin(), kind.name);
    if (const std::string& only = options["--class"]; !only.empty()) {
        if (std::ranges::find(names, only) == names.end()) {
            std::cout << "no such class: " << only << '\n';
            return 2;
        }
        names = {only};
    }
    bool passed = true;
    for (const std::string& name : names) {
        passed = storm(name, std::stoull(options["--seed"]), std::stoi(options["--messages"]),
                       options["--round"]) &&
                 passed;
    }
    return passed ? 0 : 1;
}
