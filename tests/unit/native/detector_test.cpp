// The detector: scans that are replaced and left while their threads run (the sanitizers see what touches freed
// memory), and the names of reports.
#include <gtest/gtest.h>

#include <future>

#include "diagnostics/report.h"
#include "diagnostics/scan.h"
#include "diagnostics/scan_worker.h"
#include "item/item_state.h"
#include "platform/atomics.h"
#include "platform/format_text.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/unit/native/node_responder.h"

namespace {

int Count(const HostTable& table, int32_t status) {
    return static_cast<int>(
        std::ranges::count_if(table.hosts, [&](const HostRecord& host) { return StatusOf(host) == status; }));
}

// Hosts 100 to 163 answer once the gate is open.
class ScanLifetime : public testing::Test {
  protected:
    void SetUp() override {
        scripted::system.adapters = {{.address = "127.0.0.33", .mask = "255.255.0.0"}};
        scripted::system.echo = [this](uint32_t address, DWORD) {
            opened.wait();
            platform::EchoReply reply = {};
            reply.address = address;
            const uint32_t number = ntohl(address) & 0xFF;
            return number >= 100 && number < 164 ? std::optional(reply) : std::nullopt;
        };
    }
    void TearDown() override {
        ReleaseScanTable();
        scanState = {};
    }

    // The table of a new scan, which the test holds too.
    HostTable* Start() {
        EXPECT_TRUE(StartScanAskingPort(nullptr, NamesPort()));
        platform::AtomicIncrement(&scanState.table->holders);
        return scanState.table;
    }

    void ExpectAtTheEnd(HostTable* table, int pending, int answered, int holders) {
        ASSERT_TRUE(fakes::WaitForWorkers(20));
        EXPECT_EQ(std::tuple(Count(*table, kHostPending), Count(*table, kHostAnswered), +table->holders),
                  std::tuple(pending, answered, holders));
        ReleaseTable(table);
    }

    std::promise<void> gate;
    std::shared_future<void> opened = gate.get_future();
};

TEST_F(ScanLifetime, A_second_scan_leaves_the_first_ones_table_to_its_workers_and_a_dialog_reads_its_own) {
    HostTable* const first = Start();
    HostTable* const second = Start();
    EXPECT_EQ(Count(*first, kHostPending), kScanHosts);
    gate.set_value();
    while (Count(*second, kHostPending) != 0) {
        for (HostRecord& host : second->hosts) {
            if (StatusOf(host) == kHostAnswered && host.listed == 0) {
                EXPECT_EQ("HOST-" + std::to_string(ntohl(host.address) & 0xFF), host.name);
                host.listed = 1;
            }
        }
    }
    ExpectAtTheEnd(first, 0, 64, 1);
    ExpectAtTheEnd(second, 0, 64, 2);
}

TEST_F(ScanLifetime, Workers_of_a_closed_dialog_leave_their_records_alone) {
    HostTable* const table = Start();
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    gate.set_value();
    ExpectAtTheEnd(table, kScanHosts, 0, 1);
}

TEST(Report, Takes_the_first_free_name_up_to_599) {
    wcscpy(itemState.dataFolder, L"\\My Documents");
    const auto name = [](int number) {
        wchar_t text[32];
        FormatText(text, L"QuorvaneRpt%03d.csv", number);
        return std::wstring(text);
    };
    for (int number = 1; number < 599; ++number) {
        WriteWholeFile(name(number), {});
    }
    ExportIntruderReport(nullptr, {}, {0, nullptr, nullptr});
    ExportIntruderReport(nullptr, {}, {0, nullptr, nullptr});
    EXPECT_FALSE(ReadWholeFile(name(599)).empty());
    EXPECT_FALSE(FileExists(name(600)));
    ASSERT_EQ(fakes::shownMessages.size(), 1U) << "nothing is told when all are in use";
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
}

}  // namespace
