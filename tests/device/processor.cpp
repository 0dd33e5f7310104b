// The processor, its hooks, and the crossing between guest and host. An import's address leads into a region of traps;
// reaching a trap stops the processor, the stand-in runs, and the processor goes on behind the call. So calls nest as
// deep as the host's own stack allows, and the processor itself never runs inside a stand-in.

#include "tests/device/processor.h"

#include "tests/device/stand_in.h"

#include <unicorn/unicorn.h>

#include <algorithm>

std::string Hex(uint32_t value) {
    char text[16];
    snprintf(text, sizeof(text), "0x%X", value);
    return text;
}

namespace {

constexpr Address kTrapBase = 0x7F000000;
constexpr uint32_t kTraps = 4096;
constexpr Address kReturnTrap = kTrapBase + (kTraps - 1) * 4;
constexpr uint32_t kPoison = 0xDEAD0000;     // what a call leaves in registers that it need not preserve
constexpr uint32_t kPreserved = 0x5AFE0000;  // what callee-saved registers hold on entry
constexpr uint64_t kEndless = 500'000'000;   // instructions
constexpr uint32_t kFlags = 0xF0000000;      // N, Z, C, V of the status register

enum Register { kR4 = 4, kR12 = 12, kSp = 13, kLr = 14, kPc = 15, kStatus = 16, kRegisters = 17 };
int RegisterId(int number) {
    constexpr int kSpecial[] = {UC_ARM_REG_SP, UC_ARM_REG_LR, UC_ARM_REG_PC, UC_ARM_REG_CPSR};
    return number < kSp ? UC_ARM_REG_R0 + number : kSpecial[number - kSp];
}

struct Registers {
    uint32_t values[kRegisters];
};

Registers ReadRegisters(Bed& bed) {
    Registers registers = {};
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_read(bed.processor->engine, RegisterId(i), &registers.values[i]);
    }
    return registers;
}

void WriteRegisters(Bed& bed, const Registers& registers) {
    for (int i = 0; i < kRegisters; ++i) {
        uc_reg_write(bed.processor->engine, RegisterId(i), &registers.values[i]);
    }
}

std::string Place(Bed& bed) {
    return " at " + Hex(ReadRegisters(bed).values[kPc] - bed.imageBase) + " of the image";
}

void Kill(Bed& bed, const std::string& fault) {
    if (!bed.processor->dead) {
        AddFault(bed, fault + Place(bed));
    }
    bed.processor->dead = true;
    uc_emu_stop(bed.processor->engine);
}

void OnInstruction(uc_engine*, uint64_t, uint32_t, void* data) {
    Bed& bed = *static_cast<Bed*>(data);
    if (++bed.figures.instructions % kEndless == 0) {
        Kill(bed, "runs without end");
    }
}

void OnTrap(uc_engine* engine, uint64_t address, uint32_t, void* data) {
    static_cast<Bed*>(data)->processor->trap = static_cast<Address>(address);
    uc_emu_stop(engine);
}

void OnAccess(uc_engine*, uc_mem_type type, uint64_t where, int size, int64_t, void* data) {
    Bed& bed = *static_cast<Bed*>(data);
    const auto address = static_cast<Address>(where);
    const auto bytes = static_cast<uint32_t>(size);
    const char* access = type == UC_MEM_WRITE ? "store" : "load";
    if (address % bytes != 0) {
        Kill(bed, std::string("unaligned ") + access + " of " + std::to_string(bytes) + " bytes, " + Hex(address));
    }
    if (const char* problem = TouchGuestMemory(bed.processor->memory, address, bytes)) {
        Kill(bed, std::string(access) + ' ' + problem + ", " + Hex(address));
    }
    bed.figures.deepestStack = std::max(bed.figures.deepestStack, bed.processor->memory.deepestStack);
}

template <class Callback>
void AddHook(Bed& bed, int type, Callback callback, uint64_t first, uint64_t last) {
    uc_hook hook = 0;
    uc_hook_add(bed.processor->engine, &hook, type, reinterpret_cast<void*>(callback), &bed, first, last);
}

// What any function may leave behind. The result is in r0.
void PoisonRegisters(Registers& registers) {
    for (const int i : {1, 2, 3, static_cast<int>(kR12), static_cast<int>(kLr)}) {
        registers.values[i] = kPoison + static_cast<uint32_t>(i);
    }
    registers.values[kStatus] ^= kFlags;
}

