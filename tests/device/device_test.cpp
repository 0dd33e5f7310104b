// The library as ARM code. It performs the device script, and what it leaves has to equal what the desktop's objects
// left in QUORVANE_DEVICE_REFERENCE (tests/device/reference): files, registry, and every call that draws or opens
// something. Then what no desktop has: memory that runs out, workers that outlive the dialog, and what it all costs.

#include "tests/device/handheld.h"
#include "tests/fakes/fakes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

namespace {

namespace files = std::filesystem;
using namespace device_script;
using namespace device_script::steps;

// The files (and folders, as empty ones) of a handheld, by their names.
std::map<std::string, std::string> FilesIn(const files::path& root) {
    std::map<std::string, std::string> contents;
    for (const char* folder : {"My Documents", "Program Files"}) {
        for (const auto& entry : files::recursive_directory_iterator(root / folder)) {
            std::ostringstream content;
            content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            contents[entry.path().lexically_relative(root)] = content.str();
        }
    }
    return contents;
}

class Script : public testing::TestWithParam<std::pair<Core, Address>> {};

TEST_P(Script, Leaves_what_the_desktop_leaves) {
    const files::path reference = std::getenv("QUORVANE_DEVICE_REFERENCE");
    Handheld handheld(GetParam().second, GetParam().first);
    std::ifstream lines(reference / "trace.txt");
    for (std::string line; std::getline(lines, line);) {
        handheld.trace.reference.push_back(line);
    }
    handheld.Run(kScript);
    const std::string& trace = handheld.trace.text;
    EXPECT_EQ(handheld.faults, "");
    EXPECT_EQ(handheld.trace.difference, "");
    EXPECT_TRUE(handheld.trace.reference.empty() && lines.eof());
    EXPECT_EQ(FilesIn(fakes::Root()), FilesIn(reference));
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

// clang-format off
const Step kBegin[] = {
    {Clock, 2026, 1, 31, 23}, {Radio, 1, 0xFFFFFFC4}, {Attach, 240, 320}, {Refresh}, {Refresh}, {Tick, 0, 0, 1}};
const Step kEnd[] = {{Clear}, {Detach}};
const Step kTools[] = {
    {Tick, 10, 1, 1}, {Tap, kTapDhcp, kIconTop}, {Command, IDC_DHCP_DETECT}, {Command, IDC_DHCP_RENEW},
    {Command, kOk}, {Tap, kTapPing, kIconTop}, {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"},
    {Command, IDC_PING_PING}, {Timer, 10}, {Command, kOk}, {Tap, kTapAdapter, kIconTop}, {Command, kOk},
    {Tap, kTapScanner, kIconTop}, {Timer, 7}, {Command, kOk}, {Tap, kTapCard, kIconTop}, {Command, kOk}};
const Step kLeftDetector[] = {{Tap, kTapDetector, kIconTop}, {Command, IDC_DETECTOR_DETECT}, {Command, kOk}};
// clang-format on

struct Device : Handheld {
    Device() { Run(kBegin); }
    ~Device() override {
        Run(kEnd);
        EXPECT_EQ(faults, "");
    }
};

// One allocation after the other fails while the tools are opened and used; what is compared is that nothing is touched
// that is not there, and nothing left behind.
TEST(Device, Survives_every_allocation_that_fails) {
    int allocations = 1;
    for (int failing = 0; failing <= allocations; ++failing) {
        SCOPED_TRACE(failing);
        Device device;
        device.failing["LocalAlloc"] = {failing, 1};
        device.Run(kTools);
        allocations = failing == 0 ? device.failing["LocalAlloc"].calls : allocations;
    }
    EXPECT_GT(allocations, 10);
}

TEST(Device, Reads_a_log_at_the_last_attempt) {
    const Step tick[] = {{Tick, 10, 1, 1}};
    Device device;
    device.Run(tick);
    device.failing["ReadFile"] = {1, 15};
    device.Run(tick);
    EXPECT_EQ(std::ifstream(fakes::Root() / "Program Files/Ostrik/Quorvane/202601.log").seekg(4).get(), 20);
}

// Every worker counts as a user of the library and ends without returning into it.
TEST(Device, Lets_workers_outlive_the_dialog_and_does_without_them) {
    Device device;
    device.threadsWait = true;
    device.Run(kLeftDetector);
    EXPECT_EQ(device.waitingThreads.size(), 254u);
    EXPECT_EQ(device.libraryUses, 255);
    device.RunThreads();
    EXPECT_EQ(device.libraryUses, 1);
    device.failing["CreateThread"] = {1, 254};
    device.Run(kLeftDetector);
    device.threadsWait = false;
    for (int nth = 1; nth < 6; ++nth) {  // the fifth allocation is a worker's own
        device.failing["LocalAlloc"] = {nth, 1};
        device.Run(kLeftDetector);
    }
}

// For the measurements; the numbers are exact, so that equal work has to give equal ones.
TEST(Figures, Of_ticks_and_paints) {
    Device device;
    const auto costOf = [&](const Step& step) {
        const std::pair before(bed->instructions, bed->imports);
        device.Run({&step, 1});
        return std::pair(bed->instructions - before.first, bed->imports - before.second);
    };
    for (int i = 0; i < 24; ++i) {
        costOf({Tick, 1500, 700, 1});
    }
    for (const auto& [name, step] : std::initializer_list<std::pair<const char*, Step>>{
             {"quiet_tick", {Tick, 0, 0, 1}}, {"tick", {Tick, 1500, 700, 1}}, {"paint", {Paint}}}) {
        const auto [instructions, systemCalls] = costOf(step);
        std::cout << "instructions_per_" << name << ' ' << instructions << "\nsystem_calls_per_" << name << ' '
                  << systemCalls << '\n';
        EXPECT_EQ(costOf(step).first, instructions) << name;
    }
}

TEST(Figures, Of_the_stack) {
    Handheld handheld;
    handheld.Run(kScript);
    std::cout << "deepest_stack " << handheld.deepestStack << '\n';
    EXPECT_LT(handheld.deepestStack, kStackBytes / 2);  // the rest is for the system's own frames
}

}  // namespace
