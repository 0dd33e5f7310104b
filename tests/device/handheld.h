// tests/device/handheld.h - the handheld's system for a player: the library in its bed, with files and a registry that
// outlive it.
#pragma once

#include "tests/device/bed.h"
#include "tests/device/player.h"

#include <array>

// The host's, the item's, dialogs with those of their controls that were asked for.
struct Window {
    uint32_t parent = 0;
    Address procedure = 0;  // of the guest; 0: a system's control or the host's own window
    std::u16string text = {};
    int32_t chosen = 0;  // entry of a drop-down list

    int32_t Answer(uint32_t message, uint32_t wParam, uint32_t lParam);  // a control's
};

// Of a function's calls so many fail, from that one on (1 is the next).
struct Failing {
    int first = 0, count = 0, calls = 0;
};

struct Handheld : Player {
    Core core;
    Address base;               // where the library goes
    std::string faults;         // of all beds, with what was left over on detaching
    uint32_t deepestStack = 0;  // of all beds, bytes
    // Of the library that is attached.
    std::map<uint64_t, Window> windows;
    std::map<std::pair<uint64_t, uint32_t>, uint32_t> controls;  // by dialog and number
    Address itemProcedure = 0;
    std::map<Address, std::pair<uint32_t, std::span<const uint8_t>>> templates;  // that were found, with their numbers
    std::map<std::string, Failing> failing;                                      // functions
    bool threadsWait = false;                                 // until RunThreads, and not within CreateThread
    std::deque<std::pair<Address, uint32_t>> waitingThreads;  // functions and arguments
    int libraryUses = 1;                                      // of the library itself

    explicit Handheld(Address at = 0x10000000, Core on = Core::Arm925);
    void RunThreads();

    uint64_t Attach() override;
    void Detach() override;
    void OpenOptions() override;
    uint64_t ControlOf(uint64_t dialog, uint32_t number) override;
    void CloseWindow(uint64_t window) override { windows.erase(window); }
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override;
    uint32_t OpenDialog(Address found, uint32_t parent, Address procedure);
};

extern Handheld* handheld;  // whose library is in the bed

StandInTable SystemStandIns();   // files, registry, memory, modules, threads, texts
StandInTable NetworkStandIns();  // IP helper, echo, wireless driver, Winsock, connection manager, internet library
StandInTable WindowStandIns();   // windows, dialogs, sheets, drawing
