// trafficlog/export_writer.h - the logged traffic of a range of dates as a CSV file.
#pragma once

#include "trafficlog/calendar.h"

struct ExportRange {
    CalendarDate from;
    CalendarDate to;
};

// False when the range ends before it begins; one day is a range.
bool IsValidRange(const ExportRange& range);

// Writes the file anew: a header, per month a row for each day with traffic and a row with the month's totals. Fields
// are quoted, lines end with a line feed. A month without a log, and one that stops being readable, counts as what was
// read of it. False when the file cannot be created; failing writes are not reported.
//
// Only the first record read is held against the day on which the range begins (and of a single month, ends); later
// records of days before it count. The last day holds for every record of the last month.
bool ExportTraffic(const wchar_t* path, const ExportRange& range);
