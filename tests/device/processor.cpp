// The processor, its hooks, and the crossing between guest and host. An import's address leads into a region of traps;
// reaching a trap stops the processor, the stand-in runs, and the processor goes on behind the call. So calls nest as
// deep as the host's own stack allows, and the processor itself never runs inside a stand-in.

#include "tests/device/bed.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <cstring>

// Null in a program without the address sanitizer.
extern "C" __attribute__((weak)) void* __asan_region_is_poisoned(void* begin, size_t bytes);

namespace {

constexpr Address kTrapBase = 0x7F000000;
constexpr uint32_t kTraps = 1024;
constexpr Address kReturnTrap = kTrapBase + (kTraps - 1) * 4;
constexpr uint32_t kPoison = 0xDEAD0000;     // what a call leaves in registers that it need not preserve
constexpr uint32_t kPreserved = 0x5AFE0000;  // what callee-saved registers hold on entry
constexpr uint32_t kFlags = 0xF0000000;      // N, Z, C, V of the status register
// The stacks of the user interface and of a worker. Nothing is mapped below them.
constexpr Address kStackTops[] = {0x30000000 + kStackBytes, 0x30100000 + kStackBytes};

enum Register { kR4 = 4, kR12 = 12, kSp = 13, kLr = 14, kPc = 15, kStatus = 16, kRegisters = 17 };
using Registers = std::array<uint32_t, kRegisters>;

constexpr int kRegisterIds[] = {UC_ARM_REG_R0,  UC_ARM_REG_R1,  UC_ARM_REG_R2,  UC_ARM_REG_R3, UC_ARM_REG_R4,
                                UC_ARM_REG_R5,  UC_ARM_REG_R6,  UC_ARM_REG_R7,  UC_ARM_REG_R8, UC_ARM_REG_R9,
                                UC_ARM_REG_R10, UC_ARM_REG_R11, UC_ARM_REG_R12, UC_ARM_REG_SP, UC_ARM_REG_LR,
                                UC_ARM_REG_PC,  UC_ARM_REG_CPSR};

Registers ReadRegisters() {
    Registers registers = {};
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_read(bed->engine, kRegisterIds[i], &registers[i]);
    }
    return registers;
}

void WriteRegisters(const Registers& registers) {
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_write(bed->engine, kRegisterIds[i], &registers[i]);
    }
}

void Kill(const std::string& fault) {
    if (!bed->dead) {
        AddFault(fault + " at " + Hex(ReadRegisters()[kPc] - bed->imageBase) + " of the image");
    }
    bed->dead = true;
    uc_emu_stop(bed->engine);
}

void OnInstruction(uc_engine*, uint64_t, uint32_t, void*) {
    ++bed->instructions;
}

void OnTrap(uc_engine* engine, uint64_t address, uint32_t, void*) {
    bed->trap = static_cast<Address>(address);
    uc_emu_stop(engine);
}

// The handheld gives a stack its next page when the page above has been used.
void TouchStack(size_t stack, Address address) {
    Address& lowest = bed->lowestPage[stack];
    if (address / kPageBytes + 1 < lowest) {
        Kill("access beyond the stack's guard page, " + Hex(address));
    }
    lowest = std::min(lowest, address / kPageBytes);
    bed->deepestStack = std::max(bed->deepestStack, kStackTops[stack] - address);
}

void OnAccess(uc_engine*, uc_mem_type type, uint64_t where, int size, int64_t, void*) {
    const auto address = static_cast<Address>(where);
    const char* access = type == UC_MEM_WRITE ? "store" : "load";
    if (address % static_cast<uint32_t>(size) != 0) {
        Kill(std::string("unaligned ") + access + " of " + std::to_string(size) + " bytes, " + Hex(address));
    }
    if (__asan_region_is_poisoned != nullptr && __asan_region_is_poisoned(At<void>(address), size) != nullptr) {
        Kill(std::string(access) + " outside a block of the heap, " + Hex(address));
    }
    for (size_t stack = 0; stack < std::size(kStackTops); ++stack) {
        if (kStackTops[stack] - address <= kStackBytes) {
            TouchStack(stack, address);
        }
    }
}

void CallStandIn() {
    const std::string name = bed->trapNames.at((bed->trap - kTrapBase) / 4);
    const StandIn& standIn = bed->standIns.at(name);
    Registers registers = ReadRegisters();
    uint64_t words[kMostArguments];
    for (size_t i = 0; i < kMostArguments; ++i) {
        words[i] = i < 4 ? registers[i] : At<uint32_t>(registers[kSp])[i - 4];
    }
    ++bed->imports;
    const uint64_t result = bed->trace != nullptr ? bed->trace->Call(name, words, standIn) : standIn(words);
    registers[0] = static_cast<uint32_t>(result);
    // What any function may leave behind.
    registers[kPc] = registers[kLr];
    for (const uint32_t i : {1, 2, 3, static_cast<int>(kR12), static_cast<int>(kLr)}) {
        registers[i] = kPoison + i;
    }
    registers[kStatus] ^= kFlags;
    WriteRegisters(registers);
}

