// The ping dialog: its host list, its last host and the soft keyboard.

#include "item/settings.h"
#include "tests/support/host_records.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

Texts Lines(HWND dialog) {
    return TextsOf(dialog, {IDC_PING_STATUS, IDC_PING_ROUND_TRIP, IDC_PING_MAC});
}

// The file's hosts; the list must have as many.
Texts Listed(HWND dialog) {
    const Texts hosts = ListedHosts();
    EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_PING_HOST, CB_GETCOUNT, 0, 0), static_cast<LRESULT>(hosts.size()));
    return hosts;
}

void Ping(HWND dialog, const std::wstring& host) {
    TypeInto(dialog, IDC_PING_HOST, host);
    Press(dialog, IDC_PING_PING);
    EXPECT_EQ(Lines(dialog), (Texts{L"Pinging...", L"", L""}));
    EXPECT_FALSE(IsEnabled(dialog, IDC_PING_PING));
    WaitUntil([&] { return IsEnabled(dialog, IDC_PING_PING); });
}

TEST(PingDialog, Remembers_the_hosts_and_the_last_one) {
    const TodayFrame frame;
    AnswerEchoes("10.0.0.9", 1);
    const std::wstring longest(99, L'x');
    const Texts hosts = {L"10.0.0.1", longest, L"LocalHost"};
    const Texts boxes = RunTool(frame, kPingTool, {IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_PING_PING);  // nothing to ping
        EXPECT_TRUE(IsEnabled(dialog, IDC_PING_PING));
        EXPECT_EQ(Lines(dialog), Texts(3));
        Ping(dialog, L"10.0.0.1");
        EXPECT_EQ(Lines(dialog), (Texts{L"Destination host unreachable.", L"", L""}));
        Ping(dialog, longest + L"more than the field takes");
        EXPECT_EQ(Lines(dialog), (Texts{L"Unknown host: " + longest, L"", L""}));
        Ping(dialog, L"LocalHost");
        Ping(dialog, L"LOCALHOST");
        EXPECT_EQ(Listed(dialog), hosts);
    });
    EXPECT_EQ(boxes, Texts{L"Error: Host name is empty"});
    const Texts asked = RunTool(frame, kPingTool, {IDNO, IDYES, IDYES, IDYES}, [&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_PING_HOST), L"LOCALHOST");
        Press(dialog, IDC_PING_DELETE);  // No: only the field is cleared
        EXPECT_EQ(TextOf(dialog, IDC_PING_HOST), L"");
        EXPECT_EQ(Listed(dialog), hosts);
        for (const std::wstring& host : hosts) {
            TypeInto(dialog, IDC_PING_HOST, host);
            Press(dialog, IDC_PING_DELETE);
        }
        EXPECT_EQ(Listed(dialog), Texts{});
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(asked, Texts(4, L"Question: Are you sure you want to delete this host? ? Yes/No"));
}

TEST(PingDialog, The_keyboard_comes_with_the_field_and_goes_with_the_dialog) {
    const TodayFrame frame;
    RunTool(frame, kPingTool, {}, [&](HWND dialog) {
        EXPECT_EQ(frame.keyboard, "-") << "down when the dialog opens";
        Press(dialog, IDC_PING_KEYBOARD);
        EXPECT_EQ(frame.keyboard, "-++") << "by the button and by the focus it gives";
        EXPECT_EQ(GetParent(GetFocus()), GetDlgItem(dialog, IDC_PING_HOST));
        Press(dialog, IDC_PING_KEYBOARD);
        EXPECT_EQ(frame.keyboard, "-++-");
        SetFocus(GetDlgItem(dialog, IDC_PING_PING));
        SetFocus(GetDlgItem(dialog, IDC_PING_HOST));
        EXPECT_EQ(frame.keyboard, "-++-+");
    });
    EXPECT_EQ(frame.keyboard, "-++-+-");
    RunTool(frame, kPingTool, {});
    EXPECT_EQ(frame.keyboard, "-++-+--") << "nothing was raised, nothing is lowered at the end";
}

}  // namespace
}  // namespace ui