void CallStandIn(Bed& bed) {
    Processor& processor = *bed.processor;
    const std::string& name = processor.trapNames[(processor.trap - kTrapBase) / 4];
    Registers registers = ReadRegisters(bed);
    const Address back = registers.values[kLr];
    const auto standIn = bed.standIns.find(name);
    if (standIn == bed.standIns.end()) {
        registers.values[kPc] = back;
        WriteRegisters(bed, registers);
        return Kill(bed, "calls " + name + ", which has no stand-in,");
    }
    Arguments arguments{bed, name, {}, registers.values[kSp]};
    std::copy_n(registers.values, 4, arguments.registers);
    ++bed.figures.imports;
    registers.values[0] = standIn->second(arguments);
    PoisonRegisters(registers);
    registers.values[kPc] = back;
    WriteRegisters(bed, registers);
}

bool IsThumb(Bed& bed) {
    constexpr uint32_t kThumbState = 0x20;
    return (ReadRegisters(bed).values[kStatus] & kThumbState) != 0;
}

// Until the call returns, its thread ends or something is wrong.
void RunToReturn(Bed& bed) {
    Processor& processor = *bed.processor;
    while (!processor.dead && !processor.ending) {
        processor.trap = 0;
        const Address start = ReadRegisters(bed).values[kPc];
        const uc_err error = uc_emu_start(processor.engine, start, kReturnTrap, 0, 0);
        if (error != UC_ERR_OK) {
            return Kill(bed, uc_strerror(error));
        }
        if (IsThumb(bed) != (processor.systemMode != 0)) {
            return Kill(bed, "enters the system in the wrong instruction set");
        }
        if (ReadRegisters(bed).values[kPc] == kReturnTrap || processor.trap == kReturnTrap || processor.dead) {
            return;
        }
        if (processor.trap == 0) {
            return Kill(bed, "stopped without a reason");
        }
        CallStandIn(bed);
    }
}

void CheckPreserved(Bed& bed, const Registers& before, Address function) {
    const Registers after = ReadRegisters(bed);
    for (int i = kR4; i <= kSp; ++i) {
        if (i != kR12 && after.values[i] != before.values[i]) {
            AddFault(bed, "the call of " + Hex(function - bed.imageBase) + " changed r" + std::to_string(i));
        }
    }
}

Registers EntryRegisters(Bed& bed, const Registers& outer, Address function, Address stack,
                         std::span<const uint32_t> arguments) {
    Registers registers = outer;
    for (int i = 0; i < kSp; ++i) {
        registers.values[i] = (i < kR4 || i == kR12 ? kPoison : kPreserved) + static_cast<uint32_t>(i);
    }
    const size_t onStack = arguments.size() > 4 ? arguments.size() - 4 : 0;
    stack = (stack - static_cast<uint32_t>(onStack) * 4) & ~7u;
    for (size_t i = 0; i < arguments.size(); ++i) {
        if (i < 4) {
            registers.values[i] = arguments[i];
        } else {
            WriteGuest(bed, stack + static_cast<uint32_t>(i - 4) * 4, arguments[i]);
        }
    }
    registers.values[kSp] = stack;
    registers.values[kLr] = kReturnTrap + bed.processor->systemMode;
    registers.values[kPc] = function;
    return registers;
}

uint32_t CallOnStack(Bed& bed, Address function, Address stack, std::span<const uint32_t> arguments) {
    Processor& processor = *bed.processor;
    if (processor.dead) {
        return 0;
    }
    if (function % 4 != 0) {
        AddFault(bed, Hex(function) + " is no ARM function");
        return 0;
    }
    const Registers outer = ReadRegisters(bed);
    const Registers entry = EntryRegisters(bed, outer, function, stack, arguments);
    WriteRegisters(bed, entry);
    ++processor.depth;
    RunToReturn(bed);
    --processor.depth;
    if (!processor.dead && !processor.ending) {
        CheckPreserved(bed, entry, function);
    }
    const uint32_t result = processor.dead ? 0 : ReadRegisters(bed).values[0];
    WriteRegisters(bed, outer);
    return result;
}

}  // namespace

