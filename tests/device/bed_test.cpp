// The bed's own checks, each tripped by a few instructions of guest code: a check that cannot fail would prove nothing
// about the library.

#include "tests/device/bed.h"

#include <gtest/gtest.h>

namespace {

constexpr Address kBase = 0x00010000;
constexpr uint32_t kReturn = 0xE12FFF1E;  // bx lr

struct Row {
    const char* name;
    std::vector<uint32_t> code;
    const char* fault;  // how the first one begins
    Core core = Core::Arm925;
};

// r0 is a block of 10 bytes.
const Row kRows[] = {
    {"unaligned word", {0xE5901002, kReturn}, "unaligned load of 4 bytes"},          // ldr r1,[r0,#2]
    {"past the block", {0xE5801008, kReturn}, "store outside a block of the heap"},  // str r1,[r0,#8]
    {"writes its code", {0xE50F1008, kReturn}, "Write to write-protected"},          // str r1,[pc,#-8]
    {"runs data", {0xE1A0F000}, "Fetch from non-exec"},                              // mov pc,r0
    {"changes r4", {0xE3A04000, kReturn}, "the call of 0x0 changed r4"},
    {"newer processor", {0xE1C020D0, kReturn}, "Invalid instruction"},                               // ldrd r2,[r0]
    {"skips the guard", {0xE24DDC21, 0xE58D0000, kReturn}, "access beyond the stack's guard page"},  // sub sp,#8448
    {"bx on a StrongARM", {kReturn}, "Invalid instruction", Core::StrongArm},
    {"mov pc,lr into Thumb code", {0xE1A0F00E}, "enters the system in the wrong", Core::Arm925ThumbSystem},
    // Relies on r2 or on flags behind a call: blx r1 (as mov lr,pc; mov pc,r1), then ldr r0,[r2]; cmp r0,r0 before
    {"trusts r2", {0xE92D4000, 0xE1A0E00F, 0xE1A0F001, 0xE5922000}, "Invalid memory read"},
    {"trusts flags", {0xE92D4000, 0xE1500000, 0xE1A0E00F, 0xE1A0F001, 0x15922000, 0xE8BD8000}, "Invalid memory read"},
};

TEST(Bed, Judges_code_by_what_it_does) {
    for (const Row& row : kRows) {
        OpenBed(row.core);
        bed->imageBase = kBase;
        MapRegion(kBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
        std::copy(row.code.begin(), row.code.end(), At<uint32_t>(kBase));
        CallGuest(kBase, {Allocate(10), StandInAddress("Sleep")});
        EXPECT_EQ(bed->faults.substr(0, strlen(row.fault)), row.fault) << row.name;
    }
}

}  // namespace
