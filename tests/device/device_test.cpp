// The library as ARM code where a script's comparison with the desktop does not reach: what the log holds to the byte,
// media that fail, workers that outlive the dialog, what a handheld's loader would refuse, and what it all costs.

#include "tests/device/handheld.h"
#include "tests/device/pe_image.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace {

using device_script::Act;
using device_script::Step;

constexpr Step kBegin[] = {{Act::Clock, 2026, 1, 31, 23},
                           {Act::Radio, 1, 0xFFFFFFC4, 1},
                           {Act::Attach, 240, 320},
                           {Act::Refresh},
                           {Act::Refresh},
                           {Act::Tick, 0, 0, 0, 1}};
constexpr Step kEnd[] = {{Act::Clear}, {Act::Detach}};

struct Device : Handheld {
    Device() : Handheld(kBegin) {}
    void Do(std::initializer_list<Step> steps) { Perform({steps.begin(), steps.size()}); }
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
    const struct {
        const char* name;
        std::vector<Step> steps;
        const char *january, *february;
    } rows[] = {
        {"one hour", {{Act::Tick, 0, 1500, 700, 3}}, "31.23 4500 2100; ", ""},
        {"nothing", {{Act::Tick, 0, 0, 0, 5}}, "", ""},
        {"hour, day and month turn",
         {{Act::Tick, 0, 10, 1, 2},
          {Act::Clock, 2026, 2, 1, 0},
          {Act::Tick, 0, 20, 2, 2},
          {Act::Clock, 2026, 2, 1, 1},
          {Act::Tick, 0, 5, 6, 1}},
         "31.23 20 2; ",
         "1.0 40 4; 1.1 5 6; "},
        {"an earlier hour again",
         {{Act::Tick, 0, 10, 1, 1},
          {Act::Clock, 2026, 1, 31, 22},
          {Act::Tick, 0, 20, 2, 1},
          {Act::Clock, 2026, 1, 31, 23},
          {Act::Tick, 0, 3, 3, 1}},
         "31.23 13 4; 31.22 20 2; ",
         ""},
        {"counters leap, which counts nothing, and wrap",
         {{Act::Counters, 0, 0xFFFFFF00, 0xFFFFFFF0}, {Act::Tick, 0, 0, 0, 1}, {Act::Tick, 0, 0x200, 0x20, 1}},
         "31.23 512 32; ",
         ""},
        {"counters fall",
         {{Act::Tick, 0, 9, 9, 1}, {Act::Counters, 0, 1, 1}, {Act::Tick, 0, 0, 0, 1}, {Act::Tick, 0, 4, 4, 1}},
         "31.23 13 13; ",
         ""},
        {"sums wrap", {{Act::Tick, 0, 0x7FFFFFFF, 1, 2}, {Act::Tick, 0, 0x12, 1, 1}}, "31.23 16 3; ", ""},
        {"another index", {{Act::Adapter, 0, 1, 12}, {Act::Tick, 0, 100, 50, 2}}, "31.23 200 100; ", ""},
        {"gone and back",
         {{Act::Adapter, 0, 0, 0}, {Act::Tick, 0, 7, 7, 2}, {Act::Adapter, 0, 1, 4}, {Act::Tick, 0, 1, 1, 2}},
         "31.23 16 16; ",
         ""},
    };
    for (const auto& row : rows) {
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
        device.Do({{Act::Tick, 0, 10, 1, 1}});
        Part<Disk>(*device.bed) = row.disk;
        device.Do({{Act::Tick, 0, 10, 1, 1}});
        EXPECT_EQ(LogText(device, "202601"), row.second) << row.name;
        Part<Disk>(*device.bed) = {};
        device.Do({{Act::Tick, 0, 10, 1, 1}});
        EXPECT_EQ(LogText(device, "202601"), row.third) << row.name;
        EXPECT_EQ(device.End(), "") << row.name;
    }
}

constexpr uint32_t kTop = device_script::kIconTop;

