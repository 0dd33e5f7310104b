// The DHCP dialog: release, renewal, and what they do when they fail.

#include "tests/ui/ui_test.h"

namespace ui {
namespace {

TEST(DhcpDialog, A_refusal_changes_nothing_and_a_renewal_reads_the_lease_again) {
    const TodayFrame frame;
    const std::vector<int> lines = {IDC_DHCP_TITLE, IDC_DHCP_ADDRESS, IDC_DHCP_SERVER, IDC_DHCP_EXPIRES};
    scripted::system.adapters = {
        {.index = 4, .dhcpEnabled = true, .dhcpServer = "10.0.0.1", .leaseExpires = 1142928309}};
    auto& results = scripted::system.results;
    results = {{"IpReleaseAddress", ERROR_ACCESS_DENIED}, {"IpRenewAddress", ERROR_ACCESS_DENIED}};
    const Texts boxes = RunTool(frame, kDhcpTool, {IDOK, IDOK, IDOK, IDOK}, [&](HWND dialog) {
        const auto press = [&](std::initializer_list<int> buttons) {
            for (const int id : buttons) {
                Press(dialog, id);
            }
            return TextsOf(dialog, lines);
        };
        const Texts lease = {L"DHCP Information", L"192.168.7.33", L"10.0.0.1", L"Tue. Mar 21, 2006 08:05:09"};
        EXPECT_EQ(press({IDC_DHCP_RELEASE, IDC_DHCP_RENEW}), lease);
        // Without an interface of that name nothing happens at all.
        results["GetInterfaceInfo size"] = ERROR_NO_DATA;
        EXPECT_EQ(press({IDC_DHCP_RELEASE, IDC_DHCP_RENEW, IDC_DHCP_DETECT}), lease);
        EXPECT_EQ(TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"");
        results.clear();
        EXPECT_EQ(press({IDC_DHCP_RELEASE}), (Texts{L"DHCP Information", L"", L"", L""}));
        scripted::system.adapters[0].leaseExpires += 1;
        EXPECT_EQ(press({IDC_DHCP_RENEW})[3], L"Tue. Mar 21, 2006 08:05:10");
        scripted::system.adapters[0].dhcpEnabled = false;
        EXPECT_EQ(press({IDC_DHCP_RENEW})[0], L"DHCP is not enabled.");
        EXPECT_FALSE(IsEnabled(dialog, IDC_DHCP_RELEASE) || IsEnabled(dialog, IDC_DHCP_RENEW));
    });
    const wchar_t* renewed = L"Infomation: DHCP IP address renewed. Please wait a few seconds to take it effect.";
    EXPECT_EQ(boxes,
              (Texts{L"Error: Release DHCP Address Error!", L"Error: Renew DHCP Address Error!", renewed, renewed}));
    EXPECT_EQ(scripted::system.dhcpCalls.back(), (std::pair<std::string, uint32_t>{"renew", 4}));
}

}  // namespace
}  // namespace ui
