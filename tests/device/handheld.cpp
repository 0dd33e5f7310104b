// The host's side of the item: its window, its record, and the calls that the Today screen makes.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

namespace {

constexpr Address kMemory = 0x20000000;
constexpr uint32_t kHost = 0x505;
constexpr uint32_t kProcessDetach = 0, kProcessAttach = 1;

// What nobody released before the library went.
std::string DescribeLeftovers() {
    const std::regex kOwned("^(context|memory|bitmap|picture|pen|font|icon|socket)");
    std::string text;
    for (const auto& [what, left] : std::map<std::string, int64_t>{
             {"blocks of memory", static_cast<int64_t>(bed->blocks.size())},
             {"handles", fakes::OpenResources()},
             {"counts of the library", handheld->libraryUses - 1},
         }) {
        text += left != 0 ? std::to_string(left) + " " + what + " left over\n" : "";
    }
    for (const auto& [handle, name] : handheld->trace.names) {
        text += std::regex_search(name, kOwned) ? name + " left over\n" : "";
    }
    return text;
}

}  // namespace

Handheld* handheld = nullptr;

Handheld::Handheld(Address at, Core on) : core(on), base(at) {
    trace.pointerBytes = sizeof(Address);
    fakes::ResetSystem();
}

void Handheld::RunThreads() {
    while (!waitingThreads.empty()) {
        const auto [function, argument] = waitingThreads.front();
        waitingThreads.pop_front();
        CallGuestThread(function, argument);
    }
}

uint64_t Handheld::Attach() {
    handheld = this;
    OpenBed(core);
    bed->trace = &trace;
    MapRegion(kMemory, kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    memory = At<uint8_t>(kMemory);
    memory[kRecordEnabled] = 1;
    for (const auto& table : {WindowStandIns(), SystemStandIns(), NetworkStandIns(), ScriptedStandIns()}) {
        for (const StandInRow& row : table) {
            bed->standIns[row.name] = [&state = failing[row.name], call = row.call](const uint64_t* words) {
                const int nth = ++state.calls - state.first;
                return nth >= 0 && nth < state.count ? 0 : call(words);
            };
        }
    }
    LoadLibraryIntoBed(std::getenv("QUORVANE_DEVICE_LIBRARY"), base);
    EXPECT_EQ(CallGuest(bed->exports[0], {bed->imageBase, kProcessAttach, 0}), 1u);
    windows = {{kHost, {}}};
    trace.names[kHost] = "host";
    const uint32_t window = CallGuest(bed->exports[240], {kMemory, kHost});
    trace.names[window] = "item";
    return window;
}

void Handheld::Detach() {
    CallGuest(bed->exports[0], {bed->imageBase, kProcessDetach, 0});
    deepestStack = std::max(deepestStack, bed->deepestStack);
    faults += bed->faults + DescribeLeftovers();
}
