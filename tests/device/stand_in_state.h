// tests/device/stand_in_state.h - what a test may set about the system around the library, and look at afterwards. Each
// is a part of the bed: Part<Disk>(bed).
#pragma once

#include "tests/device/bed.h"
#include "tests/device/player.h"

#include <deque>
#include <map>

// What CloseHandle closes.
struct KernelObject : Object {};

// Failures of the medium. Calls are counted from 1; 0: no failure.
struct Disk {
    int failingOpen = 0;   // this one fails
    int fullAtWrite = 0;   // this one and all that follow write nothing
    int failingReads = 0;  // so many reads fail from now on
    int opens = 0, writes = 0;
};

struct Memory {
    int failingAllocation = 0;  // counted from 1, this one is refused; 0: none
    int allocations = 0;
};

struct RegistryValue {
    uint32_t type;
    std::vector<uint8_t> bytes;
};
using RegistryKey = std::map<std::u16string, RegistryValue>;
struct Registry {
    std::map<std::u16string, RegistryKey> keys;  // below HKEY_LOCAL_MACHINE
    int open = 0;                                // handles
};

struct Threads {
    struct Start {
        Address function;
        uint32_t argument;
    };
    bool wait = false;  // they run when RunThreads is called, not within CreateThread
    std::deque<Start> waiting;
    int failing = 0;  // so many are refused from now on
};
void RunThreads(Bed& bed);

struct Modules {
    int libraryUses = 1;  // of the library itself
};

// The wireless driver "UIO1:", opened as a file; 0: there is none.
uint32_t OpenDriver(Bed& bed);
