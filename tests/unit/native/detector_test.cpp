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

class ScanLifetime : public testing::Test {
  protected:
    // Those that answer do so once the gate is open.
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
        ASSERT_TRUE(fakes::WaitForWorkers(20));
        ReleaseScanTable();
        scanState = {};
    }

    // The table of a new scan, which the test holds too.
    HostTable* Start() {
        EXPECT_TRUE(StartScanAskingPort(nullptr, NamesPort()));
        platform::AtomicIncrement(&scanState.table->holders);
        return scanState.table;
    }

    std::promise<void> gate;
    std::shared_future<void> opened = gate.get_future();
};

TEST_F(ScanLifetime, A_second_scan_leaves_the_first_ones_table_to_its_workers_and_a_dialog_reads_its_own) {
    HostTable* const tables[] = {Start(), Start()};
    EXPECT_NE(tables[0], tables[1]);
    EXPECT_EQ(Count(*tables[0], kHostPending), kScanHosts);
    gate.set_value();
    while (Count(*tables[1], kHostPending) != 0) {
        for (HostRecord& host : tables[1]->hosts) {
            if (StatusOf(host) == kHostAnswered && host.listed == 0) {
                EXPECT_EQ("HOST-" + std::to_string(ntohl(host.address) & 0xFF), host.name);
                host.listed = 1;
            }
        }
    }
    ASSERT_TRUE(fakes::WaitForWorkers(20));
    for (HostTable* table : tables) {
        EXPECT_EQ(Count(*table, kHostAnswered), 64);
        EXPECT_EQ(Count(*table, kHostSilent), kScanHosts - 64);
        EXPECT_STREQ(table->hosts[162].name, "HOST-163");
        EXPECT_EQ(table->holders, table == tables[0] ? 1 : 2);
        ReleaseTable(table);
    }
}

TEST_F(ScanLifetime, Workers_of_a_closed_dialog_leave_their_records_alone) {
    HostTable* table = Start();
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    gate.set_value();
    ASSERT_TRUE(fakes::WaitForWorkers(20));
    EXPECT_EQ(Count(*table, kHostPending), kScanHosts);
    EXPECT_EQ(table->holders, 1);
    ReleaseTable(table);
}

std::wstring ReportName(int number) {
    wchar_t name[32];
    FormatText(name, L"QuorvaneRpt%03d.csv", number);
    return name;
}

std::string ReportText(int number) {
    const Bytes content = ReadWholeFile(ReportName(number));
    return {content.begin(), content.end()};
}

TEST(Report, Escapes_nothing_and_takes_the_first_free_name_up_to_599) {
    const std::string header = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";
    const auto read = [](HWND, int row, DetectorCells& cells) {
        const DetectorCells rows[] = {{L"", L"192.168.7.33", L"02:00:00:00:00:FE"},
                                      {L"A \"b\",c\x00E9", L"192.168.7.254", L""}};
        cells = rows[row];
    };
    wcscpy(itemState.dataFolder, L"\\My Documents");
    ExportIntruderReport(nullptr, {{0x02, 0, 0, 0, 0, 0xFE}}, {2, read, nullptr});
    EXPECT_EQ(ReportText(1), header + "\"\",\"No\",\"192.168.7.33\",\"02:00:00:00:00:FE\"\n" +
                                 "\"A \"b\",c\xE9\",\"Yes\",\"192.168.7.254\",\"\"\n");
    EXPECT_EQ(fakes::shownMessages[0].caption, L"Infomation");
    EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
    for (int number = 2; number < 599; ++number) {
        WriteWholeFile(ReportName(number), {});
    }
    ExportIntruderReport(nullptr, {}, {0, read, nullptr});
    ExportIntruderReport(nullptr, {}, {0, read, nullptr});
    EXPECT_EQ(ReportText(599), header);
    EXPECT_FALSE(FileExists(ReportName(600)));
    EXPECT_EQ(fakes::shownMessages.size(), 2U) << "nothing is told when all are in use";
}

}  // namespace
