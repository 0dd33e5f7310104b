// The DHCP dialog: the lease, its release and renewal, and the public address.

#include "tests/ui/ui_test.h"

namespace ui {
namespace {

const std::vector<int> kLines = {IDC_DHCP_TITLE, IDC_DHCP_ADDRESS, IDC_DHCP_SERVER, IDC_DHCP_OBTAINED,
                                 IDC_DHCP_EXPIRES};
const Texts kLease = {L"DHCP Information", L"192.168.200.200", L"192.168.200.254", L"Wed. Mar 15, 2006 08:05:09",
                      L"Tue. Mar 21, 2006 08:05:09"};
const Texts kReleased = {L"DHCP Information", L"", L"", L"", L""};

void UseLease() {
    scripted::system.adapters = {{.index = 4,
                                  .address = "192.168.200.200",
                                  .dhcpEnabled = true,
                                  .dhcpServer = "192.168.200.254",
                                  .leaseObtained = 1142409909,
                                  .leaseExpires = 1142928309}};
    scripted::system.internet.answers[L"ip1.quorvane.net"] = {{"203.113.113.200\r\n"}};
}

TEST(DhcpDialog, Shows_the_lease_whole_on_every_screen_and_releases_it) {
    ForEachScreen([](TodayFrame& frame, SIZE) {
        UseLease();
        RunTool(frame, kDhcpTool, {}, [&](HWND dialog) {
            EXPECT_EQ(TextsOf(dialog, kLines), kLease);
            EXPECT_EQ(TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"");
            Press(dialog, IDC_DHCP_DETECT);
            EXPECT_EQ(TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"203.113.113.200");
            ExpectReadable(dialog, frame.window);
            SaveScreen(frame, "dhcp");
            Press(dialog, IDC_DHCP_RELEASE);
            EXPECT_EQ(TextsOf(dialog, kLines), kReleased);
            EXPECT_EQ(TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"203.113.113.200");
            scripted::system.internet.answers.clear();
            Press(dialog, IDC_DHCP_DETECT);
            EXPECT_EQ(TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"");
        });
        EXPECT_EQ(std::exchange(scripted::system.dhcpCalls, {}),
                  (std::vector<std::pair<std::string, uint32_t>>{{"release", 4}}));
    });
}

TEST(DhcpDialog, A_refusal_changes_nothing_and_a_renewal_reads_the_lease_again) {
    const TodayFrame frame(kScreenSizes[0]);
    UseLease();
    scripted::system.results = {{"IpReleaseAddress", ERROR_ACCESS_DENIED}, {"IpRenewAddress", ERROR_ACCESS_DENIED}};
    const Boxes boxes = RunTool(frame, kDhcpTool, {IDOK, IDOK, IDOK, IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_DHCP_RELEASE);
        Press(dialog, IDC_DHCP_RENEW);
        // Without an interface of that name nothing happens at all.
        scripted::system.results["GetInterfaceInfo size"] = ERROR_NO_DATA;
        Press(dialog, IDC_DHCP_RELEASE);
        Press(dialog, IDC_DHCP_RENEW);
        EXPECT_EQ(TextsOf(dialog, kLines), kLease);
        scripted::system.results.clear();
        scripted::system.adapters[0].leaseExpires += 1;
        Press(dialog, IDC_DHCP_RENEW);
        EXPECT_EQ(TextOf(dialog, IDC_DHCP_EXPIRES), L"Tue. Mar 21, 2006 08:05:10");
        scripted::system.adapters[0].dhcpEnabled = false;
        Press(dialog, IDC_DHCP_RENEW);
        EXPECT_EQ(TextsOf(dialog, {IDC_DHCP_TITLE, IDC_DHCP_EXPIRES}),
                  (Texts{L"DHCP is not enabled.", L"Tue. Mar 21, 2006 08:05:10"}));
        EXPECT_FALSE(IsEnabled(dialog, IDC_DHCP_RELEASE) || IsEnabled(dialog, IDC_DHCP_RENEW));
    });
    const MessageBoxShown renewed = {L"DHCP IP address renewed. Please wait a few seconds to take it effect.",
                                     L"Infomation"};
    EXPECT_EQ(
        boxes,
        (Boxes{
            {L"Release DHCP Address Error!", L"Error"}, {L"Renew DHCP Address Error!", L"Error"}, renewed, renewed}));
}

}  // namespace
}  // namespace ui
