// charts/usage_view.h - what the usage dialog shows and how the user's actions change it.
#pragma once

#include "trafficlog/log_reader.h"

enum class UsageStyle { Chart = 1, Table = 2 };

struct UsageView {
    CalendarDate date;
    UsageMode mode;
    UsageStyle style;
    int page;  // of the table, from 0
    TrafficSeries series;
    int slotCount;
    int rowsWithData;  // slots with traffic, slot 0 included
};

inline constexpr int kRowsPerPage = 8;

enum class UsageAction { Nothing, Repaint, OpenExport };

// The view on opening: today, by day, as a chart.
UsageView InitialUsageView();

// Reads the log for the view's date and mode.
void ReadUsage(UsageView& view);

// "Hourly Traffic for Dec 5, 2006" or "Daily Traffic for Dec 2006".
void FormatUsageTitle(const UsageView& view, std::span<wchar_t> title);

// A table goes back to its first page; a chart keeps the page. Nothing when the date is the view's.
UsageAction ChangeDate(UsageView& view, const CalendarDate& date);

// Hours start at the first page; going back to days deliberately keeps it. Nothing when the mode is the view's.
UsageAction ChangeMode(UsageView& view, UsageMode mode);

// A tap in client pixels of the dialog.
UsageAction TapUsage(UsageView& view, int x, int y);
