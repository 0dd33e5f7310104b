// The library as ARM code performs the device script; what it leaves has to equal what the desktop's objects left in
// QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens something.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

namespace {

namespace files = std::filesystem;

std::string ReadWhole(const files::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The files (and folders, as empty ones) below a folder of a handheld, by their names.
std::map<std::string, std::string> FilesIn(const files::path& root) {
    std::map<std::string, std::string> contents;
    for (const char* folder : {"My Documents", "Program Files"}) {
        for (const auto& entry : files::recursive_directory_iterator(root / folder)) {
            contents[entry.path().lexically_relative(root)] = entry.is_directory() ? "" : ReadWhole(entry.path());
        }
    }
    return contents;
}

files::path Reference() {
    const char* folder = std::getenv("QUORVANE_DEVICE_REFERENCE");
    return folder != nullptr ? folder : "QUORVANE_DEVICE_REFERENCE is not set";
}

// The first line in which two texts differ, with the step that it belongs to.
std::string FirstDifference(const std::string& expected, const std::string& actual) {
    const auto [left, right] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (left == expected.end() && right == actual.end()) {
        return "";
    }
    const auto lineAt = [](const std::string& text, size_t at) {
        const size_t start = text.rfind('\n', at - 1) + 1;
        return text.substr(start, text.find('\n', start) - start);
    };
    const auto at = static_cast<size_t>(left - expected.begin());
    return "step " + lineAt(expected, expected.rfind("\n# ", at) + 1) + "\n  reference " + lineAt(expected, at) +
           "\n  handheld  " + lineAt(actual, at);
}

struct Case {
    Core core;
    Address base;
};

class Script : public testing::TestWithParam<Case> {};

TEST_P(Script, Leaves_what_the_desktop_leaves) {
    const Handheld handheld(device_script::kScript, GetParam().base, GetParam().core);
    const std::string& trace = handheld.player.trace.text;
    EXPECT_EQ(handheld.faults, "");
    EXPECT_TRUE(handheld.player.answers.empty());
    EXPECT_EQ(FirstDifference(ReadWhole(Reference() / "trace.txt"), trace), "");
    EXPECT_EQ(FilesIn(fakes::Root()), FilesIn(Reference()));
    // Nothing is used that is gone.
    EXPECT_FALSE(std::regex_search(trace, std::regex("\n[A-Z]\\w+ (other|null) ")));
    EXPECT_EQ(trace.find("still selected"), std::string::npos);
    for (const int number :
         {IDD_DHCP, IDD_ADAPTER_DETAILS, IDD_PING, IDD_USAGE, IDD_SCANNER, IDD_WIRELESS_DETAILS, IDD_SIGNAL, IDD_EXPORT,
          IDD_LIVE_GRAPH, IDD_DETECTOR, IDD_TODAY_OPTIONS, IDD_PING_LANDSCAPE, IDD_SCANNER_LANDSCAPE,
          IDD_ADAPTER_DETAILS_LANDSCAPE, IDD_USAGE_LANDSCAPE}) {
        EXPECT_NE(trace.find("open dialog " + std::to_string(number) + " "), std::string::npos) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(Cores, Script,
                         testing::Values(Case{Core::Arm925, 0}, Case{Core::StrongArm, 0x0A340000},
                                         Case{Core::Arm925ThumbSystem, 0x0A340000}));

}  // namespace
