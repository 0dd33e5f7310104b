// Scans that are replaced and left while their threads run. The sanitizers see what touches freed memory.
#include <gtest/gtest.h>

#include <future>

#include "diagnostics/scan.h"
#include "diagnostics/scan_worker.h"
#include "platform/atomics.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/unit/native/node_responder.h"

namespace {

int Count(const HostTable& table, int32_t status) {
    return static_cast<int>(std::count_if(std::begin(table.hosts), std::end(table.hosts),
                                          [&](const HostRecord& host) { return StatusOf(host) == status; }));
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
            return number >= firstAnswering && number < 164 ? std::optional(reply) : std::nullopt;
        };
    }
    void TearDown() override {
        ASSERT_TRUE(fakes::WaitForWorkers(20));
        ReleaseScanTable();
        scanState = {};
    }

    // The table of a new scan, which the test holds too.
    HostTable* Start(uint16_t port) {
        EXPECT_TRUE(StartScanAskingPort(nullptr, port));
        platform::AtomicIncrement(&scanState.table->holders);
        return scanState.table;
    }

    uint32_t firstAnswering = 163;
    std::promise<void> gate;
    std::shared_future<void> opened = gate.get_future();
};

TEST_F(ScanLifetime, A_second_scan_leaves_the_first_ones_table_to_its_workers) {
    const NodeResponder peers(NodeResponder::Names{{"127.0.0.163", "LAST"}});
    HostTable* const tables[] = {Start(peers.port), Start(peers.port)};
    EXPECT_NE(tables[0], tables[1]);
    EXPECT_EQ(Count(*tables[0], kHostPending), kScanHosts);
    gate.set_value();
    ASSERT_TRUE(fakes::WaitForWorkers(20));
    for (HostTable* table : tables) {
        EXPECT_EQ(Count(*table, kHostSilent), kScanHosts - 1);
        EXPECT_STREQ(table->hosts[162].name, "LAST");
        EXPECT_EQ(table->holders, table == tables[0] ? 1 : 2);
        ReleaseTable(table);
    }
}

TEST_F(ScanLifetime, Workers_of_a_closed_dialog_leave_their_records_alone) {
    HostTable* table = Start(137);
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    gate.set_value();
    ASSERT_TRUE(fakes::WaitForWorkers(20));
    EXPECT_EQ(Count(*table, kHostPending), kScanHosts);
    EXPECT_EQ(table->holders, 1);
    ReleaseTable(table);
}

TEST_F(ScanLifetime, The_dialog_reads_while_workers_write) {
    std::map<std::string, std::string> names;
    for (int i = 100; i < 164; ++i) {
        names["127.0.0." + std::to_string(i)] = "HOST-" + std::to_string(i);
    }
    const NodeResponder peers(names);
    firstAnswering = 100;
    gate.set_value();
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.port));
    while (Count(*scanState.table, kHostPending) != 0) {
        for (HostRecord& host : scanState.table->hosts) {
            if (StatusOf(host) == kHostAnswered && host.listed == 0) {
                EXPECT_EQ("HOST-" + std::to_string(ntohl(host.address) & 0xFF), host.name);
                host.listed = 1;
            }
        }
    }
    EXPECT_EQ(Count(*scanState.table, kHostAnswered), 64);
}

}  // namespace
