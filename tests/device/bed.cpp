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

uint32_t RoundUp(uint32_t bytes) {
    return (bytes + kPageBytes - 1) / kPageBytes * kPageBytes;
}

// "function library ordinal"; functions without a number are imported by name.
std::map<std::pair<std::string, uint32_t>, std::string> ReadImportNames() {
    std::map<std::pair<std::string, uint32_t>, std::string> names;
    std::ifstream list(QUORVANE_IMPORTS);
    for (std::string line; std::getline(list, line);) {
        std::istringstream words(line);
        std::string function, library;
        uint32_t ordinal = 0;
        if (words >> function >> library >> ordinal && function[0] != '#') {
            names[{library + ".dll", ordinal}] = function;
        }
    }
    return names;
}

// An IMAGE_IMPORT_DESCRIPTOR a library, with two lists of words: ordinals (or places of names), and where the addresses
// belong.
void BindImports(Address descriptor) {
    constexpr uint32_t kByOrdinal = 0x80000000;
    auto names = ReadImportNames();
    for (const auto* row = At<uint32_t>(descriptor); row[3] != 0; row += 5) {
        const std::string library = At<char>(bed->imageBase + row[3]);
        auto* slot = At<uint32_t>(bed->imageBase + row[4]);
        for (const auto* entry = At<uint32_t>(bed->imageBase + row[0]); *entry != 0; ++entry) {
            const std::string name =
                (*entry & kByOrdinal) != 0 ? names[{library, *entry & 0xFFFF}] : At<char>(bed->imageBase + *entry + 2);
            if (bed->standIns.count(name) == 0) {
                AddFault(library + " " + Hex(*entry) + " " + name + " has no stand-in");
            }
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
                *At<uint32_t>(bed->imageBase + *At<uint32_t>(block) + (entry & 0xFFF)) += distance;
            }
        }
    }
}

void ReadExports(Address directory) {
    const auto* words = At<uint32_t>(directory);
    for (uint32_t i = 0; i < words[5]; ++i) {
        bed->exports[words[4] + i] = bed->imageBase + At<uint32_t>(bed->imageBase + words[7])[i];
    }
}

}  // namespace

void MapRegion(Address base, uint32_t bytes, uint32_t rights) {
    void* memory = mmap(At<void>(base), bytes, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED_NOREPLACE, -1, 0);
    if (memory != At<void>(base)) {
        fprintf(stderr, "no memory at %s\n", Hex(base).c_str());
        abort();
    }
    bed->regions[base] = bytes;
    uc_mem_map_ptr(bed->engine, base, bytes, rights, memory);
}

void ProtectRegion(Address base, uint32_t bytes, uint32_t rights) {
    uc_mem_protect(bed->engine, base, bytes, rights);
    mprotect(At<void>(base), bytes, (rights & UC_PROT_WRITE) != 0 ? PROT_READ | PROT_WRITE : PROT_READ);
}

void MapHeap() {
    MapRegion(kHeapBase, kHeapBytes, UC_PROT_READ | UC_PROT_WRITE);
    ASAN_POISON_MEMORY_REGION(At<void>(kHeapBase), kHeapBytes);
    bed->heapEnd = kHeapBase;
}

Bed::~Bed() {
    uc_close(engine);
    for (const auto& [base, bytes] : regions) {
        ASAN_UNPOISON_MEMORY_REGION(At<void>(base), bytes);
        munmap(At<void>(base), bytes);
    }
}

void LoadLibraryIntoBed(const std::string& file, Address base) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const auto word = [&](size_t at) {
        uint32_t value = 0;
        memcpy(&value, bytes.data() + at, sizeof(value));
        return value;
    };
    const uint32_t header = word(60), sections = header + 24 + (word(header + 20) & 0xFFFF);
    const auto directory = [&](uint32_t which) { return bed->imageBase + word(header + 120 + which * 8); };
    const uint32_t preferred = word(header + 52);
    bed->imageBase = base != 0 ? base : preferred;
    MapRegion(bed->imageBase, RoundUp(word(header + 80)), UC_PROT_NONE);
    memcpy(At<void>(bed->imageBase), bytes.data(), word(header + 84));
    const uint32_t count = word(header + 4) >> 16;
    for (uint32_t row = sections; row < sections + count * 40; row += 40) {
        memcpy(At<void>(bed->imageBase + word(row + 12)), bytes.data() + word(row + 20),
               std::min(word(row + 8), word(row + 16)));
    }
    bed->entry = bed->imageBase + word(header + 40);
    bed->resources = directory(2);
    ReadExports(directory(0));
    BindImports(directory(1));
    Relocate(directory(5), word(header + 120 + 5 * 8 + 4), bed->imageBase - preferred);
    ProtectRegion(bed->imageBase, kPageBytes, UC_PROT_READ);
    for (uint32_t row = sections; row < sections + count * 40; row += 40) {
        const uint32_t flags = word(row + 36);
        ProtectRegion(bed->imageBase + word(row + 12), RoundUp(word(row + 8)),
                      UC_PROT_READ | (flags >> 31 != 0 ? UC_PROT_WRITE : 0) | (flags >> 29 & 1 ? UC_PROT_EXEC : 0));
    }
}

void AddFault(const std::string& text) {
    bed->faults += text + '\n';
}

std::string Hex(uint32_t value) {
    char text[16];
    snprintf(text, sizeof(text), "0x%X", value);
    return text;
}

Address Allocate(uint32_t bytes) {
    constexpr uint32_t kGap = 24;
    const Address block = bed->heapEnd + kGap;  // 8 bytes off a multiple of 16: no more may be relied on
    if (uint64_t{block} + bytes + kGap > kHeapBase + kHeapBytes) {
        return 0;
    }
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
Address FindGuestResource(uint32_t type, uint32_t id) {
    constexpr uint32_t kOffset = 0x7FFFFFFF;
    Address directory = bed->resources;
    for (const uint32_t number : {type, id, 0U}) {
        const auto* counts = At<uint16_t>(directory + 12);
        const auto* entries = At<std::pair<uint32_t, uint32_t>>(directory + 16);
        const auto* end = entries + counts[0] + counts[1];
        const auto* found = std::find_if(entries + counts[0], end,
                                         [&](const auto& entry) { return number == 0 || entry.first == number; });
        if (found == end) {
            return 0;
        }
        directory = bed->resources + (found->second & kOffset);
    }
    return bed->imageBase + *At<uint32_t>(directory);
}
