// The card details as a tap opens them.

#include "wireless/card_details_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

void OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    ui::RunDialogScript([&] { DispatchTap(frame.window, 170 * scale, 10 * scale); }, steps);
}

struct Field {
    int id;
    const wchar_t* text;
};

// The widest text of every field.
constexpr Field kFields[] = {
    {IDC_WIRELESS_BEACON, L"65535 Kusec"},         {IDC_WIRELESS_ATIM, L"65535 Kusec"},
    {IDC_WIRELESS_FREQUENCY, L"2484000 kHz"},      {IDC_WIRELESS_CHANNEL, L"(unknown channel)"},
    {IDC_WIRELESS_AUTHENTICATION, L"auto-switch"}, {IDC_WIRELESS_MODE, L"infrastructure mode"},
    {IDC_WIRELESS_NETWORK_TYPE, L"DSSS"},          {IDC_WIRELESS_WEP, L"key is not supported"}};

TEST(WirelessDetailsDialog, Shows_every_setting_whole_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        UseWireless();
        scripted::system.wireless.values = {{OID_802_11_CONFIGURATION, NdisFields({32, 65535, 65535, 2484000})},
                                            {OID_802_11_AUTHENTICATION_MODE, NdisFields({2})},
                                            {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
                                            {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
                                            {OID_802_11_WEP_STATUS, NdisFields({3})}};
        OpenByTap(frame, {[&](HWND dialog) {
                      for (const Field& field : kFields) {
                          EXPECT_EQ(ui::TextOf(dialog, field.id), field.text);
                      }
                      ui::ExpectReadable(dialog, frame.window);
                      ui::SaveScreen(frame, "wireless-details-" + ui::NameOf(screen));
                      ui::Press(dialog, IDOK);
                  }});
    });
}

TEST(WirelessDetailsDialog, Stays_empty_without_an_adapter_and_closes_by_ok_alone) {
    ui::TodayFrame frame({240, 320});
    for (const bool present : {false, true}) {
        scripted::system.wireless.present = present;  // without a binding
        OpenByTap(frame, {[](HWND dialog) {
                              for (const Field& field : kFields) {
                                  EXPECT_EQ(ui::TextOf(dialog, field.id), L"");
                              }
                              SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                          },
                          [](HWND dialog) { ui::Press(dialog, IDOK); }});
    }
}

}  // namespace
