// tests/device/handheld.h - a model of a handheld with the built quorvane.dll in it: loaded, relocated and bound as its
// loader does it. Every function that it imports is a stand-in on the host, found by name, which may call back into the
// guest (CallGuest), any number deep; one without a stand-in gives a new handle. The guest's memory lies at the same
// addresses in this process: a guest's address is a pointer here, and one that is wrong ends the test.
//
// Whatever the real system would punish in the guest's own code is written down in `faults`. After the first of them
// the calls under way return 0 and later ones do nothing.
#pragma once

#include "tests/device/player.h"

#include <unicorn/unicorn.h>

#include <memory>
#include <span>

using Address = uint32_t;

inline constexpr uint32_t kPageBytes = 0x1000, kStackBytes = 64 << 10, kHeapBytes = 64 << 20;
inline constexpr Address kHeapBase = 0x40000000;
// The stacks' upper ends. Nothing is mapped below them.
inline constexpr Address kMainStack = 0x30000000 + kStackBytes, kWorkerStack = 0x30100000 + kStackBytes;

// One at a time: the memory is where it is.
struct Handheld {
    uc_cpu_arm core = UC_CPU_ARM_TI925T;  // an instruction that came after it is a fault
    Address base = 0x10000000;            // where the library goes
    std::map<std::string, int> failing;   // functions: which of their next calls does (1: the next)
    bool threadsWait = false;             // until RunThreads, and not within CreateThread

    std::unique_ptr<uc_engine, decltype(&uc_close)> engine{nullptr, uc_close};
    std::string faults;                      // one a line
    uint64_t instructions = 0, imports = 0;  // executed by the guest, and its calls of stand-ins
    uint32_t deepestStack = 0;               // bytes in use at most, by nested calls or by a worker on its own stack
    bool threadEnds = false;                 // set by what ends the calling thread
    std::map<std::string, StandIn> standIns;
    std::vector<std::string> trapNames;  // by the addresses that imports lead to
    std::map<Address, uint32_t> blocks;  // of the heap
    Address heapEnd = kHeapBase, itemProcedure = 0, entry = 0;
    const uint32_t* exports = nullptr;        // their places in the library
    std::map<uint64_t, Address> procedures;   // of the guest, by window
    std::map<uint64_t, const void*> handles;  // pointers of this process that the guest knows by numbers
    std::deque<std::pair<Address, uint32_t>> waitingThreads;  // functions and arguments
    int libraryUses = 1;                                      // of the library itself
    uint32_t nextHandle = 0x10000;
};
extern std::unique_ptr<Handheld> handheld;

void ResetHandheld();  // and the player
void RunThreads();

StandInTable SystemStandIns();   // files, registry, memory, modules, threads, texts
StandInTable NetworkStandIns();  // IP helper, echo, wireless driver, Winsock, connection manager, internet library

// A processor with heap and stacks and without code, instead of the last one.
void OpenProcessor();
void LoadLibraryIntoMemory(const std::string& file);
// Zeroed memory instead of what was there; the guest's rights are UC_PROT_...
void MapRegion(Address base, uint32_t bytes, uint32_t rights);
// Calls guest code with four arguments at most, below the calls under way or on a stack of its own, and returns r0.
uint32_t CallGuest(Address function, std::initializer_list<uint64_t> arguments, Address stack = 0);
// Where guest code can call the stand-in of that name (as an import's address, or GetProcAddressW's).
Address StandInAddress(const std::string& name);
// The guest's heap: zeroed, aligned to 8, not given out again; an access outside the live blocks is a fault.
Address Allocate(uint32_t bytes);

template <class Value>
Value* At(Address address) {
    return reinterpret_cast<Value*>(uintptr_t{address});
}

inline uint32_t NewHandle() {
    return handheld->nextHandle += 4;
}
