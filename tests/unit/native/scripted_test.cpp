// What only the stand-in shows: waits and time zones by a script, six hundred reports, and scans that are replaced and
// left while their threads run (the sanitizers see what touches freed memory).
#include <gtest/gtest.h>

#include <atomic>

#include "adapters/dhcp_info.h"
#include "adapters/internet_connection.h"
#include "diagnostics/report.h"
#include "diagnostics/scan.h"
#include "diagnostics/scan_worker.h"
#include "platform/atomics.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(InternetConnection, Every_outcome_of_the_wait) {
    constexpr uint32_t kFailed = 0x80004005;
    // What the waits bring, the connection's statuses, the result, the time-outs of the waits.
    const std::tuple<std::vector<fakes::WaitOutcome>, std::vector<DWORD>, uint32_t, std::vector<DWORD>> rows[] = {
        {{{0, 0, 300}, {0, 0, 700}}, {17, 16}, 0, {12000, 11700}},
        {{}, {0}, kFailed, {12000}},
        {{}, {33}, kFailed, {12000}},
        {{}, {66}, kFailed, {12000}},
        {{}, {32, 38, 16}, 0, {12000, 12000, 12000}},
        {{{0, 0, 12001}}, {}, kFailed, {12000}},
        {{{WAIT_FAILED, 0x12345}}, {}, 0x80072345, {12000}},
        {{{WAIT_FAILED, 0}, {0x80, 0, 5}}, {16}, 0, {12000, 12000, 11995}},  // no error; abandoned
        {{{0, 0, 11999}, {0, 0, 1}}, {17, 17, 16}, kFailed, {12000, 1}},
    };
    auto& manager = scripted::system.connectionManager;
    manager.proxyResult = S_OK;
    manager.proxy = std::u16string(256, u'p');  // without its terminator
    for (const auto& [waits, statuses, result, waitedMs] : rows) {
        fakes::script.waits = waits;
        fakes::script.waitedMs.clear();
        manager.statuses = statuses;
        InternetConnection out;
        EXPECT_EQ(static_cast<uint32_t>(EstablishInternetConnection(out)), result);
        EXPECT_EQ(fakes::script.waitedMs, waitedMs);
        EXPECT_TRUE((fakes::OpenResources() == 1) == (result == 0) && (out.connection != nullptr) == (result == 0));
        CloseHandle(out.connection);
    }
}

TEST(DhcpTimes, Are_shifted_by_the_standard_bias_and_wrap) {
    const std::tuple<time_t, DWORD, LONG, const wchar_t*> rows[] = {
        {0, 1, 300, L"Sun. Feb 7, 2106 01:28:16"},             // wraps below zero
        {0xFFFFFFFF, 1, -1, L"Thu. Jan 1, 1970 00:00:59"},     // wraps above
        {1152964800, 2, -345, L"Sat. Jul 15, 2006 17:45:00"},  // quarter hours; summer, yet standard time
        {1152964800, TIME_ZONE_ID_INVALID, 480, L"Sat. Jul 15, 2006 12:00:00"},
    };
    for (const auto& [utc, zone, biasMinutes, text] : rows) {
        fakes::script.zoneResult = zone;
        fakes::script.zoneBias = biasMinutes;
        scripted::system.adapters = {{.dhcpEnabled = true, .leaseExpires = utc}};
        DhcpInfo info;
        ASSERT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_STREQ(info.expires, text);
    }
}

TEST(Report, Takes_the_first_free_name_up_to_599) {
    for (int number = 1; number <= 600; ++number) {
        ExportIntruderReport(nullptr, {}, {0, nullptr, nullptr});
    }
    ASSERT_EQ(fakes::shownMessages.size(), 599U) << "nothing is told when all are in use";
    EXPECT_EQ(fakes::shownMessages[9].text, L"Data output to: \\My Documents\\QuorvaneRpt010.csv");
    EXPECT_EQ(fakes::shownMessages[598].text, L"Data output to: \\My Documents\\QuorvaneRpt599.csv");
}

std::atomic<bool> isOpen;

// A new scan's table, which the test holds too.
HostTable* Start() {
    EXPECT_TRUE(StartScan(nullptr));
    platform::AtomicIncrement(&scanState.table->holders);
    return scanState.table;
}

void Open() {
    isOpen = true;
    isOpen.notify_all();
}

// Once no worker runs any more: the hosts that are pending, those that have answered, and the table's holders.
void ExpectEnd(HostTable* table, int pending, int answered, int holders) {
    fakes::workers.clear();
    EXPECT_EQ(std::ranges::count(table->hosts, kHostPending, StatusOf), pending);
    EXPECT_EQ(std::ranges::count(table->hosts, kHostAnswered, StatusOf), answered);
    EXPECT_EQ(table->holders, holders);
    ReleaseTable(table);
}

TEST(Scan, Leaves_the_table_of_one_before_to_its_workers_and_the_records_of_a_closed_dialog_alone) {
    scripted::system.adapters = {{.address = "127.0.0.33", .mask = "255.255.0.0"}};
    scripted::system.echo = [](uint32_t address, DWORD) {
        isOpen.wait(false);
        platform::EchoReply reply = {};
        reply.address = address;
        return (ntohl(address) & 0xC0) == 0x80 ? std::optional(reply) : std::nullopt;  // hosts 128 to 191
    };
    EXPECT_TRUE(StartScan(nullptr));  // its workers alone keep its table
    HostTable* const first = Start();
    HostTable* const second = Start();
    Open();
    for (int host = 0; host < kScanHosts; host += StatusOf(second->hosts[host]) != kHostPending ? 1 : 0) {
        if (StatusOf(second->hosts[host]) == kHostAnswered) {
            EXPECT_EQ("HOST-" + std::to_string(host + 1), second->hosts[host].name);
            second->hosts[host].listed = 1;  // as a dialog does meanwhile
        }
    }
    ExpectEnd(first, 0, 64, 1);
    ExpectEnd(second, 0, 64, 2);
    isOpen = false;
    HostTable* const closed = Start();
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    Open();
    ExpectEnd(closed, kScanHosts, 0, 1);
    EXPECT_EQ(fakes::OpenResources(), 0);
}

}  // namespace
