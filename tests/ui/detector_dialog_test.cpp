// The intruder detector with real worker threads over scripted echoes.

#include <atomic>

#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

// Hosts 2 (safe), 33 (the device), 77 (a stranger) and 200 (unknown to the ARP table) answer; the echo to host 250
// brings nothing, but waits while it is held.
std::atomic<bool> lastEchoHeld;

void UseNetwork(bool holdLastEcho) {
    lastEchoHeld = holdLastEcho;
    scripted::system.adapters = {{.hardwareAddress = {2, 0, 0, 0, 0, 0x33}, .address = "127.0.0.33"}};
    scripted::system.arp = {{inet_addr("127.0.0.2"), {2, 0, 0, 0, 0, 0x02}},
                            {inet_addr("127.0.0.77"), {2, 0, 0, 0, 0, 0x77}}};
    scripted::system.echo = [](uint32_t address, DWORD) -> std::optional<platform::EchoReply> {
        const uint32_t number = ntohl(address) & 0xFF;
        while (number == 250 && lastEchoHeld) {
            Sleep(10);
        }
        if (number != 2 && number != 33 && number != 77 && number != 200) {
            return std::nullopt;
        }
        platform::EchoReply reply = {};
        reply.address = address;
        return reply;
    };
    SafeListAdd({{2, 0, 0, 0, 0, 0x02}});
}

// Rows as "=IP=MAC image".
Texts Hosts(HWND dialog) {
    HWND list = GetDlgItem(dialog, IDC_DETECTOR_HOSTS);
    Texts rows = RowsOf(list, 3);
    const std::vector<int> images = ImagesOf(list);
    for (size_t row = 0; row < rows.size(); ++row) {
        rows[row] += L" " + std::to_wstring(images[row]);
    }
    return rows;
}

const Texts kSorted = {L"=127.0.0.2=02:00:00:00:00:02 1", L"=127.0.0.33=02:00:00:00:00:33 1",
                       L"=127.0.0.77=02:00:00:00:00:77 0", L"=127.0.0.200= 0"};
const Texts kDiscovered(kSorted.rbegin(), kSorted.rend());

LRESULT Progress(HWND dialog) {
    return SendDlgItemMessageW(dialog, IDC_DETECTOR_PROGRESS, PBM_GETPOS, 0, 0);
}

void DetectHosts(HWND dialog) {
    Press(dialog, IDC_DETECTOR_DETECT);
    WaitUntil([&] { return Hosts(dialog) == kDiscovered; });
}

// Hosts that speak no NetBIOS take 5 s.
void WaitForScan() {
    WaitUntil([] { return scanState.table == nullptr; });
}

void TapRow(HWND dialog, int row, int column) {
    HWND list = GetDlgItem(dialog, IDC_DETECTOR_HOSTS);
    RECT area = {};
    ListView_GetSubItemRect(list, row, column, LVIR_BOUNDS, &area);
    Tap(list, area.left + 20, (area.top + area.bottom) / 2);
}

TEST(DetectorDialog, Lists_hosts_as_they_answer_and_orders_them_at_the_end) {
    ForEachScreen([](TodayFrame& frame) {
        UseNetwork(true);
        RunTool(frame, kDetectorTool, {}, [&](HWND dialog) {
            ExpectReadable(dialog, frame);
            EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
            EXPECT_EQ(Progress(dialog), 0);
            DetectHosts(dialog);
            EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
            EXPECT_TRUE(IsEnabled(dialog, IDC_DETECTOR_EXPORT) && IsEnabled(dialog, IDC_DETECTOR_DETECT));
            EXPECT_EQ(Progress(dialog), 99);
            SaveScreen(frame, "detector-during");
            lastEchoHeld = false;
            WaitForScan();
            EXPECT_EQ(Hosts(dialog), kSorted);
            EXPECT_EQ(Progress(dialog), 100);
            EXPECT_EQ(GetCursor(), nullptr);
            SaveScreen(frame, "detector-after");
        });
    });
}