// Until the call returns, its thread ends or something is wrong.
void RunToReturn() {
    constexpr uint32_t kThumbState = 0x20;
    while (!bed->dead && !bed->threadEnds) {
        bed->trap = 0;
        const uc_err error = uc_emu_start(bed->engine, ReadRegisters()[kPc], kReturnTrap, 0, 0);
        if (error != UC_ERR_OK) {
            return Kill(uc_strerror(error));
        }
        const Registers registers = ReadRegisters();
        if (((registers[kStatus] & kThumbState) != 0) != (bed->systemMode != 0)) {
            return Kill("enters the system in the wrong instruction set");
        }
        if (registers[kPc] == kReturnTrap || bed->trap == kReturnTrap || bed->dead) {
            return;
        }
        CallStandIn();
    }
}

Registers EntryRegisters(Address function, Address stack, std::span<const uint32_t> arguments) {
    Registers registers = ReadRegisters();
    for (uint32_t i = 0; i < kSp; ++i) {
        registers[i] = (i < kR4 || i == kR12 ? kPoison : kPreserved) + i;
    }
    const size_t inRegisters = std::min<size_t>(arguments.size(), 4);
    stack = (stack - static_cast<uint32_t>(arguments.size() - inRegisters) * 4) & ~7u;
    std::copy_n(arguments.begin(), inRegisters, registers.begin());
    std::copy(arguments.begin() + inRegisters, arguments.end(), At<uint32_t>(stack));
    registers[kSp] = stack;
    registers[kLr] = kReturnTrap + bed->systemMode;
    registers[kPc] = function;
    return registers;
}

uint32_t CallOnStack(Address function, Address stack, std::span<const uint32_t> arguments) {
    if (bed->dead) {
        return 0;
    }
    const Registers outer = ReadRegisters();
    const Registers entry = EntryRegisters(function, stack, arguments);
    WriteRegisters(entry);
    ++bed->depth;
    RunToReturn();
    --bed->depth;
    const Registers after = ReadRegisters();
    for (uint32_t i = kR4; i <= kSp && !bed->dead && !bed->threadEnds; ++i) {
        if (i != kR12 && after[i] != entry[i]) {
            AddFault("the call of " + Hex(function - bed->imageBase) + " changed r" + std::to_string(i));
        }
    }
    WriteRegisters(outer);
    return bed->dead ? 0 : after[0];
}

}  // namespace

void OpenBed(Core core) {
    bed = std::make_unique<Bed>();
    uc_open(UC_ARCH_ARM, UC_MODE_ARM, &bed->engine);
    uc_ctl_set_cpu_model(bed->engine, core == Core::StrongArm ? UC_CPU_ARM_SA1110 : UC_CPU_ARM_TI925T);
    bed->systemMode = core == Core::Arm925ThumbSystem ? 1 : 0;
    constexpr uint32_t kNoOperation = 0xE1A00000;
    MapRegion(kTrapBase, kTraps * 4, UC_PROT_READ | UC_PROT_EXEC);
    std::fill_n(At<uint32_t>(kTrapBase), kTraps, kNoOperation);
    for (size_t stack = 0; stack < std::size(kStackTops); ++stack) {
        MapRegion(kStackTops[stack] - kStackBytes, kStackBytes + kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
        bed->lowestPage[stack] = kStackTops[stack] / kPageBytes - 1;
    }
    MapHeap();
    uc_hook hook = 0;
    uc_hook_add(bed->engine, &hook, UC_HOOK_CODE, (void*)OnTrap, nullptr, kTrapBase, kReturnTrap);
    uc_hook_add(bed->engine, &hook, UC_HOOK_CODE, (void*)OnInstruction, nullptr, 0, kTrapBase - 1);
    uc_hook_add(bed->engine, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, (void*)OnAccess, nullptr, 1, 0);
}

uint32_t CallGuest(Address function, std::initializer_list<uint32_t> arguments) {
    const Address stack = bed->depth == 0 ? kStackTops[0] : ReadRegisters()[kSp];
    return CallOnStack(function, stack, {arguments.begin(), arguments.size()});
}

void CallGuestThread(Address function, uint32_t argument) {
    bed->lowestPage[1] = kStackTops[1] / kPageBytes - 1;
    CallOnStack(function, kStackTops[1], {&argument, 1});
    bed->threadEnds = false;
}

Address StandInAddress(const std::string& name) {
    auto found = std::find(bed->trapNames.begin(), bed->trapNames.end(), name);
    if (found == bed->trapNames.end()) {
        found = bed->trapNames.insert(found, name);
    }
    return kTrapBase + static_cast<Address>(found - bed->trapNames.begin()) * 4 + bed->systemMode;
}
