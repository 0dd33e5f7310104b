// tests/device/bed.h - a model of the handheld's processor with the built quorvane.dll in it: loaded, relocated and
// bound as the handheld's loader does it. Every function that it imports is a stand-in on the host, found by name,
// which may call back into the guest (CallGuest), any number deep; one without a stand-in gives a new handle. The
// guest's memory lies at the same addresses in this process: a guest's address is a pointer here, and one that is wrong
// ends the test.
//
// Whatever the real system would punish in the guest's own code is written down in `faults`. After the first of them
// the calls under way return 0 and later ones do nothing.
#pragma once

#include "tests/device/trace.h"

#include <unicorn/unicorn.h>

#include <map>
#include <memory>
#include <span>

using Address = uint32_t;

enum class Core {
    Arm925,             // ARMv4T: an instruction of a later architecture is a fault
    StrongArm,          // ARMv4, in the oldest handhelds: so is the exchange of instruction sets (bx)
    Arm925ThumbSystem,  // the system is Thumb code, as later handhelds have it: calls and returns have to exchange
};

inline constexpr uint32_t kPageBytes = 0x1000;
inline constexpr uint32_t kStackBytes = 64 << 10;

// One at a time: the memory is where it is.
struct Bed {
    uc_engine* engine = nullptr;
    Trace* trace = nullptr;                  // of the calls of stand-ins
    uint64_t instructions = 0, imports = 0;  // executed by the guest, and its calls of stand-ins
    uint32_t deepestStack = 0;               // bytes in use at most, by nested calls or a worker (on its own stack)
    uint32_t stackDepths[2] = {};            // of the nested calls, and of the latest worker
    std::string faults;                      // one a line
    bool dead = false;                       // after a fault of the guest's code
    std::map<std::string, StandIn> standIns;
    std::vector<std::string> trapNames;
    uint32_t systemMode = 0;             // 1: the system's functions are Thumb code
    bool threadEnds = false;             // set by what ends the calling thread
    int depth = 0;                       // calls under way
    std::map<Address, uint32_t> blocks;  // of the heap
    Address heapEnd = 0;
    Address imageBase = 0;
    const uint32_t* header = nullptr;     // of the image
    std::map<uint32_t, Address> exports;  // by ordinal; 0: the entry point
    uint32_t nextHandle = 0x1000;

    ~Bed() { uc_close(engine); }
};
extern std::unique_ptr<Bed> bed;

void OpenBed(Core core);  // instead of the last one, with heap and stacks and without code

// Maps, relocates and binds the library at `base` (0: the base it prefers).
void LoadLibraryIntoBed(const std::string& file, Address base);
// Zeroed memory instead of what was there; the guest's rights are UC_PROT_...
void MapRegion(Address base, uint32_t bytes, uint32_t rights);
void MapHeap();

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

// A resource of the library by its numeric type (RT_...) and id.
std::span<const uint8_t> FindGuestResource(uint32_t type, uint32_t id);
