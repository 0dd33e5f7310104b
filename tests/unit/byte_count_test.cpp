// The text form of byte counts on both sides of every unit's bounds.
#include "trafficlog/byte_count.h"

#include <gtest/gtest.h>

TEST(ByteCount, Each_unit_is_1024_of_the_one_before) {
    const std::pair<double, const wchar_t*> rows[] = {
        {0, L"0"},
        {1, L"0.00KB"},
        {1023, L"1.00KB"},
        {1536, L"1.50KB"},
        {1048575, L"1024.00KB"},
        {1048576, L"1.00MB"},
        {1073741823, L"1024.00MB"},
        {1073741824, L"1.00GB"},
        {2.0 * 744 * 4294967295.0, L"5952.00GB"},
    };
    for (const auto& [bytes, expected] : rows) {
        wchar_t text[kByteCountUnits];
        FormatByteCount(bytes, text);
        EXPECT_STREQ(text, expected);
    }
}
