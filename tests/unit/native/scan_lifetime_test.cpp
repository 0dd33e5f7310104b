// Scans that are replaced and left while their threads run. The sanitizers see what touches freed memory.

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "diagnostics/scan.h"
#include "diagnostics/scan_worker.h"
#include "platform/atomics.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/node_responder.h"

namespace {

constexpr int kPatienceSeconds = 20;

// Holds every echo until it is opened.
struct Gate {
    std::mutex lock;
    std::condition_variable changed;
    bool open = false;

    void Pass() {
        std::unique_lock held(lock);
        changed.wait(held, [&] { return open; });
    }
    void Open() {
        const std::lock_guard held(lock);
        open = true;
        changed.notify_all();
    }
};

std::optional<platform::EchoReply> ReplyOf(uint32_t address) {
    platform::EchoReply reply = {};
    reply.address = address;
    return reply;
}

int Count(const HostTable& table, int32_t status) {
    return static_cast<int>(std::count_if(std::begin(table.hosts), std::end(table.hosts),
                                          [&](const HostRecord& host) { return StatusOf(host) == status; }));
}

class ScanLifetime : public testing::Test {
  protected:
    void SetUp() override { scripted::system.adapters = {{.address = "127.0.0.33"}}; }
    void TearDown() override {
        ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
        ReleaseScanTable();
        scanState = {};
    }

    // The table of a new scan, which the test holds too.
    HostTable* Start(uint16_t port = 137) {
        EXPECT_TRUE(StartScanAskingPort(nullptr, port));
        platform::AtomicIncrement(&scanState.table->holders);
        return scanState.table;
    }

    Gate gate;
};

TEST_F(ScanLifetime, A_second_scan_leaves_the_first_ones_table_to_its_workers) {
    const NodeResponder peers(NodeResponder::Names{{"127.0.0.6", "SIX"}});
    scripted::system.echo = [&](uint32_t address, DWORD) {
        gate.Pass();
        return address == inet_addr("127.0.0.6") ? ReplyOf(address) : std::nullopt;
    };
    HostTable* const tables[] = {Start(peers.Port()), Start(peers.Port())};
    EXPECT_NE(tables[0], tables[1]);
    EXPECT_EQ(Count(*tables[0], kHostPending), kScanHosts);
    gate.Open();
    ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
    for (HostTable* table : tables) {
        EXPECT_EQ(Count(*table, kHostSilent), kScanHosts - 1);
        EXPECT_STREQ(table->hosts[5].name, "SIX");
        EXPECT_EQ(table->holders, table == tables[0] ? 1 : 2);
        ReleaseTable(table);
    }
}

TEST_F(ScanLifetime, Workers_of_a_closed_dialog_leave_their_records_alone) {
    scripted::system.echo = [&](uint32_t address, DWORD) {
        gate.Pass();
        return ReplyOf(address);
    };
    HostTable* table = Start();
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    gate.Open();
    ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
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
    scripted::system.echo = [](uint32_t address, DWORD) {
        const uint32_t number = ntohl(address) & 0xFF;
        return number >= 100 && number < 164 ? ReplyOf(address) : std::nullopt;
    };
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.Port()));
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
