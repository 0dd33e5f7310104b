// tests/device/player.h - performs the script on one of the two systems.
#pragma once

#include <deque>

#include "tests/device/script.h"
#include "tests/device/trace.h"

// What the script has made of the world so far; the systems' answers come from here and from the script's tables.
struct World {
    uint32_t year = 2026, month = 1, day = 1, hour = 0;
    uint32_t tickCount = device_script::kFirstTickCount;
    uint32_t screenWidth = 0, screenHeight = 0;
    struct {
        uint32_t received, transmitted, index;
        bool up;
    } adapters[2] = {{0, 0, device_script::kAdapters[0].index, true}, {0, 0, device_script::kAdapters[1].index, false}};
    bool radio = false;
    bool associated = false;
    uint32_t dbm = 0;
};

// One of the two systems. Windows are its own handles; `data` are what a message points to, laid out alike on both.
struct System {
    virtual ~System() = default;
    virtual void OnWorldChanged(const World&) {}
    virtual uint64_t Attach() = 0;  // loads the library; gives the item window
    virtual void Detach() = 0;
    virtual void OpenOptions() = 0;  // returns when they are closed
    virtual int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) = 0;
    virtual int64_t SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) = 0;
    // WM_NOTIFY; `data` follows the NMHDR.
    virtual int64_t Notify(uint64_t window, uint32_t control, int32_t code, std::span<const uint32_t> data) = 0;
    virtual void Refresh(uint64_t item, uint32_t message) = 0;  // with the host's record
    virtual uint64_t Control(uint64_t window, uint32_t id) = 0;
    virtual uint64_t Context(uint64_t window) = 0;  // some device context of the window
    virtual uint64_t ShowPage(uint32_t page) = 0;   // of the open sheet, made when it is shown first
    virtual std::vector<uint64_t> ShownPages() = 0;
    virtual std::vector<ControlState> Controls(uint64_t window) = 0;
};

struct Player {
    System& system;
    World world;
    Trace trace;
    std::span<const device_script::Step> steps;
    size_t next = 0;  // of them
    uint64_t item = 0;
    uint64_t top = 0;  // where steps go
    std::deque<uint32_t> answers;
    uint64_t ended = 0;  // the dialog that asked to end
    bool sheetEnded = false;
    struct Posted {
        uint64_t window;
        uint32_t message;
        uint64_t wParam;
    };
    std::deque<Posted> posted;

    explicit Player(System& on, std::span<const device_script::Step> toPerform = device_script::kScript)
        : system(on), steps(toPerform) {}
    // All steps.
    void Run();
    // For the system's stand-ins of a dialog and of a sheet: performs steps until they end.
    void RunDialog(uint64_t window);
    void RunSheet();
    uint32_t AnswerMessageBox();  // the button
};
