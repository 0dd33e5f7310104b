// FormatText against the platform's own formatter, for every format string that the product uses.

#include "platform/format_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

#define EXPECT_SAME_TEXT(format, ...)                        \
    {                                                        \
        wchar_t ours[256];                                   \
        wchar_t theirs[256] = {};                            \
        FormatText(ours, format, __VA_ARGS__);               \
        _snwprintf(theirs, 255, format, __VA_ARGS__);        \
        EXPECT_EQ(std::wstring(ours), std::wstring(theirs)); \
    }

TEST(FormatTextOnWindows, Writes_what_the_platform_writes) {
    for (const int number : {0, 1, -1, 7, 42, 999, 10000, 0x7FFFFFFF, -2147483647 - 1}) {
        EXPECT_SAME_TEXT(L"%d %02d %03d %04d", number, number, number, number);
        EXPECT_SAME_TEXT(L"\\%04d%02d.log", number, number);
        EXPECT_SAME_TEXT(L"%02X:%X:0%X", number, number, number);
        EXPECT_SAME_TEXT(L"%ddBm %d Kusec (channel %d) %d%%", number, number, number, number);
    }
    for (uint32_t bytes = 1; bytes < 4000000000U; bytes += bytes / 3 + 1) {
        EXPECT_SAME_TEXT(L"%.2fKB", bytes / 1024.0);
        EXPECT_SAME_TEXT(L"%.2fMB", bytes / 1024.0 / 1024.0);
        EXPECT_SAME_TEXT(L"%.2fGB", bytes * 744.0 / 1024.0 / 1024.0 / 1024.0);
        EXPECT_SAME_TEXT(L"%.1f", bytes * 0.5);
    }
    EXPECT_SAME_TEXT(L"%s %s %d, %d %s:%s:%s", L"Wed.", L"Mar", 15, 2006, L"08", L"05", L"09");
    EXPECT_SAME_TEXT(L"Adapter - %S|%s", "description", L"name");
}

}  // namespace
