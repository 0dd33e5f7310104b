// The card details as a tap opens them.

#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

const std::vector<int> kFields = {
    IDC_WIRELESS_BEACON,         IDC_WIRELESS_ATIM, IDC_WIRELESS_FREQUENCY,    IDC_WIRELESS_CHANNEL,
    IDC_WIRELESS_AUTHENTICATION, IDC_WIRELESS_MODE, IDC_WIRELESS_NETWORK_TYPE, IDC_WIRELESS_WEP};

TEST(WirelessDetailsDialog, Shows_the_widest_settings_whole_on_every_screen) {
    ForEachScreen([](TodayFrame& frame, SIZE) {
        UseWireless();
        scripted::system.wireless.values = {{OID_802_11_CONFIGURATION, NdisFields({32, 65535, 65535, 2484000})},
                                            {OID_802_11_AUTHENTICATION_MODE, NdisFields({2})},
                                            {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
                                            {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
                                            {OID_802_11_WEP_STATUS, NdisFields({3})}};
        RunTool(frame, kCardTool, {}, [&](HWND dialog) {
            EXPECT_EQ(TextsOf(dialog, kFields),
                      (Texts{L"65535 Kusec", L"65535 Kusec", L"2484000 kHz", L"(unknown channel)", L"auto-switch",
                             L"infrastructure mode", L"DSSS", L"key is not supported"}));
            ExpectReadable(dialog, frame.window);
            SaveScreen(frame, "wireless-details");
        });
    });
}

TEST(WirelessDetailsDialog, Stays_empty_without_an_adapter_and_closes_by_ok_alone) {
    const TodayFrame frame(kScreenSizes[0]);
    const Step cancel = [](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); };
    RunTool(frame, kCardTool, {}, cancel,
            [](HWND dialog) { EXPECT_EQ(TextsOf(dialog, kFields), Texts(kFields.size())); });
}

}  // namespace
}  // namespace ui
