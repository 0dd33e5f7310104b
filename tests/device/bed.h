// tests/device/bed.h - a model of the handheld's processor with the built quorvane.dll in it: loaded, relocated and
// bound as the handheld's loader does it. Every function that it imports is a stand-in on the host, found by name,
// which may call back into the guest (CallGuest), any number deep.
//
// Whatever the real system would punish, or would do differently, is written down in `faults`. After a fault in the
// guest's own code the calls under way return 0 and later ones do nothing. A test ends with `EXPECT_EQ(Faults(*bed),
// "")`.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <typeindex>
#include <unordered_map>
#include <vector>

struct Bed;
using Address = uint32_t;

// The arguments of one call of an import: the first four words are registers, the others lie on the guest's stack.
struct Arguments {
    Bed& bed;
    const std::string& function;
    uint32_t registers[4];
    Address stack;
    uint32_t operator[](size_t index) const;
};

using StandIn = std::function<uint32_t(const Arguments& arguments)>;  // returns what the guest finds in r0

// A kernel, window or GDI object behind a handle. Derive, add, find by handle and type.
struct Object {
    virtual ~Object() = default;
};

enum class Core {
    Arm925,             // ARMv4T: an instruction of a later architecture is a fault
    StrongArm,          // ARMv4, in the oldest handhelds: so is the exchange of instruction sets (bx)
    Arm925ThumbSystem,  // the system is Thumb code, as later handhelds have it: calls and returns have to exchange
};

struct Figures {
    uint64_t instructions = 0;  // executed by the guest since the bed was opened
    uint32_t deepestStack = 0;  // bytes in use at most, nested calls and workers (on their own stacks) included
    uint64_t imports = 0;       // calls of stand-ins
};

struct Processor;  // the model itself

struct Bed {
    std::unique_ptr<Processor> processor;
    Address imageBase = 0;
    Figures figures;
    std::vector<std::string> faults;
    std::unordered_map<std::string, StandIn> standIns;  // a test may replace one after OpenBed
    std::unordered_map<uint32_t, std::unique_ptr<Object>> objects;
    std::unordered_map<std::type_index, std::shared_ptr<void>> parts;
    uint32_t nextHandle = 0x1000;
    uint32_t lastError = 0;
    std::string folder;  // host folder that plays the device's root "\"

    Bed();
    ~Bed();
};

// Maps, relocates and binds the library at `base` (0: the base it prefers). A library that cannot be loaded, and an
// import without a stand-in, is a fault.
std::unique_ptr<Bed> OpenBed(const std::string& library, const std::string& folder, Address base = 0,
                             Core core = Core::Arm925);
// Calls the entry point, with DLL_PROCESS_ATTACH (false: it refused) or DLL_PROCESS_DETACH.
bool AttachLibrary(Bed& bed);
void DetachLibrary(Bed& bed);
// A bed with `code` (ARM words) at kSnippetBase instead of a library, for tests of the bed itself.
std::unique_ptr<Bed> OpenSnippet(std::span<const uint32_t> code, Core core = Core::Arm925);
inline constexpr Address kSnippetBase = 0x00010000;

std::string Faults(const Bed& bed);  // all so far, one a line
void AddFault(Bed& bed, const std::string& text);

// Calls guest code and returns r0. Arguments beyond the fourth go onto the stack.
uint32_t CallGuest(Bed& bed, Address function, std::initializer_list<uint32_t> arguments = {});
// The same on a fresh 64 KB stack, as a thread of its own that runs to its end.
uint32_t CallGuestThread(Bed& bed, Address function, uint32_t argument);
void EndGuestThread(Bed& bed);                        // for stand-ins of what ends the calling thread
Address ExportByOrdinal(Bed& bed, uint32_t ordinal);  // 0: none
// Where guest code can call the stand-in of that name (as an import's address, or GetProcAddressW's).
Address StandInAddress(Bed& bed, const std::string& name);

// The guest's memory, seen from the host. Null and a fault if the guest's code itself could not read all of it (or
// write it, when `writes`). Host views are valid until the block is freed, and need not be aligned.
uint8_t* GuestMemory(Bed& bed, Address address, size_t bytes, bool writes = false);

template <class Value>
Value ReadGuest(Bed& bed, Address address) {
    Value value{};
    if (const uint8_t* memory = GuestMemory(bed, address, sizeof(Value))) {
        memcpy(&value, memory, sizeof(Value));
    }
    return value;
}

void WriteBytes(Bed& bed, Address to, const void* bytes, size_t count);

template <class Value>
void WriteGuest(Bed& bed, Address address, const Value& value) {
    WriteBytes(bed, address, &value, sizeof(Value));
}

std::u16string ReadText(Bed& bed, Address text);  // wide, up to its terminator; null gives an empty text
std::string ReadNarrow(Bed& bed, Address text);
void WriteText(Bed& bed, Address text, std::u16string_view value);  // with terminator
// Conversions of the host side: Latin-1 above 7 bits, '?' for what it lacks.
std::string Narrow(std::u16string_view text);
std::u16string Widen(std::string_view text);

// The guest's heap (LocalAlloc). Zeroed, aligned to 8; an access outside the live blocks is a fault.
Address Allocate(Bed& bed, uint32_t bytes);
bool Free(Bed& bed, Address block);
size_t LiveBlocks(const Bed& bed);

uint32_t AddObject(Bed& bed, std::unique_ptr<Object> object);  // its handle
template <class Kind>
Kind* FindObject(Bed& bed, uint32_t handle) {
    const auto found = bed.objects.find(handle);
    return found == bed.objects.end() ? nullptr : dynamic_cast<Kind*>(found->second.get());
}
// False, and a fault, for a handle that is not of that kind: a double or foreign release.
template <class Kind>
bool RemoveObject(Bed& bed, uint32_t handle) {
    if (FindObject<Kind>(bed, handle) == nullptr) {
        AddFault(bed, "released what is no " + std::string(typeid(Kind).name()));
        return false;
    }
    return bed.objects.erase(handle) != 0;
}

// State of a file of stand-ins, made on first use: `Part<Disk>(bed)`.
template <class State>
State& Part(Bed& bed) {
    std::shared_ptr<void>& part = bed.parts[std::type_index(typeid(State))];
    if (part == nullptr) {
        part = std::make_shared<State>();
    }
    return *static_cast<State*>(part.get());
}

// A resource of the library by its numeric type (RT_...) and id; 0: none.
Address FindGuestResource(Bed& bed, uint32_t type, uint32_t id);
