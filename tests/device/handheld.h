// tests/device/handheld.h - the handheld's system for a player: the library in its bed, with files and a registry that
// outlive it.
#pragma once

#include "tests/device/stand_in_state.h"
#include "tests/device/window_state.h"

#include <filesystem>

// An environment variable; a failure of the running test and an empty text without it.
std::string Setting(const char* name);

std::string ReadWhole(const std::filesystem::path& path);

struct Handheld : System {
    Player player;
    std::unique_ptr<Bed> bed;  // made on attaching, the last one kept
    Core core;
    Address base;        // where the library goes; 0: where it prefers
    std::string folder;  // of its files, its own and temporary
    Registry registry;
    std::string faults;         // of all beds, with what was left over on detaching
    uint32_t deepestStack = 0;  // of all beds before the last detaching, bytes
    uint32_t record = 0;

    explicit Handheld(std::span<const device_script::Step> steps = device_script::kScript, Address at = 0,
                      Core on = Core::Arm925);
    ~Handheld() override;
    // More steps, after those before.
    void Perform(std::span<const device_script::Step> steps);
    std::string ReadData(const std::string& name) const;  // of a file in the data folder; none: empty

    void OnWorldChanged(const World& world) override;
    uint64_t Attach() override;
    void Detach() override;
    void OpenOptions() override;
    uint64_t OpenPage(uint32_t page) override { return ::OpenPage(*bed, page); }
    void CloseWindow(uint64_t window) override;
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override;
    int64_t SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) override;
    uint32_t WordsOfHandle() const override { return 1; }
    uint64_t Record() override { return record; }
    uint32_t RecordedHeight() override;
    uint64_t Control(uint64_t window, uint32_t id) override {
        return FindControl(*bed, static_cast<uint32_t>(window), id);
    }
    uint64_t Context(uint64_t) override { return 1; }
    std::vector<ControlState> Controls(uint64_t window) override;
};
