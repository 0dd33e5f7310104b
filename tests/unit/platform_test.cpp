// Formatted text on every build, what the helper takes for a name, and the texts that a desktop's system gives.
#include "platform/desktop/proxy_list.h"
#include "platform/format_text.h"
#include "platform/helper_protocol.h"

#include <gtest/gtest.h>

#include "tests/support/texts.h"

namespace {

using namespace std::string_view_literals;

TEST(FormatText, Numbers_are_written_as_the_system_writes_them_and_fractions_rounded_half_away_from_zero) {
    wchar_t out[64];
    const auto real = [&](double value) {
        FormatText(out, L"%.2f %.1f", value, value);
        return out;
    };
    EXPECT_EQ(Each(real, {0.0, 0.125, 0.375, 0.995, 0.999, 2.675, 5.5, 4294967295.0}),
              L"0.00 0.0|0.13 0.1|0.38 0.4|0.99 1.0|1.00 1.0|2.67 2.7|5.50 5.5|4294967295.00 4294967295.0");
    const auto integer = [&](int value) {
        FormatText(out, L"%d %04d %02X %X", value, value, value, value);
        return out;
    };
    EXPECT_EQ(Each(integer, {5, -7, -0x7FFFFFFF - 1}),
              L"5 0005 05 5|-7 -007 FFFFFFF9 FFFFFFF9|-2147483648 -2147483648 80000000 80000000");
}

TEST(FormatText, What_does_not_fit_is_cut_and_texts_cross_between_the_widths) {
    wchar_t few[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(FormatText(std::span<wchar_t>(few, 4), L"%s%d", L"ab", 1234), 3U);
    EXPECT_EQ(std::wstring(few, 5), L"ab1\0\1"sv);
    EXPECT_EQ(FormatText(std::span<wchar_t>(), L"x"), 0U);
    wchar_t wide[9];
    FormatText(wide, L"<%S|%s>", "a\xE4", L"\u00DFz");
    AppendText(wide, L"%02X%%", 255);
    EXPECT_STREQ(wide, L"<a\u00E4|\u00DFz>F");
    char narrow[16];
    FormatText(narrow, "\"%S\",\"%s\"\n", L"a\u00E4", "b");
    EXPECT_STREQ(narrow, "\"a\xE4\",\"b\"\n");
}

TEST(HelperProtocol, An_interface_name_is_what_the_kernel_takes) {
    using namespace helper_protocol;
    EXPECT_EQ(Each(IsInterfaceName, {"a"sv, "fifteen-letters"sv, "br-1.2"sv, "\xC3\xA9th"sv}), L"1|1|1|1");
    EXPECT_EQ(Each(IsInterfaceName,
                   {""sv, "."sv, ".."sv, "-r"sv, "a/b"sv, "a b"sv, "a\tb"sv, "a:1"sv, "a\0b"sv, "sixteen--letters"sv}),
              L"0|0|0|0|0|0|0|0|0|0");
}

TEST(ProxyList, The_http_proxy_is_found_or_there_is_none) {
    const auto proxy = [](const std::wstring& list) {
        wchar_t host[platform::kProxyHostUnits] = {};
        WORD port = 0;
        return platform::FindHttpProxy(list.c_str(), host, &port) ? host + (L":" + std::to_wstring(port)) : L"none";
    };
    const std::initializer_list<std::wstring> lists = {L"https=other:1;http=http://10.0.0.1", L"ftp=other:1 second:2",
                                                       L"bad:65536; http://good:65535", L"https=other:1",
                                                       std::wstring(platform::kProxyHostUnits, L'p')};
    EXPECT_EQ(Each(proxy, lists), L"10.0.0.1:80|second:2|good:65535|none|none");
}

}  // namespace
