// The ping dialog as a tap opens it: its lines, its host list, its last host and the soft keyboard.

#include "diagnostics/ping_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/support/host_records.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

using Texts = std::vector<std::wstring>;

std::vector<ui::MessageBoxShown> OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps,
                                           const std::vector<int>& answers = {}) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    return ui::RunDialogScript([&] { DispatchTap(frame.window, 110 * scale, 10 * scale); }, steps, answers);
}

void AnswerFrom(const char* host, uint32_t roundTripMs) {
    scripted::system.echo = [=](uint32_t, DWORD) {
        platform::EchoReply reply = {};
        reply.address = inet_addr(host);
        reply.roundTripTime = roundTripMs;
        return std::optional(reply);
    };
}

Texts Lines(HWND dialog) {
    return {ui::TextOf(dialog, IDC_PING_STATUS), ui::TextOf(dialog, IDC_PING_ROUND_TRIP),
            ui::TextOf(dialog, IDC_PING_MAC)};
}

Texts Listed(HWND dialog) {
    HWND combo = GetDlgItem(dialog, IDC_PING_HOST);
    Texts hosts(static_cast<size_t>(SendMessageW(combo, CB_GETCOUNT, 0, 0)));
    for (size_t i = 0; i < hosts.size(); ++i) {
        wchar_t text[256] = {};
        SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
        hosts[i] = text;
    }
    return hosts;
}

void Ping(HWND dialog, const std::wstring& host) {
    ui::TypeInto(dialog, IDC_PING_HOST, host);
    ui::Press(dialog, IDC_PING_PING);
    EXPECT_EQ(Lines(dialog), (Texts{L"Pinging...", L"", L""}));
    EXPECT_FALSE(ui::IsEnabled(dialog, IDC_PING_PING));
    ui::WaitUntil([&] { return ui::IsEnabled(dialog, IDC_PING_PING); });
}

TEST(PingDialog, Shows_an_answer_whole_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        UseEmptyDataFolder();
        AnswerFrom("222.222.222.222", 4999);
        scripted::system.arp = {{inet_addr("222.222.222.222"), {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}}};
        OpenByTap(frame, {[&](HWND dialog) {
                      Ping(dialog, L"222.222.222.222");
                      EXPECT_EQ(Lines(dialog), (Texts{L"Host (222.222.222.222) is alive", L"Round Trip Time: 4999 ms",
                                                      L"MAC Address: DC:DC:DC:DC:DC:DC"}));
                      ui::ExpectReadable(dialog, frame.window, IDC_PING_HOST);
                      ui::SaveScreen(frame, "ping-" + ui::NameOf(screen));
                      RECT area = {};
                      GetWindowRect(dialog, &area);
                      MapWindowPoints(nullptr, frame.window, reinterpret_cast<POINT*>(&area), 2);
                      EXPECT_EQ(area.left, (screen.cx - (area.right - area.left)) / 2);
                      EXPECT_EQ(area.top, (screen.cy - (area.bottom - area.top)) / 2 - 26);
                      ui::Press(dialog, IDOK);
                  }});
    });
}

TEST(PingDialog, Remembers_the_hosts_and_the_last_one) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    AnswerFrom("10.0.0.9", 1);
    const std::wstring longest(99, L'x');
    OpenByTap(frame, {[&](HWND dialog) {
                  EXPECT_EQ(ui::TextOf(dialog, IDC_PING_HOST), L"");
                  Ping(dialog, L"10.0.0.1");
                  EXPECT_EQ(Lines(dialog), (Texts{L"Destination host unreachable.", L"", L""}));
                  Ping(dialog, longest + L"more than the field takes");
                  EXPECT_EQ(Lines(dialog), (Texts{L"Unknown host: " + longest, L"", L""}));
                  Ping(dialog, L"LocalHost");
                  Ping(dialog, L"LOCALHOST");
                  EXPECT_EQ(Listed(dialog), (Texts{L"10.0.0.1", longest, L"LocalHost"}));
                  ui::Press(dialog, IDOK);
              }});
    EXPECT_EQ(ListedHosts(), (Texts{L"10.0.0.1", longest, L"LocalHost"}));
    wchar_t last[100] = {};
    EXPECT_TRUE(ReadStringSetting(L"pinghost", last));
    EXPECT_STREQ(last, L"LOCALHOST");
    OpenByTap(frame, {[&](HWND dialog) {
                  EXPECT_EQ(ui::TextOf(dialog, IDC_PING_HOST), L"LOCALHOST");
                  EXPECT_EQ(Listed(dialog), (Texts{L"10.0.0.1", longest, L"LocalHost"}));
                  EXPECT_EQ(Lines(dialog), (Texts{L"", L"", L""}));
                  ui::Press(dialog, IDCANCEL);
              }});
}

