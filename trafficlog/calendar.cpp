// Month lengths and names.

#include "trafficlog/calendar.h"

#include "platform/system.h"

namespace {

bool IsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

}  // namespace

CalendarDate Today() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay};
}

int DaysInMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    constexpr int kFebruary = 2;
    return kDays[month - 1] + (month == kFebruary && IsLeapYear(year) ? 1 : 0);
}

const wchar_t* MonthAbbrev(int month) {
    constexpr const wchar_t* kNames[] = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                         L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    return kNames[month - 1];
}
