// The guest's memory, and the library in it as the handheld's loader brings it in. What is wrong in the library's
// headers and tables, tests/device/check-library tells before.

#include "tests/device/bed.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>

std::unique_ptr<Bed> bed;

namespace {

// The place in the image that a word of it tells.
Address AddressIn(Address word) {
    return bed->imageBase + *At<uint32_t>(word);
}

// An IMAGE_IMPORT_DESCRIPTOR a library, with two lists of words: what is imported, in the order of the import list that
// the library was made from, and where the addresses belong.
void BindImports(Address row) {
    std::ifstream list(QUORVANE_IMPORTS);
    for (; *At<uint32_t>(row) != 0; row += 20) {
        auto* slot = At<uint32_t>(AddressIn(row + 16));
        for (Address entry = AddressIn(row); *At<uint32_t>(entry) != 0; entry += 4) {
            std::string line, function;
            while (function.empty() || function[0] == '#') {
                std::getline(list, line);
                function.clear();
                std::istringstream(line) >> function;
            }
            *slot++ = StandInAddress(function);
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

void LoadLibraryIntoBed(const std::string& file, Address base) {
    constexpr uint32_t kMostBytes = 2 << 20;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    bed->imageBase = base;
    MapRegion(base, kMostBytes, UC_PROT_NONE);
    memcpy(At<void>(base), bytes.data(), kPageBytes);
    const Address at = AddressIn(base + 60);
    const auto* header = At<uint32_t>(at);
    const auto* section = At<Section>(at + 24 + *At<uint16_t>(at + 20));
    for (int left = *At<uint16_t>(at + 6); left > 0; --left, ++section) {
        memcpy(At<void>(base + section->place), bytes.data() + section->filePlace,
               std::min(section->bytes, section->fileBytes));
        uc_mem_protect(bed->engine, base + section->place, (section->bytes + kPageBytes - 1) & ~(kPageBytes - 1),
                       UC_PROT_READ | (section->flags >> 31 != 0 ? UC_PROT_WRITE : 0) |
                           ((section->flags >> 29 & 1) != 0 ? UC_PROT_EXEC : 0));
    }
    // From the 30th word on the directories, with place and size: of exports, imports, ... relocations (the sixth).
    const auto* exports = At<uint32_t>(base + header[30]);
    bed->exports[0] = base + header[10];
    for (uint32_t i = 0; i < exports[5]; ++i) {
        bed->exports[exports[4] + i] = AddressIn(base + exports[7] + 4 * i);
    }
    BindImports(base + header[32]);
    Relocate(base + header[40], header[41], base - header[13]);
}

void AddFault(const std::string& text) {
    bed->faults += text + '\n';
}

Address Allocate(uint32_t bytes) {
    constexpr uint32_t kGap = 24;
    const Address block = bed->heapEnd + kGap;  // 8 bytes off a multiple of 16: no more may be relied on
    bed->heapEnd = (block + bytes + 15) / 16 * 16;
    bed->blocks[block] = bytes;
    return block;
}

void Free(Address block) {
    if (bed->blocks.erase(block) == 0) {
        AddFault("freed what is no block");
    }
}
