// tests/device/handheld.h - the handheld's system for a player: the library in its bed, with files and a registry that
// outlive it.
#pragma once

#include "tests/device/bed.h"
#include "tests/device/player.h"

#include <array>

struct ListRow {
    std::map<uint32_t, std::u16string> cells;  // by column
    int32_t image = 0;
    uint32_t data = 0;
};

// The host's, the item's, dialogs with the controls of their templates, a sheet.
struct Window {
    uint32_t parent = 0;
    Address procedure = 0;  // of the guest; 0: a system's control or the host's own window
    int32_t id = 0;
    bool isComboBox = false;
    std::u16string text = {};
    uint32_t check = 0;
    int32_t selected = -1;
    bool isDroppedDown = false;
    std::vector<std::u16string> items = {};  // of a drop-down list
    std::vector<ListRow> rows = {};
};

struct Handheld : System {
    Player player;
    Core core;
    Address base;               // where the library goes; 0: where it prefers
    std::string faults;         // of all beds, with what was left over on detaching
    uint32_t deepestStack = 0;  // of all beds, bytes
    // Of the library that is attached.
    std::map<uint32_t, Window> windows;
    Address itemProcedure = 0;
    uint32_t templateNumber = 0;  // found last
    uint32_t sheet = 0;
    std::vector<std::array<uint32_t, 10>> pages;              // of the open sheet, as the guest describes them
    std::map<std::pair<uint32_t, uint32_t>, uint32_t> held;   // by contexts, by context and kind
    int allocations = 0, failingAllocation = 0;               // the one of that number is refused
    bool threadsWait = false;                                 // until RunThreads, and not within CreateThread
    std::deque<std::pair<Address, uint32_t>> waitingThreads;  // functions and arguments
    int failingThreads = 0, failingReads = 0;                 // so many fail from now on
    int libraryUses = 1;                                      // of the library itself

    explicit Handheld(std::span<const device_script::Step> steps = device_script::kScript, Address at = 0,
                      Core on = Core::Arm925);
    void RunThreads();

    uint64_t Attach() override;
    void Detach() override;
    void OpenOptions() override;
    uint64_t OpenPage(uint32_t page) override;
    void CloseWindow(uint64_t window) override { windows.erase(static_cast<uint32_t>(window)); }
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override;
};

extern Handheld* handheld;  // whose library is in the bed

StandInTable SystemStandIns();   // files, registry, memory, modules, threads, texts
StandInTable NetworkStandIns();  // IP helper, echo, wireless driver, Winsock, connection manager, internet library
StandInTable WindowStandIns();   // windows, dialogs, sheets, drawing

uint32_t SendToWindow(uint32_t window, uint32_t message, uint32_t wParam, uint32_t lParam);
uint32_t SendToControl(Window& control, uint32_t message, uint32_t wParam, uint32_t lParam);
uint32_t OpenDialog(const std::string& name, Address dialogTemplate, uint32_t parent, Address procedure);