// Two hosts are safe, two in the ping list; then each list is to lose its first entry, on a full disk.
TEST(Device, Keeps_its_lists_when_the_disk_is_full) {
    Device device;
    device.Do({{Act::Tap, device_script::kTapDetector, kTop},
               {Act::Command, IDC_DETECTOR_DETECT},
               {Act::Timer, 14},
               {Act::Answer, device_script::kYes},
               {Act::Row, IDC_DETECTOR_HOSTS, 0},
               {Act::Answer, device_script::kYes},
               {Act::Row, IDC_DETECTOR_HOSTS, 1},
               {Act::Command, device_script::kOk},
               {Act::Tap, device_script::kTapPing, kTop},
               {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"},
               {Act::Command, IDC_PING_PING},
               {Act::Text, IDC_PING_HOST, 0, 0, 0, "router"},
               {Act::Command, IDC_PING_PING},
               {Act::Command, device_script::kOk}});
    const std::string safe = device.ReadData("slist.dat");
    const std::string hosts = device.ReadData("hosts.dat");
    EXPECT_EQ(safe.size(), 2u * 6);
    EXPECT_EQ(hosts.size(), 2u * 200);
    const Step removal[] = {{Act::Tap, device_script::kTapDetector, kTop},
                            {Act::Command, IDC_DETECTOR_DETECT},
                            {Act::Timer, 14},
                            {Act::Answer, device_script::kYes},
                            {Act::Row, IDC_DETECTOR_HOSTS, 0},
                            {Act::Command, device_script::kOk},
                            {Act::Tap, device_script::kTapPing, kTop},
                            {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"},
                            {Act::Answer, device_script::kYes},
                            {Act::Command, IDC_PING_DELETE},
                            {Act::Command, device_script::kOk}};
    Part<Disk>(*device.bed).fullAtWrite = 1;
    device.Perform(removal);
    EXPECT_EQ(device.ReadData("slist.dat"), safe);
    EXPECT_EQ(device.ReadData("hosts.dat"), hosts);
    Part<Disk>(*device.bed) = {};
    device.Perform(removal);
    EXPECT_EQ(device.ReadData("slist.dat"), safe.substr(6));
    EXPECT_EQ(device.ReadData("hosts.dat"), hosts.substr(200));
    EXPECT_EQ(device.End(), "");
}

// One allocation after the other fails while the tools are opened and used; what is compared is that nothing is touched
// that is not there, and nothing left behind.
TEST(Device, Survives_every_allocation_that_fails) {
    const Step tools[] = {{Act::Tick, 0, 10, 1, 1},
                          {Act::Tap, device_script::kTapDhcp, kTop},
                          {Act::Command, IDC_DHCP_DETECT},
                          {Act::Command, IDC_DHCP_RENEW},
                          {Act::Command, device_script::kOk},
                          {Act::Tap, device_script::kTapPing, kTop},
                          {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"},
                          {Act::Command, IDC_PING_PING},
                          {Act::Timer, 10},
                          {Act::Command, device_script::kOk},
                          {Act::Tap, device_script::kTapAdapter, kTop},
                          {Act::Command, device_script::kOk},
                          {Act::Tap, device_script::kTapScanner, kTop},
                          {Act::Timer, 7},
                          {Act::Command, device_script::kOk},
                          {Act::Tap, device_script::kTapCard, kTop},
                          {Act::Command, device_script::kOk}};
    int allocations = 1;
    for (int failing = 0; failing <= allocations; ++failing) {
        Device device;
        Memory& memory = Part<Memory>(*device.bed);
        memory = {failing, 0};
        device.Perform(tools);
        allocations = failing == 0 ? memory.allocations : allocations;
        EXPECT_EQ(device.End(), "") << "allocation " << failing;
    }
    EXPECT_GT(allocations, 10);
}

// Every worker counts as a user of the library and ends without returning into it.
TEST(Device, Lets_workers_outlive_the_dialog_and_does_without_them) {
    Device device;
    Part<Threads>(*device.bed).wait = true;
    device.Do({{Act::Tap, device_script::kTapDetector, kTop},
               {Act::Command, IDC_DETECTOR_DETECT},
               {Act::Command, device_script::kOk}});
    EXPECT_EQ(Part<Threads>(*device.bed).waiting.size(), 254u);
    EXPECT_EQ(Part<Modules>(*device.bed).libraryUses, 255);
    RunThreads(*device.bed);
    EXPECT_EQ(Part<Modules>(*device.bed).libraryUses, 1);
    Part<Threads>(*device.bed).failing = 254;
    device.Do({{Act::Tap, device_script::kTapDetector, kTop},
               {Act::Command, IDC_DETECTOR_DETECT},
               {Act::Command, device_script::kOk}});
    EXPECT_EQ(device.End(), "");
}

TEST(Device, Imports_only_what_the_bed_stands_in_for) {
    Device device;
    for (const std::string& name : ImportNames(*device.bed)) {
        EXPECT_EQ(device.bed->standIns.count(name), 1u) << name;
    }
    EXPECT_EQ(device.End(), "");
}

// Header fields of the library, spoilt one at a time. Offsets are from the "PE" signature; sections begin at 248.
TEST(Device, Would_be_refused_with_a_spoilt_header) {
    const std::string file = ReadWhole(Setting("QUORVANE_DEVICE_LIBRARY"));
    const struct {
        size_t offset;
        uint32_t value;
        const char* problem;
    } rows[] = {
        {4, 0x01C2, "not for ARM"},
        {22, 0x210F, "no relocatable executable DLL"},
        {24, 0x020B, "not PE32"},
        {72, 5, "wants a newer system than 4.20"},
        {92, 2, "not for subsystem Windows CE"},
        {248 + 36, 0xE0000020, "a section is both writable and executable"},
        {248 + 12, 0x1800, "a section lies outside the file or the image, or over another"},
        {248 + 40 + 12, 0x1000, "a section lies outside the file or the image, or over another"},
        {248 + 20, 0x7FFFFFFF, "a section lies outside the file or the image, or over another"},
        {120 + 8, 0x7FFFFFF0, "a table points outside"},
        {120 + 5 * 8, 0x1000, "a block of relocations has no sensible size"},
    };
    PeImage image;
    ASSERT_EQ(LayOutImage({reinterpret_cast<const uint8_t*>(file.data()), file.size()}, image), "");
    for (const auto& row : rows) {
        std::vector<uint8_t> spoilt(file.begin(), file.end());
        uint32_t header = 0;
        memcpy(&header, &spoilt[60], sizeof(header));
        const size_t bytes = row.offset < 120 ? 2 : 4;
        memcpy(&spoilt[header + row.offset], &row.value, bytes);
        EXPECT_EQ(LayOutImage(spoilt, image), row.problem) << row.offset;
    }
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
    device.Do({{Act::Tick, 0, 1500, 700, 24}});
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
