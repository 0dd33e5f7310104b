// options/log_months.h - the monthly logs in the data folder: finding and deleting them.
#pragma once

#include "platform/system.h"

#include <span>

// A month as its file's name gives it.
struct LogMonth {
    wchar_t year[5];
    wchar_t month[3];

    int Number() const;  // year * 100 + month
};

// The month of a file name that begins with four digits and two more; what follows does not matter. False for others.
bool ParseLogName(const wchar_t* name, LogMonth& month);

// A walk over the files "*.log" in the data folder, folders left out.
struct LogSearch {
    HANDLE search;
    WIN32_FIND_DATAW found;
    bool started;

    LogSearch();
    LogSearch(const LogSearch&) = delete;
    LogSearch& operator=(const LogSearch&) = delete;
    ~LogSearch();

    bool Found() const;  // false when nothing matches at all
};

// The next file's name, or null at the end.
const wchar_t* NextLogFile(LogSearch& search);

// Deletes what cannot be told from a log, folders left out. Failures are silent.
void DeleteAllLogs();

// Path of the file that a month's two texts name.
void LogMonthPath(const wchar_t* year, const wchar_t* month, std::span<wchar_t> path);
