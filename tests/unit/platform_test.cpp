// Formatted text on every build, and the bounds of the helper's messages.
#include "platform/format_text.h"
#include "platform/helper_protocol.h"

#include <gtest/gtest.h>

#include "tests/support/texts.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(FormatText, Numbers_are_written_as_the_system_writes_them_and_fractions_rounded_half_away_from_zero) {
    const auto real = [](double value) {
        wchar_t out[64];
        FormatText(out, L"%.2f %.1f", value, value);
        return std::wstring(out);
    };
    EXPECT_EQ(Each(real, {0.0, 0.125, 0.375, 0.995, 0.999, 2.675, 5.5, 4294967295.0}),
              L"0.00 0.0|0.13 0.1|0.38 0.4|0.99 1.0|1.00 1.0|2.67 2.7|5.50 5.5|4294967295.00 4294967295.0");
    const auto integer = [](int value) {
        wchar_t out[64];
        FormatText(out, L"%d %02d %04d %02X %X", value, value, value, value, value);
        return std::wstring(out);
    };
    EXPECT_EQ(Each(integer, {-7, 0x7FFFFFFF, -0x7FFFFFFF - 1}),
              L"-7 -7 -007 FFFFFFF9 FFFFFFF9|2147483647 2147483647 2147483647 7FFFFFFF 7FFFFFFF|"
              L"-2147483648 -2147483648 -2147483648 80000000 80000000");
}

TEST(FormatText, What_does_not_fit_is_cut_and_texts_cross_between_the_widths) {
    wchar_t few[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(FormatText(std::span<wchar_t>(few, 4), L"%s%d", L"ab", 1234), 3U);
    EXPECT_STREQ(few, L"ab1");
    EXPECT_EQ(few[4], 1);
    EXPECT_EQ(FormatText(std::span<wchar_t>(few, 1), L"%d", 5), 0U);
    EXPECT_EQ(few[0], 0);
    EXPECT_EQ(FormatText(std::span<wchar_t>(), L"x"), 0U);
    wchar_t wide[9];
    FormatText(wide, L"<%S|%s>", "a\xE4", L"\u00DFz");
    AppendText(wide, L"%02X%%", 255);
    EXPECT_STREQ(wide, L"<a\u00E4|\u00DFz>F");
    char narrow[16];
    FormatText(narrow, "\"%S\",\"%s\"\n", L"a\u00E4", "b");
    EXPECT_STREQ(narrow, "\"a\xE4\",\"b\"\n");
}

using namespace helper_protocol;

TEST(HelperProtocol, An_interface_name_is_what_the_kernel_takes_and_never_an_option) {
    for (const std::string_view name : {"a", "fifteen-letters", "br-1.2", "\xC3\xA9th"}) {
        EXPECT_TRUE(IsInterfaceName(name)) << name;
    }
    const std::string_view refused[] = {
        "", ".", "..", "-r", "a/b", "a b", "a\tb", "a:1", "sixteen--letters", std::string_view("a\0b", 3)};
    for (const std::string_view name : refused) {
        Bytes message(100);
        const size_t bytes = EncodeRequest(message, 7, {RequestKind::kRelease, name, 0, 0, {}});
        Request request;
        EXPECT_FALSE(IsInterfaceName(name) ||
                     DecodeRequest(2, std::span(message).subspan(kHeaderBytes, bytes - kHeaderBytes), request))
            << name;
    }
}

TEST(HelperProtocol, What_does_not_fit_is_neither_written_nor_read) {
    Bytes space(kMaxMessageBytes + 100);
    const Bytes value(kMaxBodyBytes, 1);
    EXPECT_EQ(EncodeValueAnswer(space, {0, 5, 1}, value), 0u);
    EXPECT_EQ(EncodeBindingAnswer(space, {0, 4, 1}, "wlan0", std::string(256, 'x')), 0u);
    EXPECT_EQ(EncodeValueAnswer(space, {0, 5, 1}, std::span(value).first(value.size() - 4)), kMaxMessageBytes);
    MessageHeader header;
    EXPECT_TRUE(DecodeHeader(space, header));
    EXPECT_FALSE(DecodeHeader(std::span(space).first(kHeaderBytes - 1), header));
    for (const size_t field : {0, 4}) {  // too long a body, another version
        ++space[field];
        EXPECT_FALSE(DecodeHeader(space, header)) << field;
        --space[field];
    }
}

}  // namespace
