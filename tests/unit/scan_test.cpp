// The scan with its real threads and sockets over scripted echoes: who is found, and under which name and address.

#include "diagnostics/scan.h"

#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/own_address.h"
#include "diagnostics/safe_list.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/node_responder.h"

namespace {

void UseAdapter(const std::string& address, const std::string& mask = "255.255.255.0") {
    scripted::system.adapters = {{.type = 71, .address = "10.0.0.1"}, {.address = address, .mask = mask}};
}

std::optional<platform::EchoReply> ReplyOf(uint32_t address) {
    platform::EchoReply reply = {};
    reply.address = address;
    return reply;
}

uint8_t LastByte(uint32_t address) {
    return static_cast<uint8_t>(ntohl(address));
}

bool IsComplete(const HostTable& table) {
    return std::none_of(std::begin(table.hosts), std::end(table.hosts),
                        [](const HostRecord& host) { return StatusOf(host) == kHostPending; });
}

bool WaitForScan() {
    for (int i = 0; i < 1500 && !IsComplete(*scanState.table); ++i) {
        Sleep(10);
    }
    return IsComplete(*scanState.table);
}

TEST(OwnAddress, Is_the_first_ethernet_adapters) {
    char text[kAddressTextBytes] = "untouched";
    MacAddress mac = {{9, 9, 9, 9, 9, 9}};
    const MacAddress none = {};
    GetCurrentAdapterAddress(text, mac);
    EXPECT_STREQ(text, "");
    EXPECT_TRUE(MacEquals(mac, none));
    UseAdapter("192.168.7.33");
    GetCurrentAdapterAddress(text, mac);
    EXPECT_STREQ(text, "192.168.7.33");
    EXPECT_TRUE(MacEquals(mac, {{2, 0, 0, 0, 0, 1}}));
    scripted::system.adapters[1].hardwareAddress = {};
    GetCurrentAdapterAddress(text, mac);
    EXPECT_TRUE(MacEquals(mac, none));
}

TEST(Scan, Finds_every_host_that_answers_and_no_other) {
    UseAdapter("127.0.0.33", "255.255.0.0");
    const NodeResponder peers(NodeResponder::Names{{"127.0.0.1", "FIRST"}});  // the others speak no NetBIOS
    scripted::system.echo = [](uint32_t address, DWORD timeoutMs) -> std::optional<platform::EchoReply> {
        EXPECT_EQ(timeoutMs, 5000U);
        const uint8_t host = LastByte(address);
        if (host == 50) {
            return ReplyOf(inet_addr("127.0.0.1"));  // somebody else answers
        }
        return host == 1 || host == 33 || host == 254 ? ReplyOf(address) : std::nullopt;
    };
    scripted::system.arp = {{inet_addr("127.0.0.1"), {1, 1, 1, 1, 1, 1}},
                            {inet_addr("127.0.0.50"), {5, 5, 5, 5, 5, 5}},
                            {inet_addr("127.0.0.254"), {2, 2, 2, 2, 2, 2}}};
    ASSERT_TRUE(StartScanAskingPort(nullptr, peers.Port()));
    ASSERT_TRUE(WaitForScan());
    std::string found;
    for (const HostRecord& host : scanState.table->hosts) {
        if (StatusOf(host) == kHostAnswered) {
            const auto index = &host - scanState.table->hosts;
            EXPECT_EQ(ntohl(host.address), 0x7F000001U + static_cast<uint32_t>(index));
            found += std::to_string(index + 1) + host.name + (host.macKnown != 0 ? " at " : " ") +
                     std::to_string(host.mac.bytes[5]) + ", ";
        } else {
            EXPECT_EQ(host.address, 0U);
        }
    }
    EXPECT_EQ(found, "1FIRST at 1, 33 0, 254 at 2, ");
    EXPECT_EQ(scanState.ownAddress, inet_addr("127.0.0.33"));
    EXPECT_TRUE(MacEquals(scanState.ownMac, {{2, 0, 0, 0, 0, 1}}));
    ReleaseScanTable();
    EXPECT_EQ(scanState.table, nullptr);
}

TEST(DetectorRow, Describes_known_hosts_strangers_and_the_device) {
    scanState.ownAddress = inet_addr("10.1.2.3");
    scanState.ownMac = {{0xA, 0xB, 0xC, 0xD, 0xE, 0xF}};
    SafeListAdd({{1, 2, 3, 4, 5, 6}});
    SafeListAdd({});
    const struct {
        const char* address;
        const char* name;
        MacAddress mac;
        uint32_t macKnown;
        const wchar_t* macText;
        bool safe;
    } rows[] = {
        {"10.1.2.200", "FRIEND", {{1, 2, 3, 4, 5, 6}}, 1, L"01:02:03:04:05:06", true},
        {"10.1.2.4", "", {{1, 2, 3, 4, 5, 7}}, 1, L"01:02:03:04:05:07", false},
        {"10.1.2.5", "NO MAC", {}, 0, L"", false},  // although six zeros are listed
        {"10.1.2.3", "ME", {}, 0, L"0A:0B:0C:0D:0E:0F", true},
        {"10.1.2.3", "ME", {{7, 7, 7, 7, 7, 7}}, 1, L"07:07:07:07:07:07", true},
    };
    for (const auto& row : rows) {
        HostRecord host = {};
        host.address = inet_addr(row.address);
        strcpy(host.name, row.name);
        host.mac = row.mac;
        host.macKnown = row.macKnown;
        DetectorRow shown;
        DescribeHost(host, shown);
        const std::string name = row.name, address = row.address;
        EXPECT_EQ(shown.cells.host, std::wstring(name.begin(), name.end()));
        EXPECT_EQ(shown.cells.address, std::wstring(address.begin(), address.end()));
        EXPECT_STREQ(shown.cells.mac, row.macText);
        EXPECT_EQ(shown.image, row.safe ? kSafeImage : kIntruderImage) << row.address;
        EXPECT_EQ(host.safe, row.safe ? 1U : 0U);
        EXPECT_EQ(shown.order, LastByte(host.address));
    }
    EXPECT_EQ((ScanProgress{127, false}).Percent(), 50);
    scanState = {};
}

}  // namespace
