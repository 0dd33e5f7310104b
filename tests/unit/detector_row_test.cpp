// What the detector's list shows of a host.
#include "diagnostics/detector_row.h"

#include <gtest/gtest.h>

#include "diagnostics/safe_list.h"
#include "tests/support/texts.h"

TEST(DetectorRow, Describes_known_hosts_strangers_and_the_device) {
    scanState.ownAddress = inet_addr("10.1.2.3");
    scanState.ownMac = {{0xA, 0xB, 0xC, 0xD, 0xE, 0xF}};
    SafeListAdd({{1, 2, 3, 4, 5, 6}});
    SafeListAdd({});
    const std::tuple<const char*, const char*, MacAddress, bool, const wchar_t*> rows[] = {
        {"10.1.2.200", "FRIEND", {{1, 2, 3, 4, 5, 6}}, true, L"FRIEND|10.1.2.200|01:02:03:04:05:06"},
        {"10.1.2.4", "", {{1, 2, 3, 4, 5, 7}}, false, L"|10.1.2.4|01:02:03:04:05:07"},
        {"10.1.2.5", "NO MAC", {}, false, L"NO MAC|10.1.2.5|"},  // although six zeros are listed
        {"10.1.2.3", "ME", {}, true, L"ME|10.1.2.3|0A:0B:0C:0D:0E:0F"},
        {"10.1.2.3", "ME", {{7, 7, 7, 7, 7, 7}}, true, L"ME|10.1.2.3|07:07:07:07:07:07"},
    };
    for (const auto& [address, name, mac, isSafe, texts] : rows) {
        HostRecord host = {};
        host.address = inet_addr(address);
        strcpy(host.name, name);
        host.mac = mac;
        host.macKnown = MacEquals(mac, {}) ? 0 : 1;
        DetectorRow shown;
        DescribeHost(host, shown);
        EXPECT_EQ(Joined({shown.cells.host, shown.cells.address, shown.cells.mac}), texts);
        EXPECT_EQ(std::pair(shown.image == kSafeImage, host.safe != 0), std::pair(isSafe, isSafe)) << address;
        EXPECT_EQ(static_cast<uint32_t>(shown.order), ntohl(host.address) & 0xFF);
    }
    EXPECT_EQ((ScanProgress{127, false}).Percent(), 50);
    scanState = {};
}
