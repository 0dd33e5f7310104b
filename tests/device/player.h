// tests/device/player.h - performs the script on one of the two systems.
#pragma once

#include "tests/device/script.h"
#include "tests/device/trace.h"

#include <deque>
#include <span>

// TODAYLISTITEM, which is alike on both systems as far as it is used.
inline constexpr size_t kRecordHeight = 72, kRecordEnabled = 76, kRecordBytes = 720;

// One of the two systems. Windows are its own handles.
struct System {
    virtual ~System() = default;
    virtual uint64_t Attach() = 0;  // loads the library; gives the item window
    virtual void Detach() = 0;
    virtual void OpenOptions() = 0;  // returns when they are closed
    virtual uint64_t OpenPage(uint32_t page) = 0;
    virtual void CloseWindow(uint64_t window) = 0;
    virtual int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) = 0;

    uint8_t* memory = nullptr;  // that the item can reach: the Today screen's record, behind it what messages point to
};

struct Player {
    struct Posted {
        uint64_t window;
        uint32_t message;
        uint64_t wParam;
    };
    System& system;
    Trace trace;
    std::span<const device_script::Step> steps;
    size_t next = 0;  // of them
    // The script's world.
    SYSTEMTIME time = {2026, 1, 0, 1, 0, 0, 0, 0};
    uint32_t tickCount = 1000000, screenWidth = 0, screenHeight = 0;
    scripted::Adapter adapters[2] = {device_script::kAdapters[0], device_script::kAdapters[1]};
    bool up[2] = {true, false};
    bool radio = false, associated = false;
    uint32_t dbm = 0;
    uint32_t askedHost = 0;  // network byte order, of the latest datagram
    uint64_t item = 0;
    uint64_t top = 0;  // where steps go
    std::deque<uint32_t> answers;
    uint64_t ended = 0;           // the dialog that asked to end
    std::vector<uint64_t> pages;  // of the open sheet; 0 until shown
    bool sheetEnded = false;
    std::deque<Posted> posted;

    explicit Player(System& on) : system(on) {}
    void Run(std::span<const device_script::Step> toPerform);
    // For the system's stand-ins of a dialog and of a sheet: performs steps until they end, and closes them.
    void RunDialog(uint64_t window);
    void RunSheet(size_t pageCount);
};

extern Player* player;  // that runs

// What of the system the script answers by itself, alike on both; and the scripted services as the script's world is.
StandInTable ScriptedStandIns();
void Publish(const Player& player);
