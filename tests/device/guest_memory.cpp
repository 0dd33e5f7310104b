// A freed block is given out again only long after, so that use of it is noticed.

#include "tests/device/guest_memory.h"

#include "tests/device/pe_image.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr uint8_t kFreed = 0xDD;
constexpr uint8_t kUnset = 0xCD;

bool IsHeap(Address address) {
    return address >= kHeapBase && address < kHeapBase + kHeapBytes;
}

bool IsLive(const GuestMap& map, Address address, size_t bytes) {
    const auto first = map.live.begin() + static_cast<ptrdiff_t>(address - kHeapBase);
    return std::find(first, first + static_cast<ptrdiff_t>(bytes), false) == first + static_cast<ptrdiff_t>(bytes);
}

void SetLive(GuestMap& map, Address address, uint32_t bytes, bool live) {
    const auto first = map.live.begin() + static_cast<ptrdiff_t>(address - kHeapBase);
    std::fill(first, first + static_cast<ptrdiff_t>(bytes), live);
}

int StackOf(Address address) {
    const uint32_t distance = address - (StackTop(0) - kStackBytes);
    const uint32_t stack = distance / 0x100000;
    return stack < kMostStacks && distance % 0x100000 < kStackBytes ? static_cast<int>(stack) : -1;
}

}  // namespace

uint8_t* AddGuestRegion(GuestMap& map, Address base, uint32_t bytes, bool writable) {
    auto* memory = static_cast<uint8_t*>(std::aligned_alloc(kPageBytes, bytes));
    std::fill_n(memory, bytes, kUnset);
    map.regions.push_back({base, bytes, writable, {memory, std::free}});
    return memory;
}

uint8_t* FindGuestMemory(GuestMap& map, Address address, size_t bytes, bool writes, const char** problem) {
    const auto region = std::find_if(map.regions.begin(), map.regions.end(), [&](const GuestRegion& candidate) {
        return address >= candidate.base && uint64_t{address} + bytes <= uint64_t{candidate.base} + candidate.bytes;
    });
    if (region == map.regions.end()) {
        *problem = "that is not mapped";
    } else if (writes && !region->writable) {
        *problem = "that may not be written";
    } else if (IsHeap(address) && !IsLive(map, address, bytes)) {
        *problem = "outside a block of the heap";
    } else {
        return region->memory.get() + (address - region->base);
    }
    return nullptr;
}

const char* TouchGuestMemory(GuestMap& map, Address address, uint32_t bytes) {
    if (IsHeap(address)) {
        return IsLive(map, address, bytes) ? nullptr : "outside a block of the heap";
    }
    const int stack = StackOf(address);
    if (stack < 0) {
        return nullptr;
    }
    Address& committed = map.committed[static_cast<size_t>(stack)];
    committed = committed == 0 ? StackTop(stack) - kPageBytes : committed;
    if (address < committed - kPageBytes) {
        return "beyond the stack's guard page";
    }
    committed = std::min(committed, address / kPageBytes * kPageBytes);
    map.deepestStack = std::max(map.deepestStack, StackTop(stack) - address);
    return nullptr;
}

void ResetStack(GuestMap& map, int stack) {
    map.committed[static_cast<size_t>(stack)] = 0;
}

Address AllocateBlock(GuestMap& map, uint32_t bytes) {
    constexpr size_t kKept = 64;
    constexpr uint32_t kGap = 24;
    auto& freed = map.freed[bytes];
    Address block = map.heapEnd + kGap;  // 8 bytes off a multiple of 16: no more may be relied on
    if (freed.size() > kKept) {
        block = freed.front();
        freed.pop_front();
    } else if (uint64_t{block} + bytes + kGap > kHeapBase + kHeapBytes) {
        return 0;
    } else {
        map.heapEnd = (block + bytes + 15) / 16 * 16;
    }
    map.blocks[block] = bytes;
    SetLive(map, block, bytes, true);
    const char* problem = nullptr;
    std::fill_n(FindGuestMemory(map, block, bytes, true, &problem), bytes, uint8_t{0});
    return block;
}

bool FreeBlock(GuestMap& map, Address block) {
    const auto found = map.blocks.find(block);
    if (found == map.blocks.end()) {
        return false;
    }
    const char* problem = nullptr;
    std::fill_n(FindGuestMemory(map, block, found->second, true, &problem), found->second, kFreed);
    SetLive(map, block, found->second, false);
    map.freed[found->second].push_back(block);
    map.blocks.erase(found);
    return true;
}
