// Walks over the arranged chart or table.

#include "charts/usage_paint.h"

#include "charts/chart_paint.h"
#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "platform/icons.h"
#include "platform/scoped_gdi.h"
#include "resources/resource_ids.h"

#include <span>

namespace {

struct HeaderIcon {
    int x;  // logical pixels
    int normal;
    int hiRes;
};

void DrawHeaderIcons(HDC context) {
    constexpr int kTop = 43;
    constexpr HeaderIcon kIcons[] = {{31, IDI_USAGE_TABLE, IDI_USAGE_TABLE_HIRES},
                                     {73, IDI_USAGE_CHART, IDI_USAGE_CHART_HIRES},
                                     {157, IDI_USAGE_EXPORT, IDI_USAGE_EXPORT_HIRES}};
    const int scale = ScreenScale();
    for (const HeaderIcon& icon : kIcons) {
        platform::DrawModuleIcon(context, itemState.instance, scale == 1 ? icon.normal : icon.hiRes, icon.x * scale,
                                 kTop * scale);
    }
}

void PaintChart(HDC context, const UsageView& view) {
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    DrawChartImage(context, chart.background);
    for (const ChartText& label : chart.labels) {
        DrawChartText(context, label, DT_RIGHT);
    }
    for (const ChartBar& bar : std::span(chart.bars).first(chart.barCount)) {
        const HPEN pen = bar.traffic == Traffic::Transmitted ? itemState.redPen : itemState.bluePen;
        for (int column = 0; column < kUsageBarWidth; ++column) {
            DrawChartLine(context, pen, bar.x + column, bar.foot, bar.top);
        }
    }
}

void PaintTable(HDC context, const UsageView& view) {
    UsageTable table;
    ArrangeUsageTable(view, table);
    DrawChartImage(context, table.background);
    DrawChartImage(context, table.arrows);
    for (const ChartText& text : std::span(table.texts).first(table.textCount)) {
        DrawChartText(context, text, 0);
    }
}

}  // namespace

void PaintUsage(HWND dialog, HDC context, const UsageView& view) {
    if (context == nullptr) {
        return;
    }
    DrawHeaderIcons(context);
    const platform::ScopedObject font(CreateChartFont(dialog, context));
    const platform::ScopedSelection selection(context, font.object);
    SetTextColor(context, RGB(0, 0, 0));
    SetBkMode(context, TRANSPARENT);
    if (view.style == UsageStyle::Table) {
        PaintTable(context, view);
    } else {
        PaintChart(context, view);
    }
}
