// The scanner over access points that come, change, vanish and return.

#include "wireless/scanner_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

constexpr UINT_PTR kTimer = 7;

void OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    ui::RunDialogScript([&] { DispatchTap(frame.window, 150 * scale, 10 * scale); }, steps);
}

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_SCANNER_LIST);
}

int RowCount(HWND dialog) {
    return ListView_GetItemCount(List(dialog));
}

int ImageOf(HWND dialog, int row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    SendMessageW(List(dialog), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
}

std::vector<int> Images(HWND dialog) {
    std::vector<int> images;
    for (int row = 0; row < RowCount(dialog); ++row) {
        images.push_back(ImageOf(dialog, row));
    }
    return images;
}

void TapRow(HWND dialog, int row) {
    RECT area = {};
    ListView_GetItemRect(List(dialog), row, &area, LVIR_BOUNDS);
    // On the name: the whole row takes taps.
    ui::Tap(List(dialog), area.left + 45 * ScreenScale(), (area.top + area.bottom) / 2);
}

void NextCycle(HWND dialog, const AccessPointListBuilder& list) {
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    SendMessageW(dialog, WM_TIMER, kTimer, 0);
}

void Associate() {
    scripted::system.wireless.values[OID_802_11_SSID] = SsidValue("Office & Workshop, second floor", 31);
    scripted::system.wireless.values[OID_802_11_BSSID] = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC};
}

std::wstring AnsiText(const std::string& bytes) {
    wchar_t text[64] = {};
    MultiByteToWideChar(CP_ACP, 0, bytes.c_str(), -1, text, 64);
    return text;
}

TEST(ScannerDialog, Shows_levels_names_and_the_tapped_rows_details_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        UseWireless();
        Associate();
        const std::string longest(32, 'W');
        AccessPointListBuilder list;
        list.Add("Workshop", 1, -66, 1).Add("Workshop", 2, -70).Add("", 3, -80, 1).Add(longest, 4, -81, 1);
        list.Add("Caf\xE9", 5, -200, 0, 2484000).Add("Harbour", 6, -67, 1).Add("Guest", 7, -65).Add("x", 8, -90, 1);
        std::vector<uint8_t>& value = scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
        constexpr uint8_t kMostRates[] = {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C};
        std::copy(std::begin(kMostRates), std::end(kMostRates), value.begin() + 4 + 104 + 96);
        OpenByTap(
            frame,
            {[&](HWND dialog) {
                 EXPECT_EQ(Images(dialog), (std::vector<int>{9, 6, 5, 3, 0, 7, 8, 1}));
                 const std::wstring names[] = {L"Workshop", L"Workshop", L"", AnsiText(longest), AnsiText("Caf\xE9")};
                 for (int row = 0; row < 5; ++row) {
                     EXPECT_EQ(ui::CellText(List(dialog), row, 1), names[row]);
                     EXPECT_EQ(ui::CellText(List(dialog), row, 0), L"");
                 }
                 EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SSID), L"Office & Workshop, second floor");
                 EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_BSSID), L"DC:DC:DC:DC:DC:DC");
                 EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"") << "nothing is selected";
                 TapRow(dialog, 1);
             },
             [&](HWND dialog) {
                 const std::pair<int, const wchar_t*> texts[] = {{IDC_SCANNER_SIGNAL, L"-70dBm"},
                                                                 {IDC_SCANNER_WEP, L"disabled"},
                                                                 {IDC_SCANNER_ENTRY_BSSID, L"02:00:00:00:00:02"},
                                                                 {IDC_SCANNER_CHANNEL, L"6"},
                                                                 {IDC_SCANNER_MODE, L"infrastructure"},
                                                                 {IDC_SCANNER_TYPE, L"FDM24"},
                                                                 {IDC_SCANNER_RATES, L"6,9,12,18,24,36,48,54 Mbps"}};
                 for (const auto& [id, text] : texts) {
                     EXPECT_EQ(ui::TextOf(dialog, id), text);
                 }
                 const DWORD style = static_cast<DWORD>(GetWindowLongW(List(dialog), GWL_STYLE));
                 EXPECT_EQ(style & WS_HSCROLL, 0u) << "the columns fit";
                 if (screen.cx != screen.cy) {  // the landscape template is wider than a square screen
                     ui::ExpectReadable(dialog, frame.window, IDC_SCANNER_SSID);
                 }
                 ui::SaveScreen(frame, "scanner-" + ui::NameOf(screen));
                 ui::Press(dialog, IDOK);
             }});
    });
}

