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
        bed->tickCount = world.tickCount;
        bed->localTime = {static_cast<uint16_t>(world.year),
                          static_cast<uint16_t>(world.month),
                          0,
                          static_cast<uint16_t>(world.day),
                          static_cast<uint16_t>(world.hour),
                          device_script::kMinute,
                          device_script::kSecond,
                          0};
    }
}

uint64_t Handheld::Attach() {
    bed = OpenBed(Setting("QUORVANE_DEVICE_LIBRARY"), folder, base, core);
    Part<WindowState>(*bed).player = &player;
    Part<Registry>(*bed) = registry;
    OnWorldChanged(player.world);
    EXPECT_TRUE(AttachLibrary(*bed));
    const uint32_t host = AddWindow(*bed, "host", 0, 0);
    record = Allocate(*bed, kRecordBytes);
    WriteGuest(*bed, record + kRecordEnabled, uint32_t{1});
    return CallGuest(*bed, ExportByOrdinal(*bed, 240), {record, host});
}

void Handheld::Detach() {
    std::erase_if(player.trace.names, [](const auto& name) { return name.second == "item"; });
    DetachLibrary(*bed);
    Free(*bed, record);
    registry = Part<Registry>(*bed);
    deepestStack = std::max(deepestStack, bed->figures.deepestStack);
    faults += Faults(*bed) + DescribeLeftovers(*bed);
}

void Handheld::OpenOptions() {
    const auto resource = FindGuestResource(*bed, 5, IDD_TODAY_OPTIONS);
    const uint32_t dialog =
        OpenDialog(*bed, "dialog 500", resource ? resource->data : 0, 0, ExportByOrdinal(*bed, 241));
    player.RunDialog(dialog);
    EndWindow(*bed, dialog);
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

int64_t Handheld::Notify(uint64_t window, uint32_t control, int32_t code, std::span<const uint32_t> data) {
    constexpr uint32_t kNotify = 0x004E;
    std::vector<uint32_t> notice = {static_cast<uint32_t>(Control(window, control)), control,
                                    static_cast<uint32_t>(code)};
    notice.insert(notice.end(), data.begin(), data.end());
    return SendData(window, kNotify, control, notice);
}

void Handheld::Refresh(uint64_t item, uint32_t message) {
    const int64_t result = Send(item, message, 0, record);
    player.trace.Add("  result " + std::to_string(result) + " height " +
                     std::to_string(ReadGuest<uint32_t>(*bed, record + kRecordHeight)));
}

uint64_t Handheld::Context(uint64_t) {
    Name(*bed, 1, "the host's");
    return 1;
}

std::vector<ControlState> Handheld::Controls(uint64_t window) {
    std::vector<ControlState> states;
    const Window* dialog = FindWindow(*bed, static_cast<uint32_t>(window));
    for (size_t i = 0; dialog != nullptr && i < dialog->children.size(); ++i) {
        states.push_back(DescribeWindow(*FindWindow(*bed, dialog->children[i])));
    }
    return states;
}

std::vector<uint64_t> Handheld::ShownPages() {
    std::vector<uint64_t> shown;
    for (const WindowState::Page& page : Part<WindowState>(*bed).pages) {
        if (page.window != 0) {
            shown.push_back(page.window);
        }
    }
    return shown;
}
