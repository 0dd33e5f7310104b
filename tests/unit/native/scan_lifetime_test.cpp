// Scans that are replaced, left and refused while their threads run. The sanitizers see what touches freed memory.

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

bool IsHost(uint32_t address, uint8_t number) {
    return address == htonl(0x7F000000U + number);
}

int Count(const HostTable& table, int32_t status) {
    int count = 0;
    for (const HostRecord& host : table.hosts) {
        count += StatusOf(host) == status ? 1 : 0;
    }
    return count;
}

class ScanLifetime : public testing::Test {
  protected:
    void SetUp() override { scripted::system.adapters = {{.address = "127.0.0.33"}}; }
    void TearDown() override {
        ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
        ReleaseScanTable();
        scanState = {};
    }
};

TEST_F(ScanLifetime, A_second_scan_leaves_the_first_ones_table_to_its_workers) {
    Gate gate;
    const NodeResponder peers(NodeResponder::Names{{"127.0.0.5", "FIVE"}, {"127.0.0.6", "SIX"}});
    std::mutex counting;
    int asked = 0;
    scripted::system.echo = [&](uint32_t address, DWORD) -> std::optional<platform::EchoReply> {
        gate.Pass();
        const std::lock_guard held(counting);
        ++asked;
        return IsHost(address, 5) || IsHost(address, 6) ? ReplyOf(address) : std::nullopt;
    };
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.Port()));
    HostTable* first = scanState.table;
    platform::AtomicIncrement(&first->holders);
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.Port()));
    HostTable* second = scanState.table;
    EXPECT_NE(first, second);
    EXPECT_EQ(Count(*first, kHostPending), kScanHosts);
    gate.Open();
    ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
    EXPECT_EQ(asked, 2 * kScanHosts);
    for (HostTable* table : {first, second}) {
        EXPECT_EQ(Count(*table, kHostSilent), kScanHosts - 2);
        EXPECT_STREQ(table->hosts[4].name, "FIVE");
        EXPECT_STREQ(table->hosts[5].name, "SIX");
        EXPECT_EQ(table->holders, 1);
    }
    ReleaseTable(first);
}

TEST_F(ScanLifetime, Workers_of_a_closed_dialog_leave_their_records_alone) {
    Gate gate;
    scripted::system.echo = [&](uint32_t address, DWORD) {
        gate.Pass();
        return ReplyOf(address);
    };
    ASSERT_TRUE(StartScan(nullptr));
    HostTable* table = scanState.table;
    platform::AtomicIncrement(&table->holders);
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

TEST_F(ScanLifetime, Without_an_address_nothing_starts) {
    for (const auto& adapters : {std::vector<scripted::Adapter>{}, std::vector<scripted::Adapter>{{.address = ""}}}) {
        scripted::system.adapters = adapters;
        fakes::shownMessages.clear();
        EXPECT_FALSE(StartScan(nullptr));
        ASSERT_EQ(fakes::shownMessages.size(), 1U);
        EXPECT_EQ(fakes::shownMessages[0].text, L"Cannot get current IP address!");
        EXPECT_EQ(fakes::shownMessages[0].caption, L"Error");
        EXPECT_EQ(fakes::shownMessages[0].flags, 0U);
    }
    EXPECT_EQ(scanState.table, nullptr);
}

TEST_F(ScanLifetime, Hosts_whose_worker_cannot_start_stay_pending) {
    const struct {
        const char* function;
        int nth, times;
        bool started;
        int pending;
    } rows[] = {
        {"LocalAlloc", 2, 1, false, 0},  // the table; the first is the adapter list
        {"LocalAlloc", 3, 10, true, 10},  {"StartWorker", 1, kScanHosts, true, kScanHosts},
        {"StartWorker", 250, 2, true, 2}, {"StartWorker", 1, 0, true, 0},
    };
    for (const auto& row : rows) {
        Gate gate;  // so that no worker allocates meanwhile
        scripted::system.echo = [&](uint32_t, DWORD) {
            gate.Pass();
            return std::nullopt;
        };
        fakes::FailCall(row.function, row.nth, row.times);
        EXPECT_EQ(StartScan(nullptr), row.started) << row.function << row.nth;
        gate.Open();
        ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
        fakes::FailCall(row.function, 0, 0);
        EXPECT_TRUE(fakes::shownMessages.empty());
        if (row.started) {
            EXPECT_EQ(Count(*scanState.table, kHostPending), row.pending) << row.function << row.nth;
            EXPECT_EQ(scanState.table->holders, 1);
        } else {
            EXPECT_EQ(scanState.table, nullptr);
        }
    }
}

TEST_F(ScanLifetime, A_host_without_memory_for_the_arp_table_still_counts) {
    const NodeResponder peers(NodeResponder::Names{{"127.0.0.9", "NINE"}});
    scripted::system.arp = {{htonl(0x7F000009), {1, 2, 3, 4, 5, 6}}};
    scripted::system.echo = [](uint32_t address, DWORD) {
        if (!IsHost(address, 9)) {
            return std::optional<platform::EchoReply>();
        }
        fakes::FailCall("LocalAlloc", 1, 1000);
        return ReplyOf(address);
    };
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.Port()));
    ASSERT_TRUE(fakes::WaitForWorkers(kPatienceSeconds));
    const HostRecord& host = scanState.table->hosts[8];
    EXPECT_EQ(StatusOf(host), kHostAnswered);
    EXPECT_EQ(host.macKnown, 0U);
    EXPECT_STREQ(host.name, "NINE");
}

}  // namespace
