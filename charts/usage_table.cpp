// Lists the slots with traffic, eight to a page.

#include "charts/usage_table.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "resources/resource_ids.h"
#include "trafficlog/byte_count.h"

namespace {

RECT Scaled(int left, int top, int right, int bottom) {
    const int scale = ScreenScale();
    return {left * scale, top * scale, right * scale, bottom * scale};
}

ChartImage ScaledImage(int bitmap, int x, int y, int width, int height) {
    const int scale = ScreenScale();
    return {bitmap, x * scale, y * scale, width * scale, height * scale};
}

void FormatHour(int hour, std::span<wchar_t> text) {
    constexpr int kNoon = 12;
    if (!itemState.amPmFormat) {
        FormatText(text, L"%02d:00", hour);
    } else {
        const int shown = hour % kNoon == 0 ? kNoon : hour % kNoon;
        FormatText(text, L"%02d %s", shown, hour < kNoon ? L"am" : L"pm");
    }
}

void FormatSlot(UsageMode mode, int slot, std::span<wchar_t> text) {
    if (mode == UsageMode::Hourly) {
        FormatHour(slot, text);
    } else {
        FormatText(text, L"%d", slot);
    }
}

ChartText& AddText(UsageTable& table, int left, int top, int right, int bottom) {
    ChartText& text = table.texts[table.textCount++];
    text.area = Scaled(left, top, right, bottom);
    return text;
}

void AddRow(const UsageView& view, int slot, int row, UsageTable& table) {
    const double transmitted = view.series.transmitted[slot];
    const double received = view.series.received[slot];
    const int top = 89 + 14 * row;
    const int bottom = 101 + 14 * row;
    FormatSlot(view.mode, slot, AddText(table, 10, top, 41, bottom).text);
    FormatByteCount(transmitted, AddText(table, 46, top, 89, bottom).text);
    FormatByteCount(received, AddText(table, 94, top, 137, bottom).text);
    FormatByteCount(transmitted + received, AddText(table, 142, top, 198, bottom).text);
}

void AddRows(const UsageView& view, UsageTable& table) {
    const int first = view.page * kRowsPerPage;
    int row = 0;
    for (int slot = 1; slot <= view.slotCount; ++slot) {
        if (view.series.transmitted[slot] <= 0 && view.series.received[slot] <= 0) {
            continue;
        }
        if (row >= first + kRowsPerPage) {
            break;
        }
        if (row >= first) {
            AddRow(view, slot, row - first, table);
        }
        ++row;
    }
}

void AddPageNumber(const UsageView& view, bool portrait, UsageTable& table) {
    ChartText& text = portrait ? AddText(table, 10, 205, 105, 218) : AddText(table, 208, 87, 238, 117);
    if (view.rowsWithData == 0) {
        FormatText(text.text, L"0/0");
    } else {
        FormatText(text.text, L"%d/%d", view.page + 1, (view.rowsWithData + kRowsPerPage - 1) / kRowsPerPage);
    }
}

}  // namespace

void ArrangeUsageTable(const UsageView& view, UsageTable& table) {
    const bool portrait = itemState.screenWidth < itemState.screenHeight;
    const bool hourly = view.mode == UsageMode::Hourly;
    table.background = ScaledImage(hourly ? IDB_TABLE_HOURLY : IDB_TABLE_DAILY, 5, 72, 200, 148);
    table.arrows =
        portrait ? ScaledImage(IDB_PAGE_ARROWS, 148, 204, 47, 13) : ScaledImage(IDB_PAGE_ARROWS, 208, 107, 47, 13);
    table.textCount = 0;
    AddRows(view, table);
    AddPageNumber(view, portrait, table);
}
