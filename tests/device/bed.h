// tests/device/bed.h - a model of the handheld's processor with the built quorvane.dll in it: loaded, relocated and
// bound as the handheld's loader does it. Every function that it imports is a stand-in on the host, found by name,
// which may call back into the guest (CallGuest), any number deep; one without a stand-in gives a new handle. The
// guest's memory lies at the same addresses in this process: a guest's address is a pointer here, and one that is wrong
// ends the test.
//
// Whatever the real system would punish in the guest's own code is written down in `faults`. After the first of them
// the calls under way return 0 and later ones do nothing.
#pragma once

#include "tests/device/stand_in.h"

#include <unicorn/unicorn.h>

#include <map>
#include <memory>
#include <span>

using Address = uint32_t;

inline constexpr uint32_t kPageBytes = 0x1000;
inline constexpr uint32_t kStackBytes = 64 << 10;
inline constexpr Address kHeapBase = 0x40000000;
inline constexpr uint32_t kHeapBytes = 64 << 20;

// One at a time: the memory is where it is.
struct Bed {
    uc_engine* engine = nullptr;
    uint64_t instructions = 0, imports = 0;  // executed by the guest, and its calls of stand-ins
    uint32_t deepestStack = 0;               // bytes in use at most, by nested calls or by a worker on its own stack
    std::string faults;                      // one a line
    bool dead = false;                       // after a fault of the guest's code
    bool threadEnds = false;                 // set by what ends the calling thread
    int depth = 0;                           // calls under way
    std::map<std::string, StandIn> standIns;
    std::vector<std::string> trapNames;  // by the addresses that imports lead to
    std::map<Address, uint32_t> blocks;  // of the heap
    Address heapEnd = kHeapBase;
    Address imageBase = 0;
    std::map<uint32_t, Address> exports;  // by ordinal; 0: the entry point
    uint32_t nextHandle = 0x10000;

    ~Bed() { uc_close(engine); }
};
extern std::unique_ptr<Bed> bed;

// Instead of the last one, with heap and stacks and without code. An instruction that came after the core is a fault.
void OpenBed(uc_cpu_arm core);
void LoadLibraryIntoBed(const std::string& file, Address base);
// Zeroed memory instead of what was there; the guest's rights are UC_PROT_...
void MapRegion(Address base, uint32_t bytes, uint32_t rights);

void AddFault(const std::string& text);

// Calls guest code with four arguments at most and returns r0.
uint32_t CallGuest(Address function, std::initializer_list<uint32_t> arguments = {});
// The same on a fresh 64 KB stack, as a thread of its own that runs to its end.
void CallGuestThread(Address function, uint32_t argument);
// Where guest code can call the stand-in of that name (as an import's address, or GetProcAddressW's).
Address StandInAddress(const std::string& name);

template <class Value>
Value* At(Address address) {
    return reinterpret_cast<Value*>(uintptr_t{address});
}
inline Address AddressAt(const void* memory) {
    return static_cast<Address>(reinterpret_cast<uintptr_t>(memory));
}

// The guest's heap: zeroed, aligned to 8, not given out again; an access outside the live blocks is a fault.
Address Allocate(uint32_t bytes);
void Free(Address block);

inline uint32_t NewHandle() {
    return bed->nextHandle += 4;
}
