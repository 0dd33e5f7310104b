// The library as ARM code. It performs the script, and what it leaves has to equal what the desktop's objects left in
// QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens something.
// Then what no desktop has: memory that runs out, and workers that outlive the dialog.

#include "tests/device/handheld.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

TEST(Device, Leaves_what_the_desktop_leaves) {
    for (const auto& [core, base] : {std::pair{UC_CPU_ARM_TI925T, 0x10000000U}, {UC_CPU_ARM_SA1110, 0x0A340000U}}) {
        SCOPED_TRACE(core);
        ResetHandheld();
        handheld->core = core;
        handheld->base = base;
        std::ifstream lines(std::getenv("QUORVANE_DEVICE_REFERENCE"));
        for (std::string line; std::getline(lines, line);) {
            player.reference.push_back(line);
        }
        PerformWholeScript();
        EXPECT_EQ(handheld->faults, "");
        EXPECT_EQ(player.difference, "");
        EXPECT_TRUE(player.reference.empty() && lines.eof());
        EXPECT_LT(handheld->deepestStack, kStackBytes / 2);  // the rest is for the system's own frames
    }
}

void Begin() {
    ResetHandheld();
    Perform(kBegin);
}

void End() {
    Perform(kEnd);
    EXPECT_EQ(handheld->faults, "");
}

// One allocation after the other fails while the tools are opened and used; what is compared is that nothing is touched
// that is not there, and nothing left behind.
TEST(Device, Survives_every_allocation_that_fails) {
    int nth = 0;
    for (bool fails = true; fails; End()) {
        SCOPED_TRACE(++nth);
        Begin();
        handheld->failing["LocalAlloc"] = nth;
        Perform(kTools);
        fails = handheld->failing["LocalAlloc"] <= 0;
    }
    EXPECT_GT(nth, 10);
}

// Every worker counts as a user of the library and ends without returning into it.
TEST(Device, Lets_workers_outlive_the_dialog_and_does_without_them) {
    Begin();
    handheld->threadsWait = true;
    Perform(kDetector);
    EXPECT_EQ(handheld->waitingThreads.size(), 254u);
    EXPECT_EQ(handheld->libraryUses, 255);
    RunThreads();
    EXPECT_EQ(handheld->libraryUses, 1);
    handheld->failing["CreateThread"] = 100;
    Perform(kDetector);
    handheld->threadsWait = false;
    for (int nth = 1; nth < 6; ++nth) {  // the fifth allocation is a worker's own
        handheld->failing["LocalAlloc"] = nth;
        Perform(kDetector);
    }
    End();
}

// The model's checks, each tripped by a few instructions: one that cannot fail would prove nothing about the library.
TEST(Model, Judges_code_by_what_it_does) {
    const std::map<std::string, std::vector<uint32_t>> kRows = {
        // r0 is a block of 10 bytes
        {"unaligned access", {0xE5901002}},                             // ldr r1,[r0,#2]
        {"access outside a block", {0xE5801008, 0xE12FFF1E}},           // str r1,[r0,#8]; bx lr
        {"a register is not kept", {0xE3A04000, 0xE12FFF1E}},           // mov r4,#0; bx lr
        {"Invalid instruction", {0xE1C020D0}},                          // ldrd r2,[r0], of a newer processor
        {"Invalid memory read", {0xE1A0E00F, 0xE1A0F001, 0xE5922000}},  // mov lr,pc; mov pc,r1; ldr r2,[r2]
    };
    for (const auto& [fault, code] : kRows) {
        ResetHandheld();
        OpenProcessor();
        MapRegion(handheld->base, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
        std::copy(code.begin(), code.end(), At<uint32_t>(handheld->base));
        CallGuest(handheld->base, {Allocate(10), StandInAddress("Sleep")});
        EXPECT_EQ(handheld->faults.substr(0, fault.size()), fault);
    }
}

}  // namespace
