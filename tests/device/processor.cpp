// The processor, its memory and the library in it, and the crossing between guest and host. What is wrong in the
// library's headers and tables, tests/device/check-library tells before. An import's address leads into a region of
// traps; reaching a trap stops the processor, the stand-in runs, and the processor goes on behind the call. So calls
// nest as deep as the host's own stack allows, and the processor itself never runs inside a stand-in.

#include "tests/device/handheld.h"

#include <sys/mman.h>

#include <algorithm>
#include <fstream>

namespace {

constexpr Address kTrapBase = 0x7F000000;
constexpr Address kReturnTrap = kTrapBase + kPageBytes - 4;
constexpr uint32_t kPoison = 0xDEAD0000;  // what a call leaves in registers that it need not preserve
constexpr uint32_t kEntry = 0x5AFE0000;   // what registers hold on entry
constexpr uint32_t kFlags = 0xF0000000;   // N, Z, C and V of the status register

uint32_t Get(uint32_t id) {
    uint32_t value = 0;
    uc_reg_read(handheld->engine.get(), static_cast<int>(id), &value);
    return value;
}

void Set(uint32_t id, uint32_t value) {
    uc_reg_write(handheld->engine.get(), static_cast<int>(id), &value);
}

void Kill(const std::string& fault) {
    if (handheld->faults.empty()) {
        handheld->faults = fault + " at " + std::to_string(Get(UC_ARM_REG_PC) - handheld->base) + " of the image\n";
    }
    uc_emu_stop(handheld->engine.get());
}

void OnInstruction(uc_engine* engine, uint64_t address, uint32_t, void*) {
    if (address >= kTrapBase) {
        uc_emu_stop(engine);
    } else {
        ++handheld->instructions;
    }
}

void OnAccess(uc_engine*, uc_mem_type, uint64_t where, int size, int64_t, void*) {
    const auto address = static_cast<Address>(where);
    const auto bytes = static_cast<uint32_t>(size);
    if (address % bytes != 0) {
        Kill("unaligned access");
    }
    const auto next = handheld->blocks.upper_bound(address);
    if (address - kHeapBase < kHeapBytes &&
        (next == handheld->blocks.begin() || address + bytes > std::prev(next)->first + std::prev(next)->second)) {
        Kill("access outside a block of the heap");
    }
    for (const Address top : {kMainStack, kWorkerStack}) {
        if (const uint32_t depth = top - address; depth <= kStackBytes) {
            handheld->deepestStack = std::max(handheld->deepestStack, depth);
        }
    }
}

void CallStandIn() {
    const std::string name = handheld->trapNames.at((Get(UC_ARM_REG_PC) - kTrapBase) / 4);
    const auto found = handheld->standIns.find(name);
    uint64_t words[kMostArguments];
    for (uint32_t i = 0; i < kMostArguments; ++i) {
        words[i] = i < 4 ? Get(UC_ARM_REG_R0 + i) : At<uint32_t>(Get(UC_ARM_REG_SP))[i - 4];
    }
    ++handheld->imports;
    const StandIn newHandle = [](const uint64_t*) { return NewHandle(); };
    const uint64_t result = TraceCall(name, words, found != handheld->standIns.end() ? found->second : newHandle);
    Set(UC_ARM_REG_R0, static_cast<uint32_t>(result));
    Set(UC_ARM_REG_PC, Get(UC_ARM_REG_LR));
    // What any function may leave behind.
    for (const uint32_t id : {UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3, UC_ARM_REG_R12, UC_ARM_REG_LR}) {
        Set(id, kPoison + id);
    }
    Set(UC_ARM_REG_CPSR, Get(UC_ARM_REG_CPSR) ^ kFlags);
}

// The place in the image that a word of it tells.
Address AddressIn(Address word) {
    return handheld->base + *At<uint32_t>(word);
}

// An IMAGE_IMPORT_DESCRIPTOR a library, with two lists of words: ordinals (or places of names), and where the addresses
// belong.
void BindImports(Address row) {
    constexpr uint32_t kByOrdinal = 0x80000000;
    std::map<std::string, std::string> names;  // by library and ordinal
    std::ifstream list(QUORVANE_IMPORTS);
    for (std::string function, library, ordinal; list >> function >> library >> ordinal;) {
        names[library + ".dll " + ordinal] = function;
        list.ignore(kPageBytes, '\n');
    }
    for (; *At<uint32_t>(row) != 0; row += 20) {
        const std::string library = At<char>(AddressIn(row + 12));
        auto* slot = At<uint32_t>(AddressIn(row + 16));
        for (Address entry = AddressIn(row); *At<uint32_t>(entry) != 0; entry += 4) {
            const uint32_t ordinal = *At<uint32_t>(entry) ^ kByOrdinal;
            *slot++ = StandInAddress(ordinal < kByOrdinal ? names[library + " " + std::to_string(ordinal)]
                                                          : At<char>(AddressIn(entry) + 2));
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

}  // namespace

void OpenProcessor() {
    uc_engine* engine = nullptr;
    uc_open(UC_ARCH_ARM, UC_MODE_ARM, &engine);
    handheld->engine.reset(engine);
    uc_ctl_set_cpu_model(engine, handheld->core);
    MapRegion(kTrapBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
    for (const Address top : {kMainStack, kWorkerStack}) {
        MapRegion(top - kStackBytes, kStackBytes + kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    }
    MapRegion(kHeapBase, kHeapBytes, UC_PROT_READ | UC_PROT_WRITE);
    Set(UC_ARM_REG_SP, kMainStack);
    uc_hook hook = 0;
    uc_hook_add(engine, &hook, UC_HOOK_CODE, (void*)OnInstruction, nullptr, 1, 0);
    uc_hook_add(engine, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, (void*)OnAccess, nullptr, 1, 0);
}

uint32_t CallGuest(Address function, std::initializer_list<uint64_t> arguments, Address stack) {
    uc_context* outer = nullptr;
    uc_context_alloc(handheld->engine.get(), &outer);
    uc_context_save(handheld->engine.get(), outer);
    for (uint32_t i = 0; i < 13; ++i) {
        Set(UC_ARM_REG_R0 + i, i < arguments.size() ? static_cast<uint32_t>(arguments.begin()[i]) : kEntry + i);
    }
    const Address top = (stack != 0 ? stack : Get(UC_ARM_REG_SP)) & ~7u;
    Set(UC_ARM_REG_SP, top);
    Set(UC_ARM_REG_LR, kReturnTrap);
    Set(UC_ARM_REG_PC, function);
    // Until the call returns, its thread ends or something is wrong.
    while (handheld->faults.empty() && !handheld->threadEnds && Get(UC_ARM_REG_PC) != kReturnTrap) {
        if (Get(UC_ARM_REG_PC) >= kTrapBase) {
            CallStandIn();
        } else if (const uc_err error = uc_emu_start(handheld->engine.get(), Get(UC_ARM_REG_PC), kReturnTrap, 0, 0)) {
            Kill(uc_strerror(error));
        }
    }
    bool isKept = Get(UC_ARM_REG_SP) == top;
    for (uint32_t i = 4; i < 12; ++i) {
        isKept = isKept && Get(UC_ARM_REG_R0 + i) == kEntry + i;
    }
    if (!isKept && !handheld->threadEnds) {
        Kill("a register is not kept");
    }
    const uint32_t result = handheld->faults.empty() ? Get(UC_ARM_REG_R0) : 0;
    uc_context_restore(handheld->engine.get(), outer);
    uc_context_free(outer);
    return result;
}

Address StandInAddress(const std::string& name) {
    handheld->trapNames.push_back(name);
    return kTrapBase + static_cast<Address>(handheld->trapNames.size() - 1) * 4;
}

void MapRegion(Address base, uint32_t bytes, uint32_t rights) {
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED;
    void* memory = mmap(At<void>(base), bytes, PROT_READ | PROT_WRITE, kFlags, -1, 0);
    uc_mem_map_ptr(handheld->engine.get(), base, bytes, rights, memory);
}

void LoadLibraryIntoMemory(const std::string& file) {
    constexpr uint32_t kMostBytes = 2 << 20;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const Address base = handheld->base;
    MapRegion(base, kMostBytes, UC_PROT_NONE);
    memcpy(At<void>(base), bytes.data(), kPageBytes);
    const Address at = AddressIn(base + 60);
    const auto* header = At<uint32_t>(at);
    Address section = at + 24 + *At<uint16_t>(at + 20);
    for (int left = *At<uint16_t>(at + 6); left > 0; --left, section += 40) {
        const auto* words = At<uint32_t>(section);
        const uint32_t used = words[2], place = base + words[3], stored = words[4], flags = words[9];
        memcpy(At<void>(place), bytes.data() + words[5], std::min(used, stored));
        uc_mem_protect(
            handheld->engine.get(), place, (used + kPageBytes - 1) & ~(kPageBytes - 1),
            UC_PROT_READ | (flags >> 31 != 0 ? UC_PROT_WRITE : 0) | ((flags >> 29 & 1) != 0 ? UC_PROT_EXEC : 0));
    }
    // From the 30th word on the directories, with place and size: of exports, imports, ... relocations (the sixth).
    handheld->entry = base + header[10];
    handheld->exports = At<uint32_t>(base + At<uint32_t>(base + header[30])[7]);
    BindImports(base + header[32]);
    Relocate(base + header[40], header[41], base - header[13]);
}

Address Allocate(uint32_t bytes) {
    constexpr uint32_t kGap = 24;
    const Address block = handheld->heapEnd + kGap;  // 8 bytes off a multiple of 16: no more may be relied on
    handheld->heapEnd = (block + bytes + 15) / 16 * 16;
    handheld->blocks[block] = bytes;
    return block;
}
