// The host's side of the item: its window, its record, and the calls that the Today screen makes.

#include "tests/device/handheld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace {

// TODAYLISTITEM as a 32-bit system has it.
constexpr uint32_t kRecordBytes = 628, kRecordHeight = 72, kRecordEnabled = 76;

// What nobody released before the library went.
std::string DescribeLeftovers(Bed& bed) {
    const auto handles = std::count_if(bed.objects.begin(), bed.objects.end(), [](const auto& entry) {
        return dynamic_cast<const KernelObject*>(entry.second.get()) != nullptr;
    });
    const struct {
        const char* what;
        int64_t left;
    } rows[] = {{"blocks of memory", static_cast<int64_t>(LiveBlocks(bed))},
                {"kernel handles", handles},
                {"registry keys", Part<Registry>(bed).open},
                {"counts of the library", Part<Modules>(bed).libraryUses - 1}};
    std::string text;
    for (const auto& row : rows) {
        text += row.left != 0 ? std::to_string(row.left) + " " + row.what + " left over\n" : "";
    }
    return text;
}

}  // namespace

std::string Setting(const char* name) {
    const char* value = std::getenv(name);
    EXPECT_NE(value, nullptr) << name << " is not set";
    return value != nullptr ? value : "";
}

std::string ReadWhole(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Handheld::Handheld(std::span<const device_script::Step> steps, Address at, Core on)
    : player(*this, steps), core(on), base(at) {
    char name[] = "/tmp/quorvane-device-XXXXXX";
    folder = mkdtemp(name);
    std::filesystem::create_directories(folder + "/Program Files");
    std::filesystem::create_directories(folder + "/My Documents");
    player.Run();
}

Handheld::~Handheld() {
    std::filesystem::remove_all(folder);
}

void Handheld::Perform(std::span<const device_script::Step> steps) {
    player.steps = steps;
    player.next = 0;
    player.Run();
}

std::string Handheld::ReadData(const std::string& name) const {
    return ReadWhole(folder + "/Program Files/Ostrik/Quorvane/" + name);
}

void Handheld::OnWorldChanged(const World& world) {
    if (bed != nullptr) {
        Part<World>(*bed) = world;
    }
}

uint64_t Handheld::Attach() {
    bed = OpenBed(Setting("QUORVANE_DEVICE_LIBRARY"), folder, base, core);
    Part<WindowState>(*bed).player = &player;
    Part<Registry>(*bed) = registry;
    player.trace.memory = [this](uint64_t address, size_t bytes) -> const void* {
        static constexpr uint8_t kNothing[256] = {};
        const uint8_t* memory = GuestMemory(*bed, static_cast<Address>(address), bytes);
        return memory != nullptr ? memory : kNothing;
    };
    OnWorldChanged(player.world);
    EXPECT_TRUE(AttachLibrary(*bed));
    const uint32_t host = AddWindow(*bed, "host", 0, 0);
    record = Allocate(*bed, kRecordBytes);
    WriteGuest(*bed, record + kRecordEnabled, uint32_t{1});
    return CallGuest(*bed, ExportByOrdinal(*bed, 240), {record, host});
}

void Handheld::Detach() {
    DetachLibrary(*bed);
    Free(*bed, record);
    registry = Part<Registry>(*bed);
    deepestStack = std::max(deepestStack, bed->figures.deepestStack);
    faults += Faults(*bed) + DescribeLeftovers(*bed);
}

void Handheld::OpenOptions() {
    const Address source = FindGuestResource(*bed, 5, IDD_TODAY_OPTIONS);
    player.RunDialog(OpenDialog(*bed, "dialog 500", source, 0, ExportByOrdinal(*bed, 241)));
}

void Handheld::CloseWindow(uint64_t window) {
    if (FindWindow(*bed, static_cast<uint32_t>(window)) != nullptr) {
        RemoveWindow(*bed, static_cast<uint32_t>(window));
    }
}

int64_t Handheld::Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) {
    return SendToWindow(*bed, static_cast<uint32_t>(window), message, static_cast<uint32_t>(wParam),
                        static_cast<uint32_t>(lParam));
}

int64_t Handheld::SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) {
    const Address copy = Allocate(*bed, static_cast<uint32_t>(data.size_bytes()));
    WriteBytes(*bed, copy, data.data(), data.size_bytes());
    const int64_t result = Send(window, message, wParam, copy);
    Free(*bed, copy);
    return result;
}

uint32_t Handheld::RecordedHeight() {
    return ReadGuest<uint32_t>(*bed, record + kRecordHeight);
}

std::vector<ControlState> Handheld::Controls(uint64_t window) {
    std::vector<ControlState> states;
    const Window* dialog = FindWindow(*bed, static_cast<uint32_t>(window));
    for (const uint32_t child : dialog != nullptr ? dialog->children : std::vector<uint32_t>()) {
        states.push_back(DescribeWindow(*FindWindow(*bed, child)));
    }
    return states;
}
