// The intruder detector as a tap opens it, with real worker threads over scripted echoes.

#include "diagnostics/detector_dialog.h"

#include <gtest/gtest.h>

#include <atomic>

#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

using Texts = std::vector<std::wstring>;
constexpr std::chrono::seconds kScanSeconds(15);  // hosts that speak no NetBIOS take 5 s

std::vector<ui::MessageBoxShown> OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps,
                                           const std::vector<int>& answers = {}) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    return ui::RunDialogScript([&] { DispatchTap(frame.window, 190 * scale, 10 * scale); }, steps, answers);
}

// Hosts 2 (safe), 33 (the device), 77 (a stranger) and 200 (unknown to the ARP table) answer; the echo to host 250
// brings nothing, but waits.
std::atomic<bool> lastEchoHeld;

void UseNetwork() {
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

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_DETECTOR_HOSTS);
}

int RowCount(HWND dialog) {
    return static_cast<int>(SendMessageW(List(dialog), LVM_GETITEMCOUNT, 0, 0));
}

int ImageOf(HWND dialog, int row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    SendMessageW(List(dialog), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
}

// Rows as "IP MAC image".
Texts Rows(HWND dialog) {
    Texts rows;
    for (int row = 0; row < RowCount(dialog); ++row) {
        EXPECT_EQ(ui::CellText(List(dialog), row, 0), L"");
        rows.push_back(ui::CellText(List(dialog), row, 1) + L" " + ui::CellText(List(dialog), row, 2) + L" " +
                       std::to_wstring(ImageOf(dialog, row)));
    }
    return rows;
}

const Texts kSorted = {L"127.0.0.2 02:00:00:00:00:02 1", L"127.0.0.33 02:00:00:00:00:33 1",
                       L"127.0.0.77 02:00:00:00:00:77 0", L"127.0.0.200  0"};
const Texts kDiscovered(kSorted.rbegin(), kSorted.rend());

LRESULT Progress(HWND dialog) {
    return SendDlgItemMessageW(dialog, IDC_DETECTOR_PROGRESS, PBM_GETPOS, 0, 0);
}

void WaitForScan() {
    ui::WaitUntil([] { return scanState.table == nullptr; }, kScanSeconds);
}

void TapRow(HWND dialog, int row, int column) {
    RECT area = {};
    area.top = column;
    area.left = LVIR_BOUNDS;
    SendMessageW(List(dialog), LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
    ui::Tap(List(dialog), area.left + 20, (area.top + area.bottom) / 2);
}

TEST(DetectorDialog, Opens_empty_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        OpenByTap(
            frame, {[&](HWND dialog) {
                EXPECT_FALSE(ui::IsEnabled(dialog, IDC_DETECTOR_EXPORT));
                EXPECT_TRUE(ui::IsEnabled(dialog, IDC_DETECTOR_DETECT));
                EXPECT_EQ(Progress(dialog), 0);
                const struct {
                    const wchar_t* heading;
                    int width;
                } columns[] = {{L"Host", 80}, {L"IP", 120}, {L"Mac Address", 160}};
                for (int i = 0; i < 3; ++i) {
                    wchar_t heading[32] = {};
                    LVCOLUMNW column = {};
                    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
                    column.pszText = heading;
                    column.cchTextMax = 32;
                    SendMessageW(List(dialog), LVM_GETCOLUMNW, static_cast<WPARAM>(i),
                                 reinterpret_cast<LPARAM>(&column));
                    EXPECT_STREQ(heading, columns[i].heading);
                    EXPECT_EQ(column.cx, columns[i].width);
                    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_LEFT);
                }
                RECT area = {};
                GetWindowRect(dialog, &area);
                MapWindowPoints(nullptr, frame.window, reinterpret_cast<POINT*>(&area), 2);
                const LONG centred = (screen.cy - (area.bottom - area.top)) / 2;
                EXPECT_EQ(area.left, (screen.cx - (area.right - area.left)) / 2);
                EXPECT_EQ(area.top,
                          ui::IsLandscape(screen) ? std::max<LONG>(centred, ui::TaskbarHeightOf(screen) + 1) : centred);
                // 147 by 124 units of 6 by 13 pixels, and a border.
                const LONG scale = ui::IsHiRes(screen) ? 2 : 1;
                EXPECT_EQ(area.right - area.left, (147 * 6 * scale + 2) / 4 + 2 * GetSystemMetrics(SM_CXBORDER) + 1);
                EXPECT_EQ(area.bottom - area.top, (124 * 13 * scale + 4) / 8 + 2 * GetSystemMetrics(SM_CYBORDER) + 1);
                ui::ExpectReadable(dialog, frame.window);
                ui::Press(dialog, IDOK);
            }});
    });
}

TEST(DetectorDialog, Lists_hosts_as_they_answer_and_orders_them_at_the_end) {
    UseNetwork();
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        lastEchoHeld = true;
        OpenByTap(frame, {[&](HWND dialog) {
                      ui::Press(dialog, IDC_DETECTOR_DETECT);
                      EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
                      ui::WaitUntil([&] { return RowCount(dialog) == 4; }, kScanSeconds);
                      EXPECT_EQ(Rows(dialog), kDiscovered);
                      EXPECT_TRUE(ui::IsEnabled(dialog, IDC_DETECTOR_EXPORT));
                      EXPECT_TRUE(ui::IsEnabled(dialog, IDC_DETECTOR_DETECT));
                      EXPECT_EQ(Progress(dialog), 99);
                      ui::SaveScreen(frame, "detector-during-" + ui::NameOf(screen));
                      lastEchoHeld = false;
                      WaitForScan();
                      EXPECT_EQ(Rows(dialog), kSorted);
                      EXPECT_EQ(Progress(dialog), 100);
                      EXPECT_EQ(GetCursor(), nullptr);
                      ui::ExpectReadable(dialog, frame.window);
                      ui::SaveScreen(frame, "detector-after-" + ui::NameOf(screen));
                      ui::Press(dialog, IDOK);
                  }});
    });
}

