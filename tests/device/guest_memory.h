// tests/device/guest_memory.h - the handheld's memory: regions with rights, a heap whose freed bytes are known, stacks
// with guards.
#pragma once

#include "tests/device/bed.h"

#include <array>
#include <deque>
#include <map>

inline constexpr Address kHeapBase = 0x40000000;
inline constexpr uint32_t kHeapBytes = 16 << 20;
inline constexpr uint32_t kStackBytes = 64 << 10;
inline constexpr int kMostStacks = 6;

// Stack 0 is the user interface's, the others are workers'. Nothing is mapped between them.
constexpr Address StackTop(int stack) {
    return 0x30000000 + static_cast<uint32_t>(stack) * 0x100000 + kStackBytes;
}

struct GuestRegion {
    Address base;
    uint32_t bytes;
    bool writable;
    std::unique_ptr<uint8_t, void (*)(void*)> memory;
};

struct GuestMap {
    std::vector<GuestRegion> regions;
    std::map<Address, uint32_t> blocks;             // of the heap, with their bytes
    std::map<uint32_t, std::deque<Address>> freed;  // by bytes, the oldest first
    std::vector<bool> live = std::vector<bool>(kHeapBytes);
    Address heapEnd = kHeapBase;
    std::array<Address, kMostStacks> committed{};  // the lowest page touched; 0: none
    uint32_t deepestStack = 0;
};

// The region's bytes on the host, for the processor to work on directly.
uint8_t* AddGuestRegion(GuestMap& map, Address base, uint32_t bytes, bool writable);

// Null and a reason if not all of it may be reached, or not written when `writes`.
uint8_t* FindGuestMemory(GuestMap& map, Address address, size_t bytes, bool writes, const char** problem);

// Notes an access of the guest's code. Returns what is wrong with it or null: heap bytes outside a block, or a stack
// that grew by more than a page at once (the handheld gives a stack its next page when the page above has been used).
const char* TouchGuestMemory(GuestMap& map, Address address, uint32_t bytes);
void ResetStack(GuestMap& map, int stack);  // as a new thread finds it

Address AllocateBlock(GuestMap& map, uint32_t bytes);  // 0: the heap is full
bool FreeBlock(GuestMap& map, Address block);
