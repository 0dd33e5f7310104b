// trafficlog/calendar.h - calendar dates as the logs, charts and exports share them.
#pragma once

struct CalendarDate {
    int year;
    int month;  // 1 to 12
    int day;    // 1 to 31

    bool operator==(const CalendarDate&) const = default;
};

// Today, local time.
CalendarDate Today();

// 28 to 31 by the Gregorian rule.
int DaysInMonth(int year, int month);

// "Jan" to "Dec", whatever the system's language is.
const wchar_t* MonthAbbrev(int month);