void MapGuest(Bed& bed, Address base, uint32_t bytes, uint32_t rights, std::span<const uint8_t> contents) {
    Processor& processor = *bed.processor;
    uint8_t* memory = AddGuestRegion(processor.memory, base, bytes, (rights & UC_PROT_WRITE) != 0);
    std::copy(contents.begin(), contents.end(), memory);
    if (uc_mem_map_ptr(processor.engine, base, bytes, rights, memory) != UC_ERR_OK) {
        AddFault(bed, "cannot map " + Hex(base));
    }
}

std::unique_ptr<Bed> NewBed(Core core) {
    auto bed = std::make_unique<Bed>();
    Processor& processor = *bed->processor;
    uc_open(UC_ARCH_ARM, UC_MODE_ARM, &processor.engine);
    uc_ctl_set_cpu_model(processor.engine, core == Core::StrongArm ? UC_CPU_ARM_SA1110 : UC_CPU_ARM_TI925T);
    processor.systemMode = core == Core::Arm925ThumbSystem ? 1 : 0;
    for (const auto& standIns : {GdiStandIns, KernelStandIns, FileStandIns, TextStandIns, RegistryStandIns,
                                 NetworkStandIns, SocketStandIns, WindowStandIns, DialogStandIns}) {
        for (const StandInRow& row : standIns()) {
            bed->standIns[row.name] = row.call;
        }
    }
    constexpr uint32_t kNoOperation = 0xE1A00000;
    const std::vector<uint32_t> traps(kTraps, kNoOperation);
    MapGuest(*bed, kTrapBase, kTraps * 4, UC_PROT_READ | UC_PROT_EXEC,
             {reinterpret_cast<const uint8_t*>(traps.data()), kTraps * 4});
    MapGuest(*bed, kHeapBase, kHeapBytes, UC_PROT_READ | UC_PROT_WRITE);
    for (int stack = 0; stack < kMostStacks; ++stack) {
        MapGuest(*bed, StackTop(stack) - kStackBytes, kStackBytes, UC_PROT_READ | UC_PROT_WRITE);
    }
    AddHook(*bed, UC_HOOK_CODE, OnTrap, kTrapBase, kReturnTrap);
    AddHook(*bed, UC_HOOK_CODE, OnInstruction, 0, kTrapBase - 1);
    AddHook(*bed, UC_HOOK_MEM_READ | UC_HOOK_MEM_WRITE, OnAccess, 1, 0);
    return bed;
}

Bed::Bed() : processor(std::make_unique<Processor>()) {}

Bed::~Bed() {
    if (processor->engine != nullptr) {
        uc_close(processor->engine);
    }
}

uint32_t CallGuest(Bed& bed, Address function, std::initializer_list<uint32_t> arguments) {
    const Processor& processor = *bed.processor;
    const Address stack = processor.depth == 0 ? StackTop(0) : ReadRegisters(bed).values[kSp];
    return CallOnStack(bed, function, stack, {arguments.begin(), arguments.size()});
}

uint32_t CallGuestThread(Bed& bed, Address function, uint32_t argument) {
    Processor& processor = *bed.processor;
    if (processor.threads + 1 == kMostStacks) {
        AddFault(bed, "more threads within threads than there are stacks");
        return 0;
    }
    ResetStack(processor.memory, ++processor.threads);
    const uint32_t result = CallOnStack(bed, function, StackTop(processor.threads), {&argument, 1});
    --processor.threads;
    processor.ending = false;
    return result;
}

void EndGuestThread(Bed& bed) {
    if (bed.processor->threads == 0) {
        AddFault(bed, "ends a thread that it did not start");
    }
    bed.processor->ending = true;
}

Address StandInAddress(Bed& bed, const std::string& name) {
    Processor& processor = *bed.processor;
    const auto [row, isNew] = processor.traps.try_emplace(name, 0);
    if (isNew) {
        row->second = kTrapBase + static_cast<uint32_t>(processor.trapNames.size()) * 4 + processor.systemMode;
        processor.trapNames.push_back(name);
    }
    return row->second;
}

uint32_t Arguments::operator[](size_t index) const {
    return index < 4 ? registers[index] : ReadGuest<uint32_t>(bed, stack + static_cast<uint32_t>(index - 4) * 4);
}
