// The guest's memory, and the library in it as the handheld's loader brings it in. What is wrong in the library's
// headers and tables, tests/device/check-library tells before.

#include "tests/device/bed.h"

#include <sanitizer/asan_interface.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>

std::unique_ptr<Bed> bed;

namespace {

constexpr Address kHeapBase = 0x40000000;
constexpr uint32_t kHeapBytes = 64 << 20;

// The place in the image that a word of it tells.
Address AddressIn(Address word) {
    return bed->imageBase + *At<uint32_t>(word);
}

// The functions that are imported by number, by library and number.
std::map<std::string, std::string> ReadImportNames() {
    std::map<std::string, std::string> names;
    std::ifstream list(QUORVANE_IMPORTS);
    for (std::string line; std::getline(list, line);) {
        std::string function, library, ordinal;
        std::istringstream(line) >> function >> library >> ordinal;
        names[library + ".dll " + ordinal] = function;
    }
    return names;
}

// An IMAGE_IMPORT_DESCRIPTOR a library, with two lists of words: ordinals (or places of names), and where the addresses
// belong.
void BindImports(Address row) {
    constexpr uint32_t kByOrdinal = 0x80000000;
    auto names = ReadImportNames();
    for (; *At<uint32_t>(row) != 0; row += 20) {
        const std::string library = At<char>(AddressIn(row + 12));
        auto* slot = At<uint32_t>(AddressIn(row + 16));
        for (Address entry = AddressIn(row); *At<uint32_t>(entry) != 0; entry += 4) {
            const uint32_t ordinal = *At<uint32_t>(entry) ^ kByOrdinal;
            const std::string name =
                ordinal < kByOrdinal ? names[library + " " + std::to_string(ordinal)] : At<char>(AddressIn(entry) + 2);
            *slot++ = StandInAddress(name);
        }
    }
}

void Relocate(Address block, uint32_t bytes, uint32_t distance) {
    constexpr uint32_t kHighLow = 3;
    for (const Address end = block + bytes; block < end; block += At<uint32_t>(block)[1]) {
        for (uint32_t i = 8; i < At<uint32_t>(block)[1]; i += 2) {
            const uint16_t entry = *At<uint16_t>(block + i);
            if (entry >> 12 == kHighLow) {
                *At<uint32_t>(AddressIn(block) + (entry & 0xFFF)) += distance;
            }
        }
    }
}

// Of exports, imports, resources, ... relocations (5).
Address Directory(uint32_t which) {
    return bed->imageBase + bed->header[30 + 2 * which];
}

struct Section {
    char name[8];
    uint32_t bytes, place, fileBytes, filePlace, unused[3], flags;
};

}  // namespace

void MapRegion(Address base, uint32_t bytes, uint32_t rights) {
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED;
    void* memory = mmap(At<void>(base), bytes, PROT_READ | PROT_WRITE, kFlags, -1, 0);
    uc_mem_map_ptr(bed->engine, base, bytes, rights, memory);
}

void MapHeap() {
    MapRegion(kHeapBase, kHeapBytes, UC_PROT_READ | UC_PROT_WRITE);
    ASAN_POISON_MEMORY_REGION(At<void>(kHeapBase), kHeapBytes);
    bed->heapEnd = kHeapBase;
}

void LoadLibraryIntoBed(const std::string& file, Address base) {
    constexpr uint32_t kMostBytes = 2 << 20;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    bed->imageBase = base;
    MapRegion(bed->imageBase, kMostBytes, UC_PROT_NONE);
    memcpy(At<void>(bed->imageBase), bytes.data(), kPageBytes);
    const Address header = AddressIn(bed->imageBase + 60);
    bed->header = At<uint32_t>(header);
    const std::span sections = {At<Section>(header + 24 + *At<uint16_t>(header + 20)), *At<uint16_t>(header + 6)};
    for (const Section& section : sections) {
        memcpy(At<void>(bed->imageBase + section.place), bytes.data() + section.filePlace,
               std::min(section.bytes, section.fileBytes));
    }
    const auto* exports = At<uint32_t>(Directory(0));
    bed->exports[0] = bed->imageBase + bed->header[10];
    for (uint32_t i = 0; i < exports[5]; ++i) {
        bed->exports[exports[4] + i] = AddressIn(bed->imageBase + exports[7] + 4 * i);
    }
    BindImports(Directory(1));
    Relocate(Directory(5), bed->header[41], bed->imageBase - bed->header[13]);
    for (const Section& section : sections) {
        uc_mem_protect(bed->engine, bed->imageBase + section.place,
                       (section.bytes + kPageBytes - 1) & ~(kPageBytes - 1),
                       UC_PROT_READ | (section.flags >> 31 != 0 ? UC_PROT_WRITE : 0) |
                           ((section.flags >> 29 & 1) != 0 ? UC_PROT_EXEC : 0));
    }
}

void AddFault(const std::string& text) {
    bed->faults += text + '\n';
}

Address Allocate(uint32_t bytes) {
    constexpr uint32_t kGap = 24;
    const Address block = bed->heapEnd + kGap;  // 8 bytes off a multiple of 16: no more may be relied on
    bed->heapEnd = (block + bytes + 15) / 16 * 16;
    bed->blocks[block] = bytes;
    ASAN_UNPOISON_MEMORY_REGION(At<void>(block), bytes);
    return block;
}

void Free(Address block) {
    const auto found = bed->blocks.find(block);
    if (found == bed->blocks.end()) {
        return AddFault("freed what is no block, " + Hex(block));
    }
    ASAN_POISON_MEMORY_REGION(At<void>(block), found->second);
    bed->blocks.erase(found);
}

// Down the three levels of the tree: kind, number, and the first language.
std::span<const uint8_t> FindGuestResource(uint32_t type, uint32_t id) {
    constexpr uint32_t kOffset = 0x7FFFFFFF;
    Address directory = Directory(2);
    for (const uint32_t number : {type, id, 0U}) {
        const auto* entry =
            At<uint32_t>(directory + 16 + 8 * *At<uint16_t>(directory + 12));  // behind those with names
        while (number != 0 && *entry != number) {
            entry += 2;
        }
        directory = Directory(2) + (entry[1] & kOffset);
    }
    return {At<uint8_t>(AddressIn(directory)), At<uint32_t>(directory)[1]};
}
