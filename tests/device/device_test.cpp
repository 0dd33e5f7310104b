// The library as ARM code where a script's comparison with the desktop does not reach: what the log holds to the byte,
// media that fail, workers that outlive the dialog, what a handheld's loader would refuse, and what it all costs.

#include "tests/device/handheld.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace {

using namespace device_script;

// clang-format off
constexpr Step kBegin[] = {
    {Act::Clock, 2026, 1, 31, 23}, {Act::Radio, 1, 0xFFFFFFC4, 1}, {Act::Attach, 240, 320}, {Act::Refresh},
    {Act::Refresh}, {Act::Tick, 0, 0, 0, 1}};
constexpr Step kEnd[] = {{Act::Clear}, {Act::Detach}};
// Two hosts become safe, two come into the ping list; then each list loses its first entry.
constexpr Step kListing[] = {
    {Act::Tap, kTapDetector, kIconTop}, {Act::Command, IDC_DETECTOR_DETECT}, {Act::Timer, 14}, {Act::Answer, kYes},
    {Act::Row, IDC_DETECTOR_HOSTS, 0}, {Act::Answer, kYes}, {Act::Row, IDC_DETECTOR_HOSTS, 1}, {Act::Command, kOk},
    {Act::Tap, kTapPing, kIconTop}, {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"},
    {Act::Command, IDC_PING_PING}, {Act::Text, IDC_PING_HOST, 0, 0, 0, "router"}, {Act::Command, IDC_PING_PING},
    {Act::Command, kOk}};
constexpr Step kRemoval[] = {
    {Act::Tap, kTapDetector, kIconTop}, {Act::Command, IDC_DETECTOR_DETECT}, {Act::Timer, 14}, {Act::Answer, kYes},
    {Act::Row, IDC_DETECTOR_HOSTS, 0}, {Act::Command, kOk}, {Act::Tap, kTapPing, kIconTop},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"}, {Act::Answer, kYes}, {Act::Command, IDC_PING_DELETE},
    {Act::Command, kOk}};
constexpr Step kTools[] = {
    {Act::Tick, 0, 10, 1, 1}, {Act::Tap, kTapDhcp, kIconTop}, {Act::Command, IDC_DHCP_DETECT},
    {Act::Command, IDC_DHCP_RENEW}, {Act::Command, kOk}, {Act::Tap, kTapPing, kIconTop},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"}, {Act::Command, IDC_PING_PING}, {Act::Timer, 10},
    {Act::Command, kOk}, {Act::Tap, kTapAdapter, kIconTop}, {Act::Command, kOk}, {Act::Tap, kTapScanner, kIconTop},
    {Act::Timer, 7}, {Act::Command, kOk}, {Act::Tap, kTapCard, kIconTop}, {Act::Command, kOk}};
constexpr Step kLeftDetector[] = {
    {Act::Tap, kTapDetector, kIconTop}, {Act::Command, IDC_DETECTOR_DETECT}, {Act::Command, kOk}};

struct LogRow {
    const char* name;
    std::vector<Step> steps;
    const char *january, *february;
};
const LogRow kLogRows[] = {
    {"one hour", {{Act::Tick, 0, 1500, 700, 3}}, "31.23 4500 2100; ", ""},
    {"nothing", {{Act::Tick, 0, 0, 0, 5}}, "", ""},
    {"hour, day and month turn", {{Act::Tick, 0, 10, 1, 2}, {Act::Clock, 2026, 2, 1, 0}, {Act::Tick, 0, 20, 2, 2},
     {Act::Clock, 2026, 2, 1, 1}, {Act::Tick, 0, 5, 6, 1}}, "31.23 20 2; ", "1.0 40 4; 1.1 5 6; "},
    {"an earlier hour again", {{Act::Tick, 0, 10, 1, 1}, {Act::Clock, 2026, 1, 31, 22}, {Act::Tick, 0, 20, 2, 1},
     {Act::Clock, 2026, 1, 31, 23}, {Act::Tick, 0, 3, 3, 1}}, "31.23 13 4; 31.22 20 2; ", ""},
    {"counters leap, which counts nothing, and wrap", {{Act::Counters, 0, 0xFFFFFF00, 0xFFFFFFF0},
     {Act::Tick, 0, 0, 0, 1}, {Act::Tick, 0, 0x200, 0x20, 1}}, "31.23 512 32; ", ""},
    {"counters fall", {{Act::Tick, 0, 9, 9, 1}, {Act::Counters, 0, 1, 1}, {Act::Tick, 0, 0, 0, 1},
     {Act::Tick, 0, 4, 4, 1}}, "31.23 13 13; ", ""},
    {"sums wrap", {{Act::Tick, 0, 0x7FFFFFFF, 1, 2}, {Act::Tick, 0, 0x12, 1, 1}}, "31.23 16 3; ", ""},
    {"another index", {{Act::Adapter, 0, 1, 12}, {Act::Tick, 0, 100, 50, 2}}, "31.23 200 100; ", ""},
    {"gone and back", {{Act::Adapter, 0, 0, 0}, {Act::Tick, 0, 7, 7, 2}, {Act::Adapter, 0, 1, 4},
     {Act::Tick, 0, 1, 1, 2}}, "31.23 16 16; ", ""},
};
// clang-format on

struct Device : Handheld {
    Device() : Handheld(kBegin) {}
    void Tick(uint32_t received, uint32_t transmitted, uint32_t times) {
        const Step step = {Act::Tick, 0, received, transmitted, times};
        Perform({&step, 1});
    }
    std::string End() {
        Perform(kEnd);
        return faults;
    }
};

// The records of a month, "day.hour received transmitted" each.
std::string LogText(const Device& device, const std::string& month) {
    const std::string bytes = device.ReadData(month + ".log");
    std::ostringstream text;
    for (size_t at = 0; at + 12 <= bytes.size(); at += 12) {
        uint32_t counts[2];
        memcpy(counts, bytes.data() + at + 4, sizeof(counts));
        text << int{bytes[at]} << '.' << int{bytes[at + 1]} << ' ' << counts[0] << ' ' << counts[1] << "; ";
    }
    return text.str() + (bytes.size() % 12 != 0 ? "and a rest" : "");
}

TEST(Device, Logs_what_the_counters_grew_by) {
    for (const LogRow& row : kLogRows) {
        Device device;
        device.Perform(row.steps);
        EXPECT_EQ(device.End(), "") << row.name;
        EXPECT_EQ(LogText(device, "202601"), row.january) << row.name;
        EXPECT_EQ(LogText(device, "202602"), row.february) << row.name;
    }
}

// What happens to a second tick of 10 and 1 octets after a first one, and to a third without the fault.
TEST(Device, Loses_no_more_than_the_medium_refuses) {
    const struct {
        const char* name;
        Disk disk;
        const char *second, *third;
    } rows[] = {
        {"cannot be opened", {.failingOpen = 1}, "31.23 10 1; ", "31.23 20 2; "},
        {"cannot be written", {.fullAtWrite = 1}, "31.23 10 1; ", "31.23 20 2; "},
        {"reads at the last attempt", {.failingReads = 15}, "31.23 20 2; ", "31.23 30 3; "},
        {"cannot be read", {.failingReads = 16}, "31.23 10 1; ", "31.23 20 2; "},
    };
    for (const auto& row : rows) {
        Device device;
        device.Tick(10, 1, 1);
        Part<Disk>(*device.bed) = row.disk;
        device.Tick(10, 1, 1);
        EXPECT_EQ(LogText(device, "202601"), row.second) << row.name;
        Part<Disk>(*device.bed) = {};
        device.Tick(10, 1, 1);
        EXPECT_EQ(LogText(device, "202601"), row.third) << row.name;
        EXPECT_EQ(device.End(), "") << row.name;
    }
}

TEST(Device, Keeps_its_lists_when_the_disk_is_full) {
    Device device;
    device.Perform(kListing);
    const std::string safe = device.ReadData("slist.dat");
    const std::string hosts = device.ReadData("hosts.dat");
    EXPECT_EQ(safe.size(), 2u * 6);
    EXPECT_EQ(hosts.size(), 2u * 200);
    Part<Disk>(*device.bed).fullAtWrite = 1;
    device.Perform(kRemoval);
    EXPECT_EQ(device.ReadData("slist.dat"), safe);
    EXPECT_EQ(device.ReadData("hosts.dat"), hosts);
    Part<Disk>(*device.bed) = {};
    device.Perform(kRemoval);
    EXPECT_EQ(device.ReadData("slist.dat"), safe.substr(6));
    EXPECT_EQ(device.ReadData("hosts.dat"), hosts.substr(200));
    EXPECT_EQ(device.End(), "");
}

// One allocation after the other fails while the tools are opened and used; what is compared is that nothing is touched
// that is not there, and nothing left behind.
TEST(Device, Survives_every_allocation_that_fails) {
    int allocations = 1;
    for (int failing = 0; failing <= allocations; ++failing) {
        Device device;
        Memory& memory = Part<Memory>(*device.bed);
        memory = {failing, 0};
        device.Perform(kTools);
        allocations = failing == 0 ? memory.allocations : allocations;
        EXPECT_EQ(device.End(), "") << "allocation " << failing;
    }
    EXPECT_GT(allocations, 10);
}

// Every worker counts as a user of the library and ends without returning into it.
TEST(Device, Lets_workers_outlive_the_dialog_and_does_without_them) {
    Device device;
    Part<Threads>(*device.bed).wait = true;
    device.Perform(kLeftDetector);
    EXPECT_EQ(Part<Threads>(*device.bed).waiting.size(), 254u);
    EXPECT_EQ(Part<Modules>(*device.bed).libraryUses, 255);
    RunThreads(*device.bed);
    EXPECT_EQ(Part<Modules>(*device.bed).libraryUses, 1);
    Part<Threads>(*device.bed).failing = 254;
    device.Perform(kLeftDetector);
    EXPECT_EQ(device.End(), "");
}

// For the measurements; the numbers are exact, so that equal work has to give equal ones.
TEST(Figures, Of_ticks_and_paints) {
    Device device;
    const auto costOf = [&](const Step& step) {
        const Figures before = device.bed->figures;
        device.Perform({&step, 1});
        const Figures& after = device.bed->figures;
        return std::pair(after.instructions - before.instructions, after.imports - before.imports);
    };
    const Step steps[] = {{Act::Tick, 0, 0, 0, 1}, {Act::Tick, 0, 1500, 700, 1}, {Act::Paint}};
    const char* names[] = {"quiet_tick", "tick", "paint"};
    device.Tick(1500, 700, 24);
    for (size_t i = 0; i < std::size(steps); ++i) {
        const auto [instructions, systemCalls] = costOf(steps[i]);
        std::cout << "instructions_per_" << names[i] << ' ' << instructions << "\nsystem_calls_per_" << names[i] << ' '
                  << systemCalls << '\n';
        EXPECT_EQ(costOf(steps[i]).first, instructions) << names[i];
    }
    EXPECT_EQ(device.End(), "");
}

TEST(Figures, Of_the_stack) {
    constexpr uint32_t kStack = 64 << 10;
    const Handheld handheld;
    std::cout << "deepest_stack " << handheld.deepestStack << '\n';
    EXPECT_LT(handheld.deepestStack, kStack / 2);  // the rest is for the system's own frames
    EXPECT_GT(handheld.deepestStack, 0u);
}

}  // namespace
