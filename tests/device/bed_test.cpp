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
    const char* fault;  // how the first fault begins; empty: none
    uint32_t result = 0;
    Core core = Core::Arm925;
};

// r0 is a block of 10 bytes, r1 an import that returns its first argument plus its sixth, r2 is 3, r3 is 4.
// push {lr}; sub sp,#8; str r3,[sp,#4]; mov r0,#7; cmp r0,r0; mov lr,pc; bx r1; `then`; add sp,#8; pop {pc}
std::vector<uint32_t> CallThen(std::initializer_list<uint32_t> then) {
    std::vector<uint32_t> code = {0xE92D4000, 0xE24DD008, 0xE58D3004, 0xE3A00007, 0xE1500000, 0xE1A0E00F, 0xE12FFF11};
    code.insert(code.end(), then);
    code.insert(code.end(), {0xE28DD008, 0xE8BD8000});
    return code;
}

const Row kRows[] = {
    {"calls", CallThen({}), "", 11},
    {"trusts r2 after a call", CallThen({0xE1A00002}), "", 0xDEAD0002},                      // mov r0,r2
    {"trusts flags", CallThen({0x03A00001, 0x13A00000}), "", 0},                             // moveq r0,#1; movne r0,#0
    {"unaligned word", {0xE5901002, kReturn}, "unaligned load of 4 bytes"},                  // ldr r1,[r0,#2]
    {"past the block", {0xE5801008, kReturn}, "store outside a block of the heap"},          // str r1,[r0,#8]
    {"writes its code", {0xE50F1008, kReturn}, "Write to write-protected"},                  // str r1,[pc,#-8]
    {"runs data", {0xE92D4000, 0xE1A0E00F, 0xE12FFF10, 0xE8BD8000}, "Fetch from non-exec"},  // blx block
    {"changes r4", {0xE3A04000, kReturn}, "the call of 0x0 changed r4"},
    {"newer processor", {0xE1C020D0, kReturn}, "Invalid instruction"},                               // ldrd r2,[r0]
    {"skips the guard", {0xE24DDC21, 0xE58D0000, kReturn}, "access beyond the stack's guard page"},  // sub sp,#8448
    {"bx on a StrongARM", {kReturn}, "Invalid instruction", 0, Core::StrongArm},
    {"mov pc,lr into Thumb code", {0xE1A0F00E}, "enters the system in the wrong", 0, Core::Arm925ThumbSystem},
};

TEST(Bed, Judges_code_by_what_it_does) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        OpenBed(row.core);
        bed->imageBase = kBase;
        MapRegion(kBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
        std::copy(row.code.begin(), row.code.end(), At<uint32_t>(kBase));
        bed->standIns["Probe"] = [](const uint64_t* words) { return words[0] + words[5]; };
        const uint32_t result = CallGuest(kBase, {Allocate(10), StandInAddress("Probe"), 3, 4});
        EXPECT_EQ(bed->faults.substr(0, strlen(row.fault)), row.fault);
        EXPECT_EQ(bed->faults.empty() ? result : 0, row.result);
        EXPECT_EQ(bed->faults.empty(), row.fault[0] == 0) << bed->faults;
    }
}

}  // namespace
