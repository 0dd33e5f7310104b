// The library as ARM code performs the device script; what it leaves has to equal what the desktop's objects left in
// QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens something.

#include "tests/device/handheld.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace {

namespace files = std::filesystem;

std::string RegistryText(const Registry& registry) {
    std::string text;
    for (const auto& [path, values] : registry.keys) {
        EXPECT_EQ(Narrow(path), "Software\\Microsoft\\Today\\Items\\Quorvane");
        for (const auto& [name, value] : values) {
            std::u16string wide(value.bytes.size() / 2, 0);
            memcpy(wide.data(), value.bytes.data(), wide.size() * 2);
            uint32_t number = 0;
            memcpy(&number, value.bytes.data(), std::min<size_t>(sizeof(number), value.bytes.size()));
            text += Narrow(name) + " " + (value.type == 1 ? '"' + Narrow(wide.c_str()) + '"' : std::to_string(number)) +
                    "\n";
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
        return handheld;
    }
    const files::path reference = Setting("QUORVANE_DEVICE_REFERENCE");
};

TEST_F(Script, Runs_to_its_end_without_a_fault) {
    EXPECT_EQ(Played().faults, "");
    EXPECT_EQ(Played().player.next, std::size(device_script::kScript));
    EXPECT_TRUE(Played().player.answers.empty());
}

TEST_F(Script, Does_the_same_on_other_handhelds_and_at_another_address) {
    constexpr Address kElsewhere = 0x0A340000;
    for (const Core core : {Core::StrongArm, Core::Arm925ThumbSystem}) {
        const Handheld elsewhere(device_script::kScript, kElsewhere, core);
        EXPECT_EQ(elsewhere.bed->imageBase, kElsewhere);
        EXPECT_EQ(elsewhere.faults, "");
        EXPECT_EQ(FirstDifference(Played().player.trace.strip, elsewhere.player.trace.strip), "");
        EXPECT_EQ(FirstDifference(Played().player.trace.dialogs, elsewhere.player.trace.dialogs), "");
    }
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

TEST_F(Script, Leaves_no_drawing_object_behind_and_uses_none_that_is_gone) {
    const std::regex gone("\n[A-Z]\\w+ (other|null) ");
    EXPECT_FALSE(std::regex_search(Played().player.trace.strip, gone));
    EXPECT_FALSE(std::regex_search(Played().player.trace.dialogs, gone));
    EXPECT_EQ(Played().player.trace.strip.find("still selected"), std::string::npos);
    EXPECT_EQ(Played().player.trace.dialogs.find("still selected"), std::string::npos);
    EXPECT_EQ(Played().player.trace.Leftovers(), "");
}

}  // namespace
