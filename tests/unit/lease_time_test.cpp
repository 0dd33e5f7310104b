// Lease times as text, from the first to the last second that 32 bits hold.
#include "adapters/lease_time.h"

#include <gtest/gtest.h>

TEST(LeaseTime, Unix_seconds_as_calendar_text) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {
        {0, L"Thu. Jan 1, 1970 00:00:00"},           {1142409909, L"Wed. Mar 15, 2006 08:05:09"},
        {951782400, L"Tue. Feb 29, 2000 00:00:00"},  {1167523199, L"Sat. Dec 30, 2006 23:59:59"},
        {1214697600, L"Sun. Jun 29, 2008 00:00:00"}, {0x7FFFFFFF, L"Tue. Jan 19, 2038 03:14:07"},
        {0x80000000, L"Tue. Jan 19, 2038 03:14:08"}, {0xFFFFFFFF, L"Sun. Feb 7, 2106 06:28:15"},
    };
    for (const auto& [seconds, text] : rows) {
        const FILETIME fileTime = UnixTimeToFileTime(seconds);
        SYSTEMTIME time = {};
        ASSERT_TRUE(FileTimeToSystemTime(&fileTime, &time));
        wchar_t out[kLeaseTimeUnits];
        FormatLeaseTime(time, out);
        EXPECT_STREQ(out, text);
    }
}
