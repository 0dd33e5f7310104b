// tests/device/player.h - performs the script on one of the two systems.
#pragma once

#include <array>
#include <deque>

#include "tests/device/script.h"
#include "tests/device/trace.h"

namespace device_script {
// Who in the script's network has that address (network byte order) or that name; null: nobody.
uint32_t AddressOf(const Host& host);
const Host* FindHost(uint32_t address);
const Host* FindHostNamed(const std::string& name);
}  // namespace device_script

// What the script has made of the world so far; the systems' answers come from here and from the script's tables.
struct World {
    struct AdapterState {
        uint32_t received, transmitted, index;
        bool up;
    };
    std::array<uint16_t, 8> time = {2026, 1, 0, 1};  // SYSTEMTIME, local
    uint32_t tickCount = device_script::kFirstTickCount;
    uint32_t screenWidth = 0, screenHeight = 0;
    AdapterState adapters[2] = {{0, 0, device_script::kAdapters[0].index, true},
                                {0, 0, device_script::kAdapters[1].index, false}};
    bool radio = false, associated = false;
    uint32_t dbm = 0;

    // The item is as large as its strip, every other window as the screen.
    uint32_t HeightOf(bool isItem) const;
};

// One of the two systems. Windows are its own handles; `data` are what a message points to, laid out alike on both.
struct System {
    virtual ~System() = default;
    virtual void OnWorldChanged(const World& world) = 0;
    virtual uint64_t Attach() = 0;  // loads the library; gives the item window
    virtual void Detach() = 0;
    virtual void OpenOptions() = 0;  // returns when they are closed
    virtual uint64_t OpenPage(uint32_t page) = 0;
    virtual void CloseWindow(uint64_t window) = 0;
    virtual int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) = 0;
    virtual int64_t SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) = 0;
    virtual uint32_t WordsOfHandle() const = 0;
    virtual uint64_t Record() = 0;  // the host's of the item, and the height in it
    virtual uint32_t RecordedHeight() = 0;
    virtual uint64_t Control(uint64_t window, uint32_t id) = 0;
    virtual uint64_t Context(uint64_t window) = 0;  // some device context of the window
    virtual std::vector<ControlState> Controls(uint64_t window) = 0;
};

struct Player {
    struct Posted {
        uint64_t window;
        uint32_t message;
        uint64_t wParam;
    };
    System& system;
    World world;
    Trace trace;
    std::span<const device_script::Step> steps;
    size_t next = 0;  // of them
    uint64_t item = 0;
    uint64_t top = 0;  // where steps go
    std::deque<uint32_t> answers;
    uint64_t ended = 0;           // the dialog that asked to end
    std::vector<uint64_t> pages;  // of the open sheet; 0 until shown
    bool sheetEnded = false;
    std::deque<Posted> posted;

    explicit Player(System& on, std::span<const device_script::Step> toPerform = device_script::kScript)
        : system(on), steps(toPerform) {}
    // All steps.
    void Run();
    // For the system's stand-ins of a dialog and of a sheet: performs steps until they end, and closes them.
    void RunDialog(uint64_t window);
    void RunSheet(size_t pageCount);
    uint32_t AnswerMessageBox();  // the button
};
