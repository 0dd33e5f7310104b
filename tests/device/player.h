// tests/device/player.h - performs the script on one of the two systems.
#pragma once

#include "tests/device/script.h"
#include "tests/device/trace.h"

#include <array>
#include <deque>
#include <span>

// TODAYLISTITEM, which is alike on both systems as far as it is used.
inline constexpr size_t kRecordHeight = 72, kRecordEnabled = 76, kRecordBytes = 720;

struct Player {
    Trace trace;
    std::span<const device_script::Step> steps;
    size_t next = 0;  // of them
    SYSTEMTIME time = {2026, 1, 0, 1, 0, 0, 0, 0};
    uint32_t tickCount = 1000000, screenWidth = 0, screenHeight = 0;
    uint32_t askedHost = 0;     // network byte order, of the latest datagram
    uint8_t* memory = nullptr;  // that the item can reach: the Today screen's record, behind it what messages point to
    uint64_t item = 0;
    uint64_t top = 0;                            // where steps go
    uint32_t answer = device_script::kOk;        // to the next message box
    uint64_t ended = 0;                          // the dialog that asked to end
    std::deque<std::array<uint64_t, 3>> posted;  // windows, messages, first arguments

    Player();  // sets the scripted services up as the script's network
    virtual ~Player() = default;
    // The system. Windows are its own handles.
    virtual uint64_t Attach() = 0;  // loads the library; gives the item window
    virtual void Detach() = 0;
    virtual void OpenOptions() = 0;  // returns when they are closed
    virtual uint64_t ControlOf(uint64_t dialog, uint32_t number) = 0;
    virtual void CloseWindow(uint64_t window) = 0;
    virtual int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) = 0;

    void Run(std::span<const device_script::Step> toPerform);
    // For the system's stand-ins of dialogs and pages: performs steps until it ends, and closes it.
    void RunDialog(uint64_t window);

    // For the steps.
    void Ask(uint32_t message);  // the host's questions to the item
    void SendToTop(uint32_t message, uint64_t wParam = 0, uint64_t lParam = 0);
    void SendToControl(uint32_t number, uint32_t message, uint64_t wParam, uint64_t lParam = 0);
    uint64_t Store(std::initializer_list<uint32_t> words);  // where messages point to
    void Notify(uint32_t control, int32_t code, std::initializer_list<uint32_t> data = {});
    void PerformUntilEnd(uint64_t window);
};

extern Player* player;  // that runs

StandInTable ScriptedStandIns();  // what of the system the script answers by itself, alike on both