TEST(DetectorDialog, Taps_move_hosts_in_and_out_of_the_safe_list) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    UseNetwork();
    const MacAddress stranger = {{2, 0, 0, 0, 0, 0x77}};
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     ui::Press(dialog, IDC_DETECTOR_DETECT);
                                     WaitForScan();
                                     TapRow(dialog, 2, 0);  // No
                                     EXPECT_EQ(Rows(dialog), kSorted);
                                     TapRow(dialog, 2, 1);  // Yes
                                     EXPECT_EQ(ImageOf(dialog, 2), 1);
                                     EXPECT_TRUE(SafeListContains(stranger));
                                     TapRow(dialog, 2, 0);  // Yes
                                     EXPECT_EQ(ImageOf(dialog, 2), 0);
                                     EXPECT_FALSE(SafeListContains(stranger));
                                     TapRow(dialog, 1, 0);  // the device itself
                                     TapRow(dialog, 3, 0);  // has no hardware address
                                     EXPECT_EQ(Rows(dialog), kSorted);
                                     ui::Press(dialog, IDC_DETECTOR_EXPORT);
                                     ui::Press(dialog, IDCANCEL);
                                 }},
                                 {IDNO, IDYES, IDYES, IDOK});
    ASSERT_EQ(shown.size(), 4U);
    const wchar_t* questions[] = {L"Add 127.0.0.77 to safe list?", L"Add 127.0.0.77 to safe list?",
                                  L"Delete 127.0.0.77 from safe list?"};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(shown[i].text, questions[i]);
        EXPECT_EQ(shown[i].caption, L"Question");
        EXPECT_EQ(shown[i].flags, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION));
    }
    const std::wstring told = L"Data output to: ";
    ASSERT_EQ(shown[3].text.substr(0, told.size()), told);
    EXPECT_EQ(shown[3].caption, L"Infomation");
    const std::wstring path = shown[3].text.substr(told.size());
    const Bytes report = ReadWholePath(path);
    EXPECT_EQ(std::string(report.begin(), report.end()),
              "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n"
              "\"\",\"No\",\"127.0.0.2\",\"02:00:00:00:00:02\"\n"
              "\"\",\"No\",\"127.0.0.33\",\"02:00:00:00:00:33\"\n"
              "\"\",\"Yes\",\"127.0.0.77\",\"02:00:00:00:00:77\"\n"
              "\"\",\"Yes\",\"127.0.0.200\",\"\"\n");
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
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    UseNetwork();
    lastEchoHeld = true;
    OpenByTap(frame, {[&](HWND dialog) {
                  ui::Press(dialog, IDC_DETECTOR_DETECT);
                  ui::WaitUntil([&] { return RowCount(dialog) == 4; }, kScanSeconds);
                  EXPECT_EQ(Rows(dialog), kDiscovered);
                  scanningDialog = dialog;
                  HHOOK hook = SetWindowsHookExW(WH_CBT, EndScanFirst, nullptr, GetCurrentThreadId());
                  TapRow(dialog, 1, 0);  // host 77, which becomes row 2
                  UnhookWindowsHookEx(hook);
                  Texts marked = kSorted;
                  marked[2].back() = L'1';
                  EXPECT_EQ(Rows(dialog), marked);
                  ui::Press(dialog, IDOK);
              }},
              {IDYES});
}

TEST(DetectorDialog, A_scan_may_be_started_again_or_left_at_any_time) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    UseNetwork();
    lastEchoHeld = true;
    OpenByTap(frame, {[&](HWND dialog) {
                  ui::Press(dialog, IDC_DETECTOR_DETECT);
                  ui::WaitUntil([&] { return RowCount(dialog) == 4; }, kScanSeconds);
                  ui::Press(dialog, IDC_DETECTOR_DETECT);
                  EXPECT_EQ(RowCount(dialog), 0);
                  EXPECT_FALSE(ui::IsEnabled(dialog, IDC_DETECTOR_EXPORT));
                  EXPECT_EQ(Progress(dialog), 0);
                  ui::Press(dialog, IDOK);
              }});
    EXPECT_EQ(scanState.table, nullptr);
    OpenByTap(frame, {[&](HWND dialog) {
                  EXPECT_EQ(RowCount(dialog), 0);
                  lastEchoHeld = false;
                  ui::Press(dialog, IDC_DETECTOR_DETECT);
                  WaitForScan();
                  EXPECT_EQ(Rows(dialog), kSorted);
                  ui::Press(dialog, IDOK);
              }});
}

TEST(DetectorDialog, Without_an_address_the_rows_stay) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    UseNetwork();
    const auto shown = OpenByTap(frame, {[&](HWND dialog) {
                                     ui::Press(dialog, IDC_DETECTOR_DETECT);
                                     WaitForScan();
                                     scripted::system.adapters.clear();
                                     ui::Press(dialog, IDC_DETECTOR_DETECT);
                                     EXPECT_EQ(Rows(dialog), kSorted);
                                     EXPECT_FALSE(ui::IsEnabled(dialog, IDC_DETECTOR_EXPORT));
                                     EXPECT_EQ(Progress(dialog), 0);
                                     ui::Press(dialog, IDOK);
                                 }},
                                 {IDOK});
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].text, L"Cannot get current IP address!");
    EXPECT_EQ(shown[0].caption, L"Error");
    EXPECT_EQ(shown[0].flags, 0U);
}

}  // namespace
