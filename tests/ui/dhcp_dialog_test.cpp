// The DHCP dialog as a tap opens it: the lease, its release and renewal, and the public address.

#include "adapters/dhcp_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

constexpr int kLines[] = {IDC_DHCP_ADDRESS, IDC_DHCP_SERVER, IDC_DHCP_OBTAINED, IDC_DHCP_EXPIRES};

scripted::Adapter Leased() {
    return {.name = "{eth}",
            .index = 4,
            .address = "192.168.200.200",
            .dhcpEnabled = true,
            .dhcpServer = "192.168.200.254",
            .leaseObtained = 1142409909,
            .leaseExpires = 1142928309};
}

std::vector<ui::MessageBoxShown> OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps,
                                           const std::vector<int>& answers = {}) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    return ui::RunDialogScript([&] { DispatchTap(frame.window, 90 * scale, 10 * scale); }, steps, answers);
}

// The lines of the lease, the title before them.
std::vector<std::wstring> LeaseOf(HWND dialog) {
    std::vector<std::wstring> texts = {ui::TextOf(dialog, IDC_DHCP_TITLE)};
    for (const int line : kLines) {
        texts.push_back(ui::TextOf(dialog, line));
    }
    return texts;
}

const std::vector<std::wstring> kLease = {L"DHCP Information", L"192.168.200.200", L"192.168.200.254",
                                          L"Wed. Mar 15, 2006 08:05:09", L"Tue. Mar 21, 2006 08:05:09"};
const std::vector<std::wstring> kReleased = {L"DHCP Information", L"", L"", L"", L""};

TEST(DhcpDialog, Shows_the_lease_whole_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        scripted::system.adapters = {Leased()};
        scripted::system.internet.answers[L"ip1.quorvane.net"] = {{"203.113.113.200\r\n"}};
        OpenByTap(frame, {[&](HWND dialog) {
                      EXPECT_EQ(LeaseOf(dialog), kLease);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"");
                      ui::Press(dialog, IDC_DHCP_DETECT);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"203.113.113.200");
                      ui::ExpectReadable(dialog, frame.window);
                      ui::SaveScreen(frame, "dhcp-" + ui::NameOf(screen));
                      ui::Press(dialog, IDOK);
                  }});
    });
}

TEST(DhcpDialog, Release_clears_the_lease_and_keeps_title_and_real_address) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    scripted::system.adapters = {Leased()};
    scripted::system.internet.answers[L"ip1.quorvane.net"] = {{"203.0.113.7"}};
    OpenByTap(frame, {[&](HWND dialog) {
                  ui::Press(dialog, IDC_DHCP_DETECT);
                  ui::Press(dialog, IDC_DHCP_RELEASE);
                  EXPECT_EQ(LeaseOf(dialog), kReleased);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"203.0.113.7");
                  // Neither server answers any more.
                  ui::Press(dialog, IDC_DHCP_DETECT);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_REAL_ADDRESS), L"");
                  ui::Press(dialog, IDOK);
              }});
    EXPECT_EQ(scripted::system.dhcpCalls, (std::vector<std::pair<std::string, uint32_t>>{{"release", 4}}));
}

TEST(DhcpDialog, Renew_says_so_and_reads_the_lease_again) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    scripted::system.adapters = {Leased()};
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     scripted::system.adapters[0].leaseExpires += 1;
                                     ui::Press(dialog, IDC_DHCP_RENEW);
                                     EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_EXPIRES), L"Tue. Mar 21, 2006 08:05:10");
                                     EXPECT_TRUE(ui::IsEnabled(dialog, IDC_DHCP_RENEW));
                                     scripted::system.adapters[0].dhcpEnabled = false;
                                     ui::Press(dialog, IDC_DHCP_RENEW);
                                     EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_TITLE), L"DHCP is not enabled.");
                                     EXPECT_EQ(ui::TextOf(dialog, IDC_DHCP_EXPIRES), L"Tue. Mar 21, 2006 08:05:10");
                                     EXPECT_FALSE(ui::IsEnabled(dialog, IDC_DHCP_RELEASE));
                                     EXPECT_FALSE(ui::IsEnabled(dialog, IDC_DHCP_RENEW));
                                     ui::Press(dialog, IDOK);
                                 }},
                                 {IDOK, IDOK});
    for (const ui::MessageBoxShown& box : shown) {
        EXPECT_EQ(box.text, L"DHCP IP address renewed. Please wait a few seconds to take it effect.");
        EXPECT_EQ(box.caption, L"Infomation");
        EXPECT_EQ(box.flags, 0U);
    }
}

TEST(DhcpDialog, A_refusal_is_told_and_changes_nothing) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    scripted::system.adapters = {Leased()};
    scripted::system.results = {{"IpReleaseAddress", ERROR_ACCESS_DENIED}, {"IpRenewAddress", ERROR_ACCESS_DENIED}};
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     ui::Press(dialog, IDC_DHCP_RELEASE);
                                     ui::Press(dialog, IDC_DHCP_RENEW);
                                     EXPECT_EQ(LeaseOf(dialog), kLease);
                                     // Without an interface of that name nothing happens at all.
                                     scripted::system.results["GetInterfaceInfo size"] = ERROR_NO_DATA;
                                     ui::Press(dialog, IDC_DHCP_RELEASE);
                                     ui::Press(dialog, IDC_DHCP_RENEW);
                                     EXPECT_EQ(LeaseOf(dialog), kLease);
                                     ui::Press(dialog, IDOK);
                                 }},
                                 {IDOK, IDOK});
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].text, L"Release DHCP Address Error!");
    EXPECT_EQ(shown[1].text, L"Renew DHCP Address Error!");
    EXPECT_EQ(shown[0].caption + L"," + shown[1].caption, L"Error,Error");
    EXPECT_EQ(shown[0].flags + shown[1].flags, 0U);
}

TEST(DhcpDialog, Opens_without_a_lease_in_every_way) {
    struct Row {
        bool enabled;
        uint32_t interfaces;
        const char* address;
        const char* failing;
        std::vector<std::wstring> texts;
        bool buttons;
    };
    const Row rows[] = {
        {false, 1, "10.0.0.1", "", {L"DHCP is not enabled.", L"", L"", L"", L""}, false},
        {true, 0, "10.0.0.1", "", {L"", L"", L"", L"", L""}, false},
        {true, 1, "10.0.0.1", "GetAdaptersInfo size", {L"", L"", L"", L"", L""}, true},
        {true, 1, "10.0.0.1", "GetAdaptersInfo", {L"", L"", L"", L"", L""}, true},
        {true, 1, "0.0.0.0", "", {L"DHCP Information", L"0.0.0.0", L"192.168.200.254", L"", L""}, true},
    };
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    for (const Row& row : rows) {
        scripted::system.adapters = {Leased()};
        scripted::system.adapters[0].dhcpEnabled = row.enabled;
        scripted::system.adapters[0].address = row.address;
        scripted::system.interfaceCount = row.interfaces;
        scripted::system.results = {{row.failing, ERROR_GEN_FAILURE}};
        OpenByTap(frame, {[&](HWND dialog) {
                      EXPECT_EQ(LeaseOf(dialog), row.texts);
                      EXPECT_EQ(ui::IsEnabled(dialog, IDC_DHCP_RELEASE), row.buttons);
                      EXPECT_EQ(ui::IsEnabled(dialog, IDC_DHCP_RENEW), row.buttons);
                      EXPECT_TRUE(ui::IsEnabled(dialog, IDC_DHCP_DETECT));
                      ui::Press(dialog, IDCANCEL);
                  }});
    }
}

}  // namespace