TEST(DetectorDialog, Taps_move_hosts_in_and_out_of_the_safe_list) {
    const TodayFrame frame;
    UseNetwork(false);
    const Texts boxes = RunTool(frame, kDetectorTool, {IDNO, IDYES, IDYES, IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_DETECTOR_DETECT);
        WaitForScan();
        // No, Yes, Yes; nothing is asked about the device itself or a host without hardware address.
        const std::pair<int, wchar_t> taps[] = {{2, L'0'}, {2, L'1'}, {2, L'0'}, {1, L'1'}, {3, L'0'}};
        for (const auto& [row, image] : taps) {
            TapRow(dialog, row, row % 2);
            EXPECT_EQ(Hosts(dialog)[static_cast<size_t>(row)].back(), image);
            EXPECT_EQ(SafeListContains({{2, 0, 0, 0, 0, 0x77}}), Hosts(dialog)[2].back() == L'1');
        }
        Press(dialog, IDC_DETECTOR_EXPORT);
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    ASSERT_EQ(boxes.size(), 4U);
    EXPECT_EQ(boxes[1], L"Question: Add 127.0.0.77 to safe list? ? Yes/No");
    EXPECT_EQ(boxes[2], L"Question: Delete 127.0.0.77 from safe list? ? Yes/No");
    const std::wstring told = L"Infomation: Data output to: ";
    ASSERT_TRUE(boxes[3].starts_with(told));
    const std::wstring path = boxes[3].substr(told.size());
    EXPECT_EQ(std::ranges::count(ReadWholePath(path), '\n'), 5) << "a heading and four hosts";
    DeleteFileW(path.c_str());
}

// Ends the scan while the question is coming up.
HWND scanningDialog;

LRESULT CALLBACK EndScanFirst(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && lastEchoHeld) {
        lastEchoHeld = false;
        while (StatusOf(scanState.table->hosts[249]) == kHostPending) {
            Sleep(10);
        }
        SendMessageW(scanningDialog, WM_TIMER, 14, 0);
        EXPECT_EQ(scanState.table, nullptr);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(DetectorDialog, An_answer_after_the_rows_were_ordered_marks_the_right_row) {
    const TodayFrame frame;
    UseNetwork(true);
    RunTool(frame, kDetectorTool, {IDYES}, [&](HWND dialog) {
        DetectHosts(dialog);
        scanningDialog = dialog;
        HHOOK hook = SetWindowsHookExW(WH_CBT, EndScanFirst, nullptr, GetCurrentThreadId());
        TapRow(dialog, 1, 0);  // host 77, which becomes row 2
        UnhookWindowsHookEx(hook);
        Texts marked = kSorted;
        marked[2].back() = L'1';
        EXPECT_EQ(Hosts(dialog), marked);
    });
}

TEST(DetectorDialog, A_scan_may_be_started_again_or_left_at_any_time) {
    const TodayFrame frame;
    UseNetwork(true);
    const Texts boxes = RunTool(frame, kDetectorTool, {IDOK}, [&](HWND dialog) {
        DetectHosts(dialog);
        Press(dialog, IDC_DETECTOR_DETECT);
        EXPECT_EQ(Hosts(dialog), Texts{});
        EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
        EXPECT_EQ(Progress(dialog), 0);
        WaitUntil([&] { return Hosts(dialog) == kDiscovered; });
        scripted::system.adapters.clear();
        Press(dialog, IDC_DETECTOR_DETECT);
        EXPECT_EQ(Hosts(dialog), kDiscovered) << "without an address the rows stay";
        EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
    });
    EXPECT_EQ(boxes, Texts{L"Error: Cannot get current IP address!"});
    EXPECT_EQ(scanState.table, nullptr);
    lastEchoHeld = false;
}

}  // namespace
}  // namespace ui
