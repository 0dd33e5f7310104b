// tests/device/handheld.h - the handheld's system for a player: the library in its bed, with files and a registry that
// outlive it.
#pragma once

#include "tests/device/bed.h"
#include "tests/device/player.h"

// Of a function's calls so many fail, from that one on (1 is the next).
struct Failing {
    int first = 0, count = 0, calls = 0;
};

struct Handheld {
    uc_cpu_arm core = UC_CPU_ARM_TI925T;
    Address base = 0x10000000;  // where the library goes
    std::string faults;         // of all beds, with what was left over on detaching
    uint32_t deepestStack = 0;  // of all beds, bytes
    // Of the library that is attached.
    std::map<uint64_t, Address> procedures;  // of the guest, by window
    Address itemProcedure = 0;
    std::map<std::string, Failing> failing;                   // functions
    bool threadsWait = false;                                 // until RunThreads, and not within CreateThread
    std::deque<std::pair<Address, uint32_t>> waitingThreads;  // functions and arguments
    int libraryUses = 1;                                      // of the library itself
};
extern Handheld handheld;

void ResetHandheld();  // and the player
void RunThreads();

StandInTable SystemStandIns();   // files, registry, memory, modules, threads, texts
StandInTable NetworkStandIns();  // IP helper, echo, wireless driver, Winsock, connection manager, internet library
