// The processor, its hooks, and the crossing between guest and host. An import's address leads into a region of traps;
// reaching a trap stops the processor, the stand-in runs, and the processor goes on behind the call. So calls nest as
// deep as the host's own stack allows, and the processor itself never runs inside a stand-in.

#include "tests/device/bed.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>

// Null in a program without the address sanitizer.
extern "C" __attribute__((weak)) void* __asan_region_is_poisoned(void* begin, size_t bytes);

namespace {

constexpr Address kTrapBase = 0x7F000000;
constexpr Address kReturnTrap = kTrapBase + kPageBytes - 4;
constexpr uint32_t kPoison = 0xDEAD0000;     // what a call leaves in registers that it need not preserve
constexpr uint32_t kPreserved = 0x5AFE0000;  // what callee-saved registers hold on entry
constexpr uint32_t kFlags = 0xF0000000, kThumbState = 0x20;  // N, Z, C, V and T of the status register
// The stacks of the user interface and of a worker. Nothing is mapped below them.
constexpr Address kStackTops[] = {0x30000000 + kStackBytes, 0x30100000 + kStackBytes};

enum Register { kR4 = 4, kR12 = 12, kSp = 13, kLr = 14, kPc = 15, kStatus = 16, kRegisters = 17 };
using Registers = std::array<uint32_t, kRegisters>;

int RegisterId(int number) {
    constexpr int kSpecial[] = {UC_ARM_REG_SP, UC_ARM_REG_LR, UC_ARM_REG_PC, UC_ARM_REG_CPSR};
    return number < kSp ? UC_ARM_REG_R0 + number : kSpecial[number - kSp];
}

Registers ReadRegisters() {
    Registers registers = {};
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_read(bed->engine, RegisterId(i), &registers[i]);
    }
    return registers;
}

void WriteRegisters(const Registers& registers) {
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_write(bed->engine, RegisterId(i), &registers[i]);
    }
}

void Kill(const std::string& fault) {
    if (!bed->dead) {
        AddFault(fault + " at " + Hex(ReadRegisters()[kPc] - bed->imageBase) + " of the image");
    }
    bed->dead = true;
    uc_emu_stop(bed->engine);
}

void OnInstruction(uc_engine* engine, uint64_t address, uint32_t, void*) {
    if (address >= kTrapBase) {
        uc_emu_stop(engine);
    } else {
        ++bed->instructions;
    }
}

void OnAccess(uc_engine*, uc_mem_type type, uint64_t where, int size, int64_t, void*) {
    const auto address = static_cast<Address>(where);
    const std::string access = type == UC_MEM_WRITE ? "store" : "load";
    if (address % static_cast<uint32_t>(size) != 0) {
        Kill("unaligned " + access + " of " + std::to_string(size) + " bytes, " + Hex(address));
    }
    if (__asan_region_is_poisoned != nullptr && __asan_region_is_poisoned(At<void>(address), size) != nullptr) {
        Kill(access + " outside a block of the heap, " + Hex(address));
    }
    for (size_t stack = 0; stack < std::size(kStackTops); ++stack) {
        if (const uint32_t depth = kStackTops[stack] - address; depth <= kStackBytes) {
            // The handheld gives a stack its next page when the page above has been used.
            if (depth > bed->stackDepths[stack] / kPageBytes * kPageBytes + 2 * kPageBytes) {
                Kill("access beyond the stack's guard page, " + Hex(address));
            }
            bed->stackDepths[stack] = std::max(bed->stackDepths[stack], depth);
            bed->deepestStack = std::max(bed->deepestStack, depth);
        }
    }
}

void CallStandIn(Registers registers) {
    const std::string name = bed->trapNames.at((registers[kPc] - kTrapBase) / 4);
    const auto found = bed->standIns.find(name);
    const StandIn standIn = found != bed->standIns.end() ? found->second : [](const uint64_t*) { return NewHandle(); };
    uint64_t words[kMostArguments];
    for (size_t i = 0; i < kMostArguments; ++i) {
        words[i] = i < 4 ? registers[i] : At<uint32_t>(registers[kSp])[i - 4];
    }
    ++bed->imports;
    const uint64_t result = bed->trace != nullptr ? bed->trace->Call(name, words, standIn) : standIn(words);
    // What any function may leave behind.
    registers[kPc] = registers[kLr];
    for (const uint32_t i : {1, 2, 3, static_cast<int>(kR12), static_cast<int>(kLr)}) {
        registers[i] = kPoison + i;
    }
    registers[0] = static_cast<uint32_t>(result);
    registers[kStatus] ^= kFlags;
    WriteRegisters(registers);
}

// Until the call returns, its thread ends or something is wrong.
void RunToReturn() {
    while (!bed->dead && !bed->threadEnds) {
        const uc_err error = uc_emu_start(bed->engine, ReadRegisters()[kPc], kReturnTrap, 0, 0);
        const Registers registers = ReadRegisters();
        if (error != UC_ERR_OK) {
            Kill(uc_strerror(error));
        } else if (((registers[kStatus] & kThumbState) != 0) != (bed->systemMode != 0)) {
            Kill("enters the system in the wrong instruction set");
        } else if (registers[kPc] == kReturnTrap) {
            return;
        } else if (!bed->dead) {
            CallStandIn(registers);
        }
    }
}

uint32_t CallOnStack(Address function, Address stack, std::span<const uint32_t> arguments) {
    const Registers outer = ReadRegisters();
    Registers entry = outer;
    for (uint32_t i = 0; i < kSp; ++i) {
        entry[i] = (i < kR4 || i == kR12 ? kPoison : kPreserved) + i;
    }
    std::copy(arguments.begin(), arguments.end(), entry.begin());
    entry[kSp] = stack & ~7u;
    entry[kLr] = kReturnTrap + bed->systemMode;
    entry[kPc] = function;
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
    bed.reset();
    bed = std::make_unique<Bed>();
    uc_open(UC_ARCH_ARM, UC_MODE_ARM, &bed->engine);
    uc_ctl_set_cpu_model(bed->engine, core == Core::StrongArm ? UC_CPU_ARM_SA1110 : UC_CPU_ARM_TI925T);
    bed->systemMode = core == Core::Arm925ThumbSystem ? 1 : 0;
    MapRegion(kTrapBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
    for (const Address top : kStackTops) {
        MapRegion(top - kStackBytes, kStackBytes + kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    }
    MapHeap();
    uc_hook hook = 0;
    uc_hook_add(bed->engine, &hook, UC_HOOK_CODE, (void*)OnInstruction, nullptr, 1, 0);
    uc_hook_add(bed->engine, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, (void*)OnAccess, nullptr, 1, 0);
}

uint32_t CallGuest(Address function, std::initializer_list<uint32_t> arguments) {
    const Address stack = bed->depth == 0 ? kStackTops[0] : ReadRegisters()[kSp];
    return CallOnStack(function, stack, {arguments.begin(), arguments.size()});
}

void CallGuestThread(Address function, uint32_t argument) {
    bed->stackDepths[1] = 0;
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
