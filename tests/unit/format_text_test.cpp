// FormatText on both builds; under Wine its texts are compared with the platform's own in windows/format_text_test.cpp.
#include "platform/format_text.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatText, Fractions_are_rounded_half_away_from_zero) {
    const std::pair<double, const wchar_t*> rows[] = {
        {0.0, L"0.00 0.0"},   {0.125, L"0.13 0.1"},
        {0.375, L"0.38 0.4"}, {0.995, L"0.99 1.0"},
        {0.999, L"1.00 1.0"}, {5.5, L"5.50 5.5"},
        {2.675, L"2.67 2.7"}, {4294967295.0, L"4294967295.00 4294967295.0"}};
    for (const auto& [value, text] : rows) {
        wchar_t out[64];
        FormatText(out, L"%.2f %.1f", value, value);
        EXPECT_STREQ(out, text);
    }
}

TEST(FormatText, What_does_not_fit_is_cut_and_terminated) {
    wchar_t out[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(FormatText(std::span<wchar_t>(out, 4), L"%s%d", L"ab", 1234), 3U);
    EXPECT_STREQ(out, L"ab1");
    EXPECT_EQ(out[4], 1);
    EXPECT_EQ(FormatText(std::span<wchar_t>(out, 1), L"%d", 5), 0U);
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(FormatText(std::span<wchar_t>(), L"x"), 0U);
}

TEST(FormatText, Text_crosses_between_the_widths_and_goes_on_behind_what_is_there) {
    wchar_t wide[9];
    FormatText(wide, L"<%S|%s>", "a\xE4", L"\u00DFz");
    EXPECT_STREQ(wide, L"<a\u00E4|\u00DFz>");
    AppendText(wide, L"%02X%%", 255);
    EXPECT_STREQ(wide, L"<a\u00E4|\u00DFz>F");
    char narrow[16];
    FormatText(narrow, "\"%S\",\"%s\"\n", L"a\u00E4", "b");
    EXPECT_STREQ(narrow, "\"a\xE4\",\"b\"\n");
}

}  // namespace
