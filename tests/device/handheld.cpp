// The host's side of the item: its window, its record, and the calls that the Today screen makes.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr Address kMemory = 0x20000000;
constexpr uint32_t kHost = 0x505;
constexpr uint32_t kProcessDetach = 0, kProcessAttach = 1;

// What nobody released before the library went.
std::string DescribeLeftovers(const Handheld& handheld) {
    std::map<std::string, int64_t> counts = {{"blocks of memory", static_cast<int64_t>(bed->blocks.size())},
                                             {"handles", fakes::OpenResources()},
                                             {"counts of the library", handheld.libraryUses - 1}};
    for (const char* kind : {"context", "memory", "bitmap", "picture", "pen", "font", "icon", "socket"}) {
        counts[kind] = handheld.player.trace.CountOf(kind);
    }
    std::string text;
    for (const auto& [what, left] : counts) {
        text += left != 0 ? std::to_string(left) + " " + what + " left over\n" : "";
    }
    return text;
}

}  // namespace

Handheld* handheld = nullptr;

Handheld::Handheld(std::span<const device_script::Step> steps, Address at, Core on)
    : player(*this), core(on), base(at) {
    player.trace.pointerBytes = sizeof(Address);
    fakes::ResetSystem();
    player.Run(steps);
}

void Handheld::RunThreads() {
    while (!waitingThreads.empty()) {
        const auto [function, argument] = waitingThreads.front();
        waitingThreads.pop_front();
        CallGuestThread(function, argument);
    }
}

uint64_t Handheld::Attach() {
    const std::string library = std::getenv("QUORVANE_DEVICE_LIBRARY");
    handheld = this;
    OpenBed(core);
    bed->trace = &player.trace;
    MapRegion(kMemory, kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    memory = At<uint8_t>(kMemory);
    memory[kRecordEnabled] = 1;
    for (const auto& table : {WindowStandIns(), SystemStandIns(), NetworkStandIns(), ScriptedStandIns()}) {
        for (const StandInRow& row : table) {
            bed->standIns[row.name] = row.call;
        }
    }
    LoadLibraryIntoBed(library, base);
    EXPECT_EQ(CallGuest(bed->entry, {bed->imageBase, kProcessAttach, 0}), 1u);
    windows = {{kHost, {}}};
    player.trace.names[kHost] = "host";
    return CallGuest(bed->exports[240], {kMemory, kHost});
}

void Handheld::Detach() {
    CallGuest(bed->entry, {bed->imageBase, kProcessDetach, 0});
    deepestStack = std::max(deepestStack, bed->figures.deepestStack);
    faults += bed->faults + DescribeLeftovers(*this);
}

void Handheld::OpenOptions() {
    player.RunDialog(OpenDialog("dialog 500", FindGuestResource(5, IDD_TODAY_OPTIONS), 0, bed->exports[241]));
}

int64_t Handheld::Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) {
    return SendToWindow(static_cast<uint32_t>(window), message, static_cast<uint32_t>(wParam),
                        static_cast<uint32_t>(lParam));
}
