// tests/ui/ui_test.h - what every UI test needs: a frame as screen, the strip's tools, and steps through their dialogs.
#pragma once

#include "item/item_state.h"
#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace ui {

// Where the strip is tapped for a tool, in logical pixels.
enum ToolPlace {
    kLiveGraphTool = 10,
    kSignalTool = 55,
    kUsageTool = 75,
    kDhcpTool = 95,
    kPingTool = 110,
    kAdapterTool = 130,
    kScannerTool = 150,
    kCardTool = 170,
    kDetectorTool = 190
};

// Opens a tool by a tap and drives it; see RunDialogScript.
template <class... Steps>
Boxes RunTool(const TodayFrame& frame, ToolPlace place, const std::vector<int>& answers, const Steps&... steps) {
    CreatePens();
    const auto scale = static_cast<uint32_t>(ScreenScale());
    return RunDialogScript([&] { DispatchTap(frame.window, place * scale, 10 * scale); }, {steps...}, answers);
}

inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

}  // namespace ui
