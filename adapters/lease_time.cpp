// Days carry a full stop, months do not; the day of the month has no leading zero.

#include "adapters/lease_time.h"

#include "platform/format_text.h"

namespace {

constexpr const wchar_t* kDays[] = {L"Sun.", L"Mon.", L"Tue.", L"Wed.", L"Thu.", L"Fri.", L"Sat."};
constexpr const wchar_t* kMonths[] = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                      L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};

}  // namespace

FILETIME UnixTimeToFileTime(uint32_t seconds) {
    constexpr uint64_t kSecondsFrom1601To1970 = 11644473600;
    constexpr uint64_t kUnitsPerSecond = 10000000;
    const uint64_t units = (seconds + kSecondsFrom1601To1970) * kUnitsPerSecond;
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

void FormatLeaseTime(const SYSTEMTIME& time, std::span<wchar_t> text) {
    const wchar_t* day = kDays[time.wDayOfWeek % std::size(kDays)];
    const wchar_t* month = kMonths[(time.wMonth + 11U) % std::size(kMonths)];
    FormatText(text, L"%s %s %d, %d %02d:%02d:%02d", day, month, time.wDay, time.wYear, time.wHour, time.wMinute,
               time.wSecond);
}
