// The Today host's own rules: its command line and its keyboard.

#include <gtest/gtest.h>

#include "host/command_line.h"
#include "host/keyboard_keys.h"

namespace {

TEST(HostCommandLine, Reads_what_no_system_test_uses) {
    HostOptions options;
    std::wstring error;
    ASSERT_TRUE(ParseCommandLine({L"--reload", L"3", L"--help"}, options, error));
    EXPECT_EQ(options.reloads, 3);
    EXPECT_TRUE(options.help);
}

TEST(HostCommandLine, Refuses_what_it_does_not_understand) {
    std::vector<std::vector<std::wstring>> wrong = {{L"--sized"}, {L"extra"}, {L"--size"}, {L"--screenshot"}};
    for (const wchar_t* size : {L"240", L"240x", L"2x2", L"1x320", L"240x320x1", L"2001x9"}) {
        wrong.push_back({L"--size", size});
    }
    for (const wchar_t* seconds : {L"ten", L"-1", L"", L"9999999999999"}) {
        wrong.push_back({L"--seconds", seconds});
    }
    wrong.insert(wrong.end(), {{L"--tap", L"1;2"}, {L"--tap", L"-1,2"}, {L"--reload", L"0"}, {L"--library", L""}});
    for (const std::vector<std::wstring>& arguments : wrong) {
        HostOptions options;
        std::wstring error;
        EXPECT_FALSE(ParseCommandLine(arguments, options, error)) << testing::PrintToString(arguments);
        EXPECT_FALSE(error.empty());
    }
}

TEST(HostKeyboard, Every_pixel_belongs_to_one_key_and_every_host_name_can_be_typed) {
    for (const SIZE size : {SIZE{240, 80}, SIZE{320, 80}, SIZE{640, 160}}) {
        std::wstring characters;
        long pixels = 0;
        for (size_t row = 0; row < KeyboardRows().size(); ++row) {
            for (size_t key = 0; key < KeyboardRows()[row].size(); ++key) {
                const RECT area = KeyArea(size, row, key);
                pixels += (area.right - area.left) * (area.bottom - area.top);
                EXPECT_EQ(FindKey(size, {area.left, area.top}), &KeyboardRows()[row][key]);
                EXPECT_EQ(FindKey(size, {area.right - 1, area.bottom - 1}), &KeyboardRows()[row][key]);
                characters += KeyboardRows()[row][key].normal;
            }
        }
        EXPECT_EQ(pixels, size.cx * size.cy);
        for (const wchar_t needed : std::wstring(L"abcdefghijklmnopqrstuvwxyz0123456789.-_\\:/ \b")) {
            EXPECT_NE(characters.find(needed), std::wstring::npos) << static_cast<int>(needed);
        }
    }
    EXPECT_EQ(FindKey({240, 80}, {240, 10}), nullptr);
    EXPECT_EQ(FindKey({240, 80}, {10, -1}), nullptr);
}

}  // namespace