TEST(PingDialog, Deletes_the_shown_host_or_only_clears) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    WriteWholeFile(L"hosts.dat", HostRecordOf(L"one") + HostRecordOf(L"two") + HostRecordOf(L"three"));
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     const auto remove = [&](const wchar_t* host, const Texts& left) {
                                         Ping(dialog, host);
                                         ui::Press(dialog, IDC_PING_DELETE);
                                         EXPECT_EQ(Lines(dialog), (Texts{L"", L"", L""}));
                                         EXPECT_EQ(ui::TextOf(dialog, IDC_PING_HOST), L"");
                                         EXPECT_EQ(Listed(dialog), left);
                                     };
                                     remove(L"127.0.0.1", {L"one", L"two", L"three", L"127.0.0.1"});
                                     remove(L"127.0.0.1", {L"one", L"two", L"three"});
                                     ui::Press(dialog, IDC_PING_DELETE);  // nothing is shown to delete
                                     for (const wchar_t* host : {L"TWO", L"one", L"three"}) {
                                         ui::TypeInto(dialog, IDC_PING_HOST, host);
                                         ui::Press(dialog, IDC_PING_DELETE);
                                     }
                                     ui::TypeInto(dialog, IDC_PING_HOST, L"three");
                                     ui::Press(dialog, IDC_PING_DELETE);  // without a list the text stays
                                     EXPECT_EQ(ui::TextOf(dialog, IDC_PING_HOST), L"three");
                                     ui::Press(dialog, IDOK);
                                 }},
                                 {IDNO, IDYES, IDYES, IDYES, IDYES, IDYES});
    EXPECT_FALSE(FileExists(L"hosts.dat"));
    for (const ui::MessageBoxShown& box : shown) {
        EXPECT_EQ(box.text, L"Are you sure you want to delete this host?");
        EXPECT_EQ(box.caption, L"Question");
        EXPECT_EQ(box.flags, 36U);
    }
}

TEST(PingDialog, An_empty_field_is_told_and_nothing_else_happens) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     ui::Press(dialog, IDC_PING_PING);
                                     EXPECT_TRUE(ui::IsEnabled(dialog, IDC_PING_PING));
                                     EXPECT_EQ(Lines(dialog), (Texts{L"", L"", L""}));
                                     ui::Press(dialog, IDOK);
                                 }},
                                 {IDOK});
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].text, L"Host name is empty");
    EXPECT_EQ(shown[0].caption, L"Error");
    EXPECT_EQ(shown[0].flags, 0U);
    EXPECT_FALSE(FileExists(L"hosts.dat"));
}

TEST(PingDialog, The_keyboard_comes_with_the_field_and_goes_with_the_dialog) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    const auto takeRequests = [&] {
        std::string requests;
        for (const ui::KeyboardRequest& request : frame.keyboard) {
            requests += request.raise ? '+' : '-';
        }
        frame.keyboard.clear();
        return requests;
    };
    OpenByTap(frame, {[&](HWND dialog) {
                  EXPECT_EQ(takeRequests(), "-") << "down when the dialog opens";
                  ui::Press(dialog, IDC_PING_KEYBOARD);
                  EXPECT_EQ(takeRequests(), "++") << "by the button and by the focus it gives";
                  EXPECT_EQ(GetParent(GetFocus()), GetDlgItem(dialog, IDC_PING_HOST));
                  ui::Press(dialog, IDC_PING_KEYBOARD);
                  EXPECT_EQ(takeRequests(), "-");
                  SetFocus(GetDlgItem(dialog, IDC_PING_PING));
                  SetFocus(GetDlgItem(dialog, IDC_PING_HOST));
                  EXPECT_EQ(takeRequests(), "+");
                  ui::Press(dialog, IDOK);
              }});
    EXPECT_EQ(takeRequests(), "-");
    OpenByTap(frame, {[&](HWND dialog) { ui::Press(dialog, IDOK); }});
    EXPECT_EQ(takeRequests(), "-") << "nothing was raised, nothing is lowered at the end";
}

}  // namespace
