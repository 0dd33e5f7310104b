// The usage dialog's state. Pages turn in either style, seen only in the table.

#include "charts/usage_view.h"

#include "item/item_state.h"
#include "platform/format_text.h"

namespace {

struct Region {
    int left;  // logical pixels, bounds inclusive
    int right;
    int top;
    int bottom;
};

constexpr Region kTableButton = {31, 56, 43, 68};
constexpr Region kChartButton = {73, 98, 43, 68};
constexpr Region kExportButton = {157, 182, 43, 68};
constexpr Region kPortraitPrevious = {176, 193, 206, 215};
constexpr Region kPortraitNext = {150, 167, 206, 215};
constexpr Region kLandscapePrevious = {231, 255, 107, 120};
constexpr Region kLandscapeNext = {208, 231, 107, 120};  // tested behind the previous one, which has column 231

bool IsInside(const Region& region, int x, int y) {
    const int scale = ScreenScale();
    return x >= region.left * scale && x <= region.right * scale && y >= region.top * scale &&
           y <= region.bottom * scale;
}

UsageAction ShowTable(UsageView& view) {
    if (view.style == UsageStyle::Table) {
        return UsageAction::Nothing;
    }
    view.style = UsageStyle::Table;
    view.page = 0;
    return UsageAction::Repaint;
}

UsageAction ShowChart(UsageView& view) {
    if (view.style == UsageStyle::Chart) {
        return UsageAction::Nothing;
    }
    view.style = UsageStyle::Chart;
    return UsageAction::Repaint;
}

UsageAction ShowPreviousPage(UsageView& view) {
    if (view.page < 1) {
        return UsageAction::Nothing;
    }
    --view.page;
    return UsageAction::Repaint;
}

UsageAction ShowNextPage(UsageView& view) {
    if (view.rowsWithData <= (view.page + 1) * kRowsPerPage) {
        return UsageAction::Nothing;
    }
    ++view.page;
    return UsageAction::Repaint;
}

}  // namespace

UsageView InitialUsageView() {
    UsageView view = {};
    view.date = Today();
    view.mode = UsageMode::Daily;
    view.style = UsageStyle::Chart;
    return view;
}

void ReadUsage(UsageView& view) {
    view.slotCount = ReadTrafficLog(view.mode, view.date, view.series);
    view.rowsWithData = 0;
    for (int slot = 0; slot <= view.slotCount; ++slot) {
        if (view.series.transmitted[slot] > 0 || view.series.received[slot] > 0) {
            ++view.rowsWithData;
        }
    }
}

void FormatUsageTitle(const UsageView& view, std::span<wchar_t> title) {
    const wchar_t* month = MonthAbbrev(view.date.month);
    if (view.mode == UsageMode::Hourly) {
        FormatText(title, L"Hourly Traffic for %s %d, %d", month, view.date.day, view.date.year);
    } else {
        FormatText(title, L"Daily Traffic for %s %d", month, view.date.year);
    }
}

UsageAction ChangeDate(UsageView& view, const CalendarDate& date) {
    if (date == view.date) {
        return UsageAction::Nothing;
    }
    view.date = date;
    if (view.style == UsageStyle::Table) {
        view.page = 0;
    }
    return UsageAction::Repaint;
}

UsageAction ChangeMode(UsageView& view, UsageMode mode) {
    if (mode == view.mode) {
        return UsageAction::Nothing;
    }
    view.mode = mode;
    if (mode == UsageMode::Hourly) {
        view.page = 0;
    }
    return UsageAction::Repaint;
}

UsageAction TapUsage(UsageView& view, int x, int y) {
    const bool landscape = itemState.screenWidth >= itemState.screenHeight;
    if (IsInside(kTableButton, x, y)) {
        return ShowTable(view);
    }
    if (IsInside(kChartButton, x, y)) {
        return ShowChart(view);
    }
    if (IsInside(kExportButton, x, y)) {
        return UsageAction::OpenExport;
    }
    if (IsInside(landscape ? kLandscapePrevious : kPortraitPrevious, x, y)) {
        return ShowPreviousPage(view);
    }
    if (IsInside(landscape ? kLandscapeNext : kPortraitNext, x, y)) {
        return ShowNextPage(view);
    }
    return UsageAction::Nothing;
}
