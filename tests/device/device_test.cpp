// The library as ARM code. It performs the script, and what it leaves has to equal what the desktop's objects left in
// QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens something.
// Then what no desktop has: memory that runs out, and workers that outlive the dialog.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace files = std::filesystem;

// The files (and folders, as empty ones) of a handheld, by their names.
std::map<std::string, std::string> FilesIn(const files::path& root) {
    std::map<std::string, std::string> contents;
    for (const char* folder : {"My Documents", "Program Files"}) {
        for (const auto& entry : files::recursive_directory_iterator(root / folder)) {
            std::ostringstream content;
            content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            contents[entry.path().lexically_relative(root)] = content.str();
        }
    }
    return contents;
}

TEST(Device, Leaves_what_the_desktop_leaves) {
    const files::path reference = std::getenv("QUORVANE_DEVICE_REFERENCE");
    for (const auto& [core, base] : {std::pair{UC_CPU_ARM_TI925T, 0x10000000U}, {UC_CPU_ARM_SA1110, 0x0A340000U}}) {
        SCOPED_TRACE(core);
        ResetHandheld();
        handheld.core = core;
        handheld.base = base;
        std::ifstream lines(reference / "trace.txt");
        for (std::string line; std::getline(lines, line);) {
            player.reference.push_back(line);
        }
        PerformWholeScript();
        EXPECT_EQ(handheld.faults, "");
        EXPECT_EQ(player.difference, "");
        EXPECT_TRUE(player.reference.empty() && lines.eof());
        EXPECT_EQ(FilesIn(fakes::Root()), FilesIn(reference));
        EXPECT_LT(handheld.deepestStack, kStackBytes / 2);  // the rest is for the system's own frames
    }
}

void Begin() {
    ResetHandheld();
    Perform(kBegin);
}

void End() {
    Perform(kEnd);
    EXPECT_EQ(handheld.faults, "");
}

// One allocation after the other fails while the tools are opened and used; what is compared is that nothing is touched
// that is not there, and nothing left behind.
TEST(Device, Survives_every_allocation_that_fails) {
    int allocations = 1;
    for (int failing = 0; failing <= allocations; ++failing) {
        SCOPED_TRACE(failing);
        Begin();
        handheld.failing["LocalAlloc"] = {failing, 1};
        Perform(kTools);
        allocations = failing == 0 ? handheld.failing["LocalAlloc"].calls : allocations;
        End();
    }
    EXPECT_GT(allocations, 10);
}

// Every worker counts as a user of the library and ends without returning into it.
TEST(Device, Lets_workers_outlive_the_dialog_and_does_without_them) {
    Begin();
    handheld.threadsWait = true;
    Perform(kDetector);
    EXPECT_EQ(handheld.waitingThreads.size(), 254u);
    EXPECT_EQ(handheld.libraryUses, 255);
    RunThreads();
    EXPECT_EQ(handheld.libraryUses, 1);
    handheld.failing["CreateThread"] = {1, 254};
    Perform(kDetector);
    handheld.threadsWait = false;
    for (int nth = 1; nth < 6; ++nth) {  // the fifth allocation is a worker's own
        handheld.failing["LocalAlloc"] = {nth, 1};
        Perform(kDetector);
    }
    End();
}

// The model's own checks, each tripped by a few instructions: one that cannot fail would prove nothing about the
// library.
TEST(Bed, Judges_code_by_what_it_does) {
    constexpr Address kBase = 0x00010000;
    constexpr uint32_t kReturn = 0xE12FFF1E;  // bx lr
    const std::map<std::string, std::array<uint32_t, 4>> kRows = {
        // r0 is a block of 10 bytes
        {"unaligned", {0xE5901002, kReturn}},                                // ldr r1,[r0,#2]
        {"outside a block of the heap", {0xE5801008, kReturn}},              // str r1,[r0,#8]
        {"Write to write-protected", {0xE50F1008, kReturn}},                 // str r1,[pc,#-8]
        {"Fetch from non-exec", {0xE1A0F000}},                               // mov pc,r0
        {"changed r4", {0xE3A04000, kReturn}},                               // mov r4,#0
        {"Invalid instruction", {0xE1C020D0, kReturn}},                      // ldrd r2,[r0], of a newer processor
        {"Invalid memory read", {0xE1A0E00F, 0xE1A0F001, 0xE5922000, 0x0}},  // mov lr,pc; mov pc,r1; ldr r2,[r2]
    };
    for (const auto& [fault, code] : kRows) {
        OpenBed(UC_CPU_ARM_TI925T);
        bed->imageBase = kBase;
        MapRegion(kBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
        std::copy(code.begin(), code.end(), At<uint32_t>(kBase));
        CallGuest(kBase, {Allocate(10), StandInAddress("Sleep")});
        EXPECT_EQ(bed->faults.substr(0, fault.size()), fault);
    }
}

}  // namespace