TEST(ScannerDialog, Keeps_rows_selection_and_details_through_the_cycles) {
    ui::TodayFrame frame({240, 320});
    UseWireless();
    const auto both = AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85, 1);
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = both.Value();
    OpenByTap(frame, {[&](HWND dialog) { TapRow(dialog, 0); },
                      [&](HWND dialog) {
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"-60dBm");
                          // The first one begins to encrypt, the second vanishes, a third comes.
                          NextCycle(dialog, AccessPointListBuilder().Add("new", 3, -69).Add("home", 1, -75, 1));
                          EXPECT_EQ(Images(dialog), (std::vector<int>{5, 1, 6}));
                          EXPECT_EQ(ui::CellText(List(dialog), 2, 1), L"new");
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"-75dBm");
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_WEP), L"enabled");
                          NextCycle(dialog, AccessPointListBuilder());
                          EXPECT_EQ(Images(dialog), (std::vector<int>{1, 1, 0}));
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"-200dBm");
                          NextCycle(dialog, both);
                          EXPECT_EQ(Images(dialog), (std::vector<int>{8, 3, 0}));
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"-60dBm");
                          EXPECT_EQ(ListView_GetNextItem(List(dialog), -1, LVNI_SELECTED), 0);
                          scripted::system.wireless.requests.clear();
                          SendMessageW(dialog, WM_TIMER, 99, 0);
                          EXPECT_TRUE(scripted::system.wireless.requests.empty()) << "another timer's message";
                          SendMessageW(dialog, WM_TIMER, kTimer, 0);
                          EXPECT_EQ(scripted::system.wireless.requests,
                                    (std::vector<uint32_t>{OID_802_11_BSSID_LIST_SCAN, OID_802_11_SSID,
                                                           OID_802_11_BSSID, OID_802_11_BSSID_LIST}));
                          TapRow(dialog, 2);
                      },
                      [&](HWND dialog) {
                          EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_ENTRY_BSSID), L"02:00:00:00:00:03");
                          SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                      }});
}

TEST(ScannerDialog, Shows_the_association_until_it_ends) {
    ui::TodayFrame frame({240, 320});
    UseWireless();
    Associate();
    OpenByTap(frame, {[](HWND dialog) {
                  scripted::system.wireless.values.erase(OID_802_11_BSSID);
                  SendMessageW(dialog, WM_TIMER, kTimer, 0);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SSID), L"");
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_BSSID), L"DC:DC:DC:DC:DC:DC") << "the last one known";
                  ui::Press(dialog, IDOK);
              }});
}

TEST(ScannerDialog, A_device_that_vanishes_stops_the_timer_for_good_and_leaves_the_content) {
    ui::TodayFrame frame({240, 320});
    for (const bool opens : {false, true}) {
        UseWireless();
        Associate();
        const auto list = AccessPointListBuilder().Add("home", 1, -60);
        scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
        OpenByTap(frame, {[&](HWND dialog) {
                      EXPECT_TRUE(KillTimer(dialog, kTimer)) << "the timer runs";
                      scripted::system.wireless.present = opens;
                      scripted::system.wireless.bindingName = L"";
                      SendMessageW(dialog, WM_TIMER, kTimer, 0);
                      EXPECT_FALSE(KillTimer(dialog, kTimer));
                      EXPECT_EQ(Images(dialog), std::vector<int>{8});
                      EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_BSSID), L"DC:DC:DC:DC:DC:DC");
                      ui::Press(dialog, IDOK);
                  }});
    }
    scripted::system.wireless.present = false;
    OpenByTap(frame, {[](HWND dialog) {
                  EXPECT_FALSE(KillTimer(dialog, kTimer)) << "never started";
                  EXPECT_EQ(RowCount(dialog), 0) << "each opening begins anew";
                  ui::Press(dialog, IDOK);
              }});
}

TEST(ScannerDialog, Has_room_for_48_and_ignores_lists_that_are_too_long) {
    ui::TodayFrame frame({240, 320});
    UseWireless();
    OpenByTap(frame, {[](HWND dialog) {
                  constexpr int kPerList = 9;  // as many as fit the request
                  for (int first = 0; first < 54; first += kPerList) {
                      AccessPointListBuilder list;
                      for (int i = first; i < first + kPerList; ++i) {
                          list.Add(std::to_string(i), static_cast<uint8_t>(i), -50);
                      }
                      NextCycle(dialog, list);
                  }
                  EXPECT_EQ(RowCount(dialog), 48);
                  EXPECT_EQ(ui::CellText(List(dialog), 47, 1), L"47");
                  EXPECT_EQ(ImageOf(dialog, 47), 8);
                  AccessPointListBuilder tooLong;
                  for (int i = 0; i < kPerList + 1; ++i) {
                      tooLong.Add("n", static_cast<uint8_t>(i), -50);
                  }
                  NextCycle(dialog, tooLong);
                  EXPECT_EQ(Images(dialog), std::vector<int>(48, 0)) << "the request fails as a whole";
                  ui::Press(dialog, IDOK);
              }});
}

TEST(ScannerDialog, A_drop_down_of_access_points_shows_the_level_in_words) {
    ui::TodayFrame frame({240, 320});
    UseWireless();
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] =
        AccessPointListBuilder().Add("a", 1, -60).Add("b", 2, -70, 1).Value();
    OpenByTap(frame, {[](HWND dialog) {
                  HWND combo =
                      CreateWindowExW(0, L"ComboBox", nullptr, WS_CHILD | CBS_DROPDOWNLIST, 0, 0, 50, 50, dialog,
                                      reinterpret_cast<HMENU>(IDC_SCANNER_SELECTION), itemState.instance, nullptr);
                  for (const wchar_t* entry : {L"a", L"b", L"unknown"}) {
                      SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
                  }
                  ui::ChooseEntry(dialog, IDC_SCANNER_SELECTION, 1);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_SIGNAL), L"good (-70dBm)");
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_WEP), L"Enabled");
                  ui::ChooseEntry(dialog, IDC_SCANNER_SELECTION, 2);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SCANNER_ENTRY_BSSID), L"02:00:00:00:00:02") << "beyond the table";
                  ui::Press(dialog, IDOK);
              }});
}

}  // namespace
