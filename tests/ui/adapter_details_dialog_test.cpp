// The adapter dialog over the longest texts, and without an adapter.

#include "tests/ui/ui_test.h"

namespace ui {
namespace {

// The longest texts that the fields can get.
scripted::Adapter WidestAdapter() {
    return {.description = "Wireless & wired adapter of the fifth generation, 5 GHz",
            .hardwareAddress = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC},
            .address = "255.255.255.255",
            .mask = "255.255.255.254",
            .gateway = "255.255.255.253",
            .dnsServers = {"255.255.255.255", "254.255.255.255"},
            .haveWins = true,
            .primaryWins = "253.255.255.255",
            .secondaryWins = "252.255.255.255"};
}

TEST(AdapterDetailsDialog, Shows_every_field_whole_on_every_screen) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        scripted::system.adapters = {WidestAdapter()};
        const bool landscape = IsLandscape(screen);
        RunTool(frame, kAdapterTool, {}, [&](HWND dialog) {
            EXPECT_EQ(
                TextsOf(dialog, {IDC_ADAPTER_TITLE, IDC_ADAPTER_MAC, IDC_ADAPTER_TYPE, IDC_ADAPTER_SPEED,
                                 IDC_ADAPTER_ADDRESS, IDC_ADAPTER_MASK, IDC_ADAPTER_GATEWAY}),
                (Texts{L"Adapter - Wireless & wired adapter of the fifth generation, 5 GHz", L"DC:DC:DC:DC:DC:DC:DC:DC",
                       L"ethernet", L"100 Mbps", L"255.255.255.255", L"255.255.255.254", L"255.255.255.253"}));
            if (landscape) {
                EXPECT_EQ(TextsOf(dialog, {IDC_ADAPTER_DNS, IDC_ADAPTER_WINS}),
                          (Texts{L"255.255.255.255, 254.255.255.255", L"253.255.255.255, 252.255.255.255"}));
            } else {
                EXPECT_EQ(TextsOf(dialog,
                                  {IDC_ADAPTER_DNS, IDC_ADAPTER_SECOND_DNS, IDC_ADAPTER_WINS, IDC_ADAPTER_SECOND_WINS}),
                          (Texts{L"255.255.255.255", L"254.255.255.255", L"253.255.255.255", L"252.255.255.255"}));
            }
            ExpectReadable(dialog, frame.window, landscape ? IDC_ADAPTER_TITLE : 0);
            SaveScreen(frame, "adapter-details");
        });
    });
}

}  // namespace
}  // namespace ui
