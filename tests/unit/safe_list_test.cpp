// slist.dat byte for byte, and hardware addresses as text.
#include "diagnostics/safe_list.h"

#include <gtest/gtest.h>

#include "tests/support/data_folder.h"

namespace {

constexpr MacAddress kFirst = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
constexpr MacAddress kSecond = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
constexpr MacAddress kZero = {};

Bytes Entries(std::initializer_list<MacAddress> macs) {
    Bytes bytes;
    for (const MacAddress& mac : macs) {
        bytes.insert(bytes.end(), mac.bytes, mac.bytes + 6);
    }
    return bytes;
}

TEST(SafeList, Entries_stay_in_their_order_until_all_equal_ones_are_removed) {
    EXPECT_FALSE(SafeListRemove(nullptr, kFirst));
    EXPECT_FALSE(FileExists(L"slist.dat"));
    for (const MacAddress& mac : {kFirst, kSecond, kZero, kFirst}) {
        EXPECT_TRUE(SafeListAdd(mac));
    }
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kFirst, kSecond, kZero, kFirst}));
    WriteWholeFile(L"tmpslist", Bytes(100, 7));
    EXPECT_FALSE(SafeListRemove(nullptr, {{1, 2, 3, 4, 5, 6}}));
    EXPECT_TRUE(SafeListRemove(nullptr, kFirst));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kSecond, kZero}));
    EXPECT_TRUE(SafeListRemove(nullptr, kZero) && SafeListRemove(nullptr, kSecond));
    EXPECT_TRUE(FileExists(L"slist.dat") && ReadWholeFile(L"slist.dat").empty());
    EXPECT_FALSE(FileExists(L"tmpslist"));
}

TEST(SafeList, A_cut_tail_is_completed_from_the_entry_before_it) {
    const MacAddress completed = {{0x00, 0x1A, 0xFF, 0xFF, 0xFF, 0xFF}};
    WriteWholeFile(L"slist.dat", Entries({kSecond}) + Bytes{0x00, 0x1A});
    EXPECT_TRUE(SafeListContains(completed));
    EXPECT_TRUE(SafeListRemove(nullptr, kSecond));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({completed}));
}

TEST(MacText, Understands_what_it_wrote_upper_case_alone_and_no_cut_text) {
    wchar_t written[kMacTextUnits];
    MacAddress mac = kZero;
    FormatMacText(kFirst, written);
    EXPECT_STREQ(written, L"00:1A:2B:3C:4D:5E");
    EXPECT_TRUE(ParseMacText(L"00-1A-2B-3C-4D-5E", mac));  // whatever separates
    EXPECT_TRUE(MacEquals(mac, kFirst));
    EXPECT_TRUE(ParseMacText(L"00:1A:2B:3C:4D:5e", mac));
    EXPECT_FALSE(MacEquals(mac, kFirst));
    mac = kSecond;
    for (const wchar_t* text : {L"", L"0", L"00:1A:2B:3C:4D:5"}) {
        EXPECT_FALSE(ParseMacText(text, mac));
        EXPECT_TRUE(MacEquals(mac, kSecond));
    }
}

}  // namespace
