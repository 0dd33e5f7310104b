// Logs are known by their names alone.

#include "options/log_months.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

namespace {

constexpr size_t kYearDigits = 4;
constexpr size_t kMonthDigits = 2;

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

// The pattern also matches longer extensions on file systems that keep short names; those files are not ours.
bool HasLogExtension(const wchar_t* name) {
    const wchar_t* extension = wcsrchr(name, L'.');
    return extension != nullptr && _wcsicmp(extension, L".log") == 0;
}

int Digits(const wchar_t* text) {
    int number = 0;
    for (; *text != 0; ++text) {
        number = number * 10 + (*text - L'0');
    }
    return number;
}

}  // namespace

int LogMonth::Number() const {
    return Digits(year) * 100 + Digits(month);
}

bool ParseLogName(const wchar_t* name, LogMonth& month) {
    for (size_t i = 0; i < kYearDigits + kMonthDigits; ++i) {
        if (!IsDigit(name[i])) {
            return false;
        }
    }
    month = {};
    memcpy(month.year, name, kYearDigits * sizeof(wchar_t));
    memcpy(month.month, name + kYearDigits, kMonthDigits * sizeof(wchar_t));
    return true;
}

LogSearch::LogSearch() : search(nullptr), found{}, started(false) {
    wchar_t pattern[kPathUnits + 16];
    FormatText(pattern, L"%s\\*.log", itemState.dataFolder);
    search = FindFirstFileW(pattern, &found);
}

LogSearch::~LogSearch() {
    if (Found()) {
        FindClose(search);
    }
}

bool LogSearch::Found() const {
    return platform::IsOpen(search);
}

const wchar_t* NextLogFile(LogSearch& search) {
    while (search.Found()) {
        if (search.started && !FindNextFileW(search.search, &search.found)) {
            return nullptr;
        }
        search.started = true;
        if ((search.found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
            HasLogExtension(search.found.cFileName)) {
            return search.found.cFileName;
        }
    }
    return nullptr;
}

void DeleteAllLogs() {
    LogSearch search;
    while (const wchar_t* name = NextLogFile(search)) {
        wchar_t path[kPathUnits + MAX_PATH];
        FormatText(path, L"%s\\%s", itemState.dataFolder, name);
        DeleteFileW(path);
    }
}

void LogMonthPath(const wchar_t* year, const wchar_t* month, std::span<wchar_t> path) {
    FormatText(path, L"%s\\%s%s.log", itemState.dataFolder, year, month);
}
