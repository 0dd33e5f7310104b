// The adapter dialog as a tap opens it, over adapters of every kind.

#include "adapters/adapter_details_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

void OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    ui::RunDialogScript([&] { DispatchTap(frame.window, 130 * scale, 10 * scale); }, steps);
}

// The longest texts that the fields can get.
scripted::Adapter WidestAdapter() {
    return {.name = "{00000004-0000-0000-0000-000000000004}",
            .description = "Wireless & wired adapter of the fifth generation, 5 GHz",
            .hardwareAddress = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC},
            .address = "255.255.255.255",
            .mask = "255.255.255.255",
            .gateway = "255.255.255.255",
            .dnsServers = {"255.255.255.255", "254.255.255.255"},
            .haveWins = true,
            .primaryWins = "255.255.255.255",
            .secondaryWins = "254.255.255.255"};
}

TEST(AdapterDetailsDialog, Shows_every_field_whole_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        scripted::system.adapters = {WidestAdapter()};
        const bool landscape = ui::IsLandscape(screen);
        OpenByTap(frame, {[&](HWND dialog) {
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_TITLE),
                                L"Adapter - Wireless & wired adapter of the fifth generation, 5 GHz");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_MAC), L"DC:DC:DC:DC:DC:DC:DC:DC");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_TYPE), L"ethernet");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_SPEED), L"100 Mbps");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_ADDRESS), L"255.255.255.255");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_MASK), L"255.255.255.255");
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_GATEWAY), L"255.255.255.255");
                      const std::wstring first = L"255.255.255.255";
                      const std::wstring second = L"254.255.255.255";
                      for (const auto& [line, secondLine] : {std::pair(IDC_ADAPTER_DNS, IDC_ADAPTER_SECOND_DNS),
                                                             std::pair(IDC_ADAPTER_WINS, IDC_ADAPTER_SECOND_WINS)}) {
                          EXPECT_EQ(ui::TextOf(dialog, line), landscape ? first + L", " + second : first);
                          EXPECT_EQ(GetDlgItem(dialog, secondLine) == nullptr, landscape);
                          if (!landscape) {
                              EXPECT_EQ(ui::TextOf(dialog, secondLine), second);
                          }
                      }
                      ui::ExpectReadable(dialog, frame.window, landscape ? IDC_ADAPTER_TITLE : 0);
                      ui::SaveScreen(frame, "adapter-details-" + ui::NameOf(screen));
                      ui::Press(dialog, IDOK);
                  }});
    });
}

TEST(AdapterDetailsDialog, Adapters_of_other_kinds) {
    struct Row {
        scripted::Adapter adapter;
        const wchar_t *title, *mac, *type, *speed, *wins;
    };
    const Row rows[] = {
        {{.description = "", .hardwareAddress = {}, .speed = 999999},
         L"Adapter - {00000001-0000-0000-0000-000000000001}",
         L"192.168.7.33",
         L"ethernet",
         L"999999 bps",
         L"N/A"},
        {{.hardwareAddress = {0xFE}, .speed = 1000000},
         L"Adapter - Test adapter",
         L"FE",
         L"ethernet",
         L"1 Mbps",
         L"N/A"},
        {{.countersReadable = false}, L"Adapter - Test adapter", L"02:00:00:00:00:01", L"", L"0 bps", L"N/A"},
        {{.type = 71}, L"No adapter is available.", L"", L"", L"", L""},
    };
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    for (const Row& row : rows) {
        itemState.adapterName[0] = 0;
        scripted::system.adapters = {row.adapter};
        OpenByTap(frame, {[&](HWND dialog) {
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_TITLE), row.title);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_MAC), row.mac);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_TYPE), row.type);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_SPEED), row.speed);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_WINS), row.wins);
                      EXPECT_EQ(ui::TextOf(dialog, IDC_ADAPTER_DNS), L"");
                      ui::ExpectReadable(dialog, frame.window);
                      ui::Press(dialog, IDCANCEL);
                  }});
    }
}

TEST(AdapterDetailsDialog, Stands_centred_one_pixel_larger_than_its_template) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        OpenByTap(frame, {[&](HWND dialog) {
                      RECT area = {};
                      GetWindowRect(dialog, &area);
                      MapWindowPoints(nullptr, frame.window, reinterpret_cast<POINT*>(&area), 2);
                      const LONG width = area.right - area.left;
                      const LONG height = area.bottom - area.top;
                      EXPECT_EQ(area.left, (screen.cx - width) / 2);
                      EXPECT_EQ(area.top, std::max<LONG>((screen.cy - height) / 2, ui::TaskbarHeightOf(screen) + 1));
                      // At double scale the units are stretched, so that the pixels come out doubled.
                      const int scale = ScreenScale();
                      constexpr LONG kGrowthAndBorder = 3;
                      EXPECT_NEAR(width - kGrowthAndBorder, 155 * 6 / 4.0 * scale, 1.0);
                      EXPECT_NEAR(height - kGrowthAndBorder, (ui::IsLandscape(screen) ? 129 : 152) * 13 / 8.0 * scale,
                                  1.0);
                      ui::Press(dialog, IDOK);
                  }});
    });
}

}  // namespace
