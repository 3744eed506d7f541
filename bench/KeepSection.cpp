// What a flat control keeps: memory, GDI objects, windows.
#include <algorithm>
#include <array>

#include "Sections.h"
#include "Stage.h"
#include "common/GdiObjects.h"

namespace QkDlgBench {

namespace {

constexpr int kControls = 100;
constexpr std::array kKeptLooks{Look::Bare, Look::Flat};

BOOL CALLBACK countWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK countWithChildren(HWND window, LPARAM count) {
    EnumChildWindows(window, &countWindow, count);
    return countWindow(window, count);
}

double windowsOfThread() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &countWithChildren, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// Bytes in use on a heap.
double bytesOn(HANDLE heap) {
    double bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return bytes;
}

double bytesOnHeaps() {
    std::array<HANDLE, 100> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    double bytes = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(count, heaps.size()); ++i)
        bytes += bytesOn(heaps[i]);
    return bytes;
}

struct Held {
    double bytes = bytesOnHeaps();
    double objects = QkDlgTools::countGdiObjects().all;
    double windows = windowsOfThread();
};

void keep(const Kind& kind, Look look, Results& results) {
    const UniqueWindow host = makeHost(true);
    // What all of a class share is there before, and stays.
    const Subject first(host.get(), kind, look);
    first.show();
    std::vector<std::unique_ptr<QkDlg::QkCustomControl>> controls;
    std::vector<UniqueWindow> windows;
    controls.reserve(kControls);
    windows.reserve(kControls);
    for (int i = 0; i < kControls; ++i) {
        windows.push_back(makeControlWindow(host.get(), kind, true));
        if (kind.fill)
            kind.fill(windows.back().get());
    }
    settle();
    const Held before;
    for (const UniqueWindow& window : windows) {
        if (look == Look::Bare) {
            subclassBare(window.get());
            continue;
        }
        controls.push_back(kind.makeFlat(0));
        controls.back()->Attach(window.get());
    }
    RedrawWindow(host.get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    settle();
    const Held after;
    const auto add = [&](const char* table, double difference) {
        results.add(table, kind.name, nameOf(look), difference / kControls);
    };
    add("keep, bytes", after.bytes - before.bytes);
    add("keep, GDI objects", after.objects - before.objects);
    add("keep, windows", after.windows - before.windows);
    windows.clear();
}

}  // namespace

void runKeep(const Options& options, Results& results) {
    for (const Kind* const kind : options.wantedKinds()) {
        for (const Look look : kKeptLooks)
            keep(*kind, look, results);
    }
}

}  // namespace QkDlgBench
