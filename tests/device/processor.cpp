// The processor, its hooks, and the crossing between guest and host. An import's address leads into a region of traps;
// reaching a trap stops the processor, the stand-in runs, and the processor goes on behind the call. So calls nest as
// deep as the host's own stack allows, and the processor itself never runs inside a stand-in.

#include "tests/device/bed.h"
#include "tests/device/player.h"

#include <algorithm>
#include <sstream>

namespace {

constexpr Address kTrapBase = 0x7F000000;
constexpr Address kReturnTrap = kTrapBase + kPageBytes - 4;
constexpr uint32_t kPoison = 0xDEAD0000;     // what a call leaves in registers that it need not preserve
constexpr uint32_t kPreserved = 0x5AFE0000;  // what callee-saved registers hold on entry
constexpr uint32_t kFlags = 0xF0000000;      // N, Z, C and V of the status register
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

// After an access the address tells more than the place in the code, which is then that of the block around it.
void Kill(const std::string& fault, Address address) {
    if (!bed->dead) {
        std::ostringstream text;
        text << fault << std::hex << ", " << address << ", at " << ReadRegisters()[kPc] - bed->imageBase;
        AddFault(text.str());
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

bool IsInBlock(Address address, uint32_t bytes) {
    const auto next = bed->blocks.upper_bound(address);
    return next != bed->blocks.begin() && address + bytes <= std::prev(next)->first + std::prev(next)->second;
}

void OnAccess(uc_engine*, uc_mem_type, uint64_t where, int size, int64_t, void*) {
    const auto address = static_cast<Address>(where);
    const auto bytes = static_cast<uint32_t>(size);
    if (address % bytes != 0) {
        Kill("unaligned", address);
    }
    if (address - kHeapBase < kHeapBytes && !IsInBlock(address, bytes)) {
        Kill("outside a block of the heap", address);
    }
    for (const Address top : kStackTops) {
        if (const uint32_t depth = top - address; depth <= kStackBytes) {
            bed->deepestStack = std::max(bed->deepestStack, depth);
        }
    }
}

void CallStandIn(Registers registers) {
    const std::string name = bed->trapNames.at((registers[kPc] - kTrapBase) / 4);
    const auto found = bed->standIns.find(name);
    uint64_t words[kMostArguments];
    for (size_t i = 0; i < kMostArguments; ++i) {
        words[i] = i < 4 ? registers[i] : At<uint32_t>(registers[kSp])[i - 4];
    }
    ++bed->imports;
    const StandIn newHandle = [](const uint64_t*) { return NewHandle(); };
    const uint64_t result = TraceCall(name, words, found != bed->standIns.end() ? found->second : newHandle);
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
            Kill(uc_strerror(error), registers[kPc]);
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
    entry[kLr] = kReturnTrap;
    entry[kPc] = function;
    WriteRegisters(entry);
    ++bed->depth;
    RunToReturn();
    --bed->depth;
    const Registers after = ReadRegisters();
    for (uint32_t i = kR4; i <= kSp && !bed->dead && !bed->threadEnds; ++i) {
        if (i != kR12 && after[i] != entry[i]) {
            AddFault("changed r" + std::to_string(i));
        }
    }
    WriteRegisters(outer);
    return bed->dead ? 0 : after[0];
}

}  // namespace

void OpenBed(uc_cpu_arm core) {
    bed.reset();
    bed = std::make_unique<Bed>();
    uc_open(UC_ARCH_ARM, UC_MODE_ARM, &bed->engine);
    uc_ctl_set_cpu_model(bed->engine, core);
    MapRegion(kTrapBase, kPageBytes, UC_PROT_READ | UC_PROT_EXEC);
    for (const Address top : kStackTops) {
        MapRegion(top - kStackBytes, kStackBytes + kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    }
    MapRegion(kHeapBase, kHeapBytes, UC_PROT_READ | UC_PROT_WRITE);
    uc_hook hook = 0;
    uc_hook_add(bed->engine, &hook, UC_HOOK_CODE, (void*)OnInstruction, nullptr, 1, 0);
    uc_hook_add(bed->engine, &hook, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, (void*)OnAccess, nullptr, 1, 0);
}

uint32_t CallGuest(Address function, std::initializer_list<uint32_t> arguments) {
    const Address stack = bed->depth == 0 ? kStackTops[0] : ReadRegisters()[kSp];
    return CallOnStack(function, stack, {arguments.begin(), arguments.size()});
}

void CallGuestThread(Address function, uint32_t argument) {
    CallOnStack(function, kStackTops[1], {&argument, 1});
    bed->threadEnds = false;
}

Address StandInAddress(const std::string& name) {
    auto found = std::find(bed->trapNames.begin(), bed->trapNames.end(), name);
    if (found == bed->trapNames.end()) {
        found = bed->trapNames.insert(found, name);
    }
    return kTrapBase + static_cast<Address>(found - bed->trapNames.begin()) * 4;
}
