// The library as ARM code performs the device script; what it leaves has to equal what the desktop's objects left in
// QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens something.

#include "tests/device/stand_in_state.h"
#include "tests/device/window_state.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace {

namespace files = std::filesystem;

std::string Setting(const char* name) {
    const char* value = std::getenv(name);
    EXPECT_NE(value, nullptr) << name << " is not set";
    return value != nullptr ? value : "";
}

// TODAYLISTITEM as a 32-bit system has it.
constexpr uint32_t kRecordBytes = 628, kRecordHeight = 72, kRecordEnabled = 76;

struct Handheld : System {
    Player player{*this};
    std::unique_ptr<Bed> bed;
    std::string folder;
    Registry registry;
    std::string faults;
    uint32_t record = 0;

    ~Handheld() override { files::remove_all(folder); }
    void OnWorldChanged(const World& world) override {
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
    uint64_t Attach() override {
        bed = OpenBed(Setting("QUORVANE_DEVICE_LIBRARY"), folder);
        Part<WindowState>(*bed).player = &player;
        Part<Registry>(*bed) = registry;
        OnWorldChanged(player.world);
        EXPECT_TRUE(AttachLibrary(*bed));
        const uint32_t host = AddWindow(*bed, "host", 0, 0);
        record = Allocate(*bed, kRecordBytes);
        WriteGuest(*bed, record + kRecordEnabled, uint32_t{1});
        return CallGuest(*bed, ExportByOrdinal(*bed, 240), {record, host});
    }
    void Detach() override {
        std::erase_if(player.trace.names, [](const auto& name) { return name.second == "item"; });
        DetachLibrary(*bed);
        Free(*bed, record);
        EXPECT_EQ(LiveBlocks(*bed), 0u) << "memory that was never freed, step " << player.next;
        registry = Part<Registry>(*bed);
        faults += Faults(*bed);
    }
    void OpenOptions() override {
        const auto resource = FindGuestResource(*bed, 5, IDD_TODAY_OPTIONS);
        const uint32_t dialog =
            OpenDialog(*bed, "dialog 500", resource ? resource->data : 0, 0, ExportByOrdinal(*bed, 241));
        player.RunDialog(dialog);
        EndWindow(*bed, dialog);
    }
    int64_t Send(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) override {
        return SendToWindow(*bed, static_cast<uint32_t>(window), message, static_cast<uint32_t>(wParam),
                            static_cast<uint32_t>(lParam));
    }
    int64_t SendData(uint64_t window, uint32_t message, uint64_t wParam, std::span<const uint32_t> data) override {
        const Address copy = Allocate(*bed, static_cast<uint32_t>(data.size_bytes()));
        memcpy(GuestMemory(*bed, copy, data.size_bytes(), true), data.data(), data.size_bytes());
        const int64_t result = Send(window, message, wParam, copy);
        Free(*bed, copy);
        return result;
    }
    int64_t Notify(uint64_t window, uint32_t control, int32_t code, std::span<const uint32_t> data) override {
        constexpr uint32_t kNotify = 0x004E;
        std::vector<uint32_t> notice = {static_cast<uint32_t>(Control(window, control)), control,
                                        static_cast<uint32_t>(code)};
        notice.insert(notice.end(), data.begin(), data.end());
        return SendData(window, kNotify, control, notice);
    }
    void Refresh(uint64_t item, uint32_t message) override {
        const int64_t result = Send(item, message, 0, record);
        player.trace.Add("  result " + std::to_string(result) + " height " +
                         std::to_string(ReadGuest<uint32_t>(*bed, record + kRecordHeight)));
    }
    uint64_t Control(uint64_t window, uint32_t id) override {
        return FindControl(*bed, static_cast<uint32_t>(window), id);
    }
    uint64_t Context(uint64_t) override {
        Name(*bed, 1, "the host's");
        return 1;
    }
    uint64_t ShowPage(uint32_t page) override { return ::ShowPage(*bed, page); }
    std::vector<uint64_t> ShownPages() override {
        std::vector<uint64_t> shown;
        for (const WindowState::Page& page : Part<WindowState>(*bed).pages) {
            if (page.window != 0) {
                shown.push_back(page.window);
            }
        }
        return shown;
    }
    std::vector<ControlState> Controls(uint64_t window) override {
        std::vector<ControlState> states;
        const Window* dialog = FindWindow(*bed, static_cast<uint32_t>(window));
        for (size_t i = 0; dialog != nullptr && i < dialog->children.size(); ++i) {
            states.push_back(DescribeWindow(*FindWindow(*bed, dialog->children[i])));
        }
        return states;
    }
};

std::string ReadWhole(const files::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string RegistryText(const Registry& registry) {
    std::string text;
    for (const auto& [path, values] : registry.keys) {
        EXPECT_EQ(Narrow(path), "Software\\Microsoft\\Today\\Items\\Quorvane");
        for (const auto& [name, value] : values) {
            std::u16string wide(value.bytes.size() / 2, 0);
            memcpy(wide.data(), value.bytes.data(), wide.size() * 2);
            uint32_t number = 0;
            memcpy(&number, value.bytes.data(), std::min<size_t>(sizeof(number), value.bytes.size()));
            text += Narrow(name) + " " +
                    (value.type == 1 ? '"' + Narrow(wide.c_str()) + '"' : std::to_string(number)) + "\n";
        }
    }
    return text;
}

// The first line in which two texts differ, with the step that it belongs to.
std::string FirstDifference(const std::string& expected, const std::string& actual) {
    std::istringstream left(expected);
    std::istringstream right(actual);
    std::string wanted, got, step;
    for (int line = 1;; ++line) {
        const bool hasLeft = static_cast<bool>(std::getline(left, wanted));
        const bool hasRight = static_cast<bool>(std::getline(right, got));
        if (!hasLeft && !hasRight) {
            return "";
        }
        step = hasLeft && wanted[0] == '#' ? wanted : step;
        if (!hasLeft || !hasRight || wanted != got) {
            return "line " + std::to_string(line) + " (" + step + "):\n  reference " + (hasLeft ? wanted : "ends") +
                   "\n  handheld  " + (hasRight ? got : "ends");
        }
    }
}

class Script : public testing::Test {
  protected:
    static Handheld& Played() {
        static Handheld handheld;
        if (handheld.folder.empty()) {
            char folder[] = "/tmp/quorvane-device-XXXXXX";
            handheld.folder = mkdtemp(folder);
            files::create_directories(handheld.folder + "/Program Files");
            files::create_directories(handheld.folder + "/My Documents");
            handheld.player.Run();
        }
        return handheld;
    }
    const files::path reference = Setting("QUORVANE_DEVICE_REFERENCE");
};

TEST_F(Script, Runs_to_its_end_without_a_fault) {
    EXPECT_EQ(Played().faults, "");
    EXPECT_EQ(Played().player.next, std::size(device_script::kScript));
    EXPECT_TRUE(Played().player.answers.empty());
}

TEST_F(Script, Draws_the_strip_as_the_desktop_does) {
    EXPECT_EQ(FirstDifference(ReadWhole(reference / "strip.txt"), Played().player.trace.strip), "");
}

TEST_F(Script, Shows_the_dialogs_that_the_desktop_shows) {
    EXPECT_EQ(FirstDifference(ReadWhole(reference / "dialogs.txt"), Played().player.trace.dialogs), "");
}

TEST_F(Script, Leaves_the_same_registry) {
    EXPECT_EQ(RegistryText(Played().registry), ReadWhole(reference / "registry.txt"));
}

TEST_F(Script, Leaves_the_same_files) {
    const auto list = [](const files::path& root) {
        std::set<std::string> names;
        for (const char* folder : {"My Documents", "Program Files"}) {
            for (const auto& entry : files::recursive_directory_iterator(root / folder)) {
                names.insert(entry.path().lexically_relative(root));
            }
        }
        return names;
    };
    const std::set<std::string> names = list(reference);
    EXPECT_EQ(names, list(Played().folder));
    for (const std::string& name : names) {
        if (files::is_directory(reference / name)) {
            continue;
        }
        EXPECT_EQ(ReadWhole(reference / name), ReadWhole(files::path(Played().folder) / name)) << name;
    }
}

TEST_F(Script, Opens_every_dialog_and_page_of_the_library) {
    std::set<std::string> opened;
    std::istringstream lines(Played().player.trace.dialogs);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("open ", 0) == 0) {
            opened.insert(line.substr(5));
        }
    }
    std::set<std::string> expected = {"page 0", "page 1", "page 2"};
    for (const int number :
         {IDD_DHCP, IDD_ADAPTER_DETAILS, IDD_PING, IDD_USAGE, IDD_SCANNER, IDD_WIRELESS_DETAILS, IDD_SIGNAL, IDD_EXPORT,
          IDD_LIVE_GRAPH, IDD_DETECTOR, IDD_TODAY_OPTIONS, IDD_PING_LANDSCAPE, IDD_SCANNER_LANDSCAPE,
          IDD_ADAPTER_DETAILS_LANDSCAPE, IDD_USAGE_LANDSCAPE}) {
        expected.insert("dialog " + std::to_string(number));
    }
    EXPECT_EQ(opened, expected);
}

TEST_F(Script, Leaves_no_drawing_object_behind) {
    EXPECT_EQ(Played().player.trace.strip.find("still selected"), std::string::npos);
    EXPECT_EQ(Played().player.trace.dialogs.find("still selected"), std::string::npos);
    EXPECT_EQ(Played().player.trace.Leftovers(), "");
}

}  // namespace
