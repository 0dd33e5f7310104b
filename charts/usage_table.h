// charts/usage_table.h - the usage view arranged as a page of a table.
#pragma once

#include "charts/chart_marks.h"
#include "charts/usage_view.h"

struct UsageTable {
    ChartImage background;
    ChartImage arrows;
    std::array<ChartText, kRowsPerPage * 4 + 1> texts;  // rows from the top, each from the left; then the page number
    int textCount;
};

// Slot 0 is never listed, so that in a day's table the hour 0 counts towards the pages without having a row.
void ArrangeUsageTable(const UsageView& view, UsageTable& table);
