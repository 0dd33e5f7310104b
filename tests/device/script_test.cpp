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

class Script : public testing::TestWithParam<std::pair<Core, Address>> {};

TEST_P(Script, Leaves_what_the_desktop_leaves) {
    Handheld handheld(GetParam().second, GetParam().first);
    std::ifstream lines(Reference() / "trace.txt");
    for (std::string line; std::getline(lines, line);) {
        handheld.trace.reference.push_back(line);
    }
    EXPECT_FALSE(handheld.trace.reference.empty());
    handheld.Run(device_script::kScript);
    const std::string& trace = handheld.trace.text;
    EXPECT_EQ(handheld.faults, "");
    EXPECT_EQ(handheld.trace.difference, "");
    EXPECT_TRUE(handheld.trace.reference.empty());
    EXPECT_TRUE(handheld.answers.empty());
    EXPECT_EQ(FilesIn(fakes::Root()), FilesIn(Reference()));
    // Nothing is used that is gone.
    EXPECT_FALSE(std::regex_search(trace, std::regex("\n[A-Z]\\w+ (other|null) ")));
    for (const int number : {IDD_DHCP, IDD_ADAPTER_DETAILS, IDD_PING, IDD_USAGE, IDD_SCANNER, IDD_WIRELESS_DETAILS,
                             IDD_SIGNAL, IDD_EXPORT, IDD_LIVE_GRAPH, IDD_DETECTOR, IDD_TODAY_OPTIONS}) {
        EXPECT_NE(trace.find("open dialog " + std::to_string(number) + " "), std::string::npos) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(Cores, Script,
                         testing::Values(std::pair{Core::Arm925, Address{0x10000000}},
                                         std::pair{Core::StrongArm, Address{0x0A340000}},
                                         std::pair{Core::Arm925ThumbSystem, Address{0x0A340000}}));

}  // namespace
