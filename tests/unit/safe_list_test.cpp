// slist.dat byte for byte, and hardware addresses as text.

#include "diagnostics/safe_list.h"

#include <gtest/gtest.h>

#include "tests/support/host_records.h"

namespace {

constexpr MacAddress kFirst = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
constexpr MacAddress kSecond = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
constexpr MacAddress kThird = {{0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

Bytes Entries(std::initializer_list<MacAddress> macs) {
    Bytes bytes;
    for (const MacAddress& mac : macs) {
        bytes.insert(bytes.end(), mac.bytes, mac.bytes + 6);
    }
    return bytes;
}

TEST(SafeList, Entries_are_kept_in_the_order_in_which_they_were_added) {
    EXPECT_FALSE(SafeListRemove(nullptr, kFirst));
    EXPECT_FALSE(FileExists(L"slist.dat"));
    for (const MacAddress& mac : {kFirst, kSecond, kThird}) {
        EXPECT_FALSE(SafeListContains(mac));
        EXPECT_TRUE(SafeListAdd(mac));
        EXPECT_TRUE(SafeListContains(mac));
    }
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kFirst, kSecond, kThird}));
    EXPECT_TRUE(SafeListRemove(nullptr, kSecond));
    EXPECT_FALSE(SafeListContains(kSecond));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kFirst, kThird}));
    EXPECT_FALSE(FileExists(L"tmpslist"));
}

TEST(SafeList, Removing_drops_every_equal_entry_and_keeps_an_empty_file) {
    WriteWholeFile(L"slist.dat", Entries({kFirst, kSecond, kFirst}));
    WriteWholeFile(L"tmpslist", Bytes(100, 7));
    EXPECT_FALSE(SafeListRemove(nullptr, kThird));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kFirst, kSecond, kFirst}));
    EXPECT_TRUE(SafeListRemove(nullptr, kFirst));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({kSecond}));
    EXPECT_TRUE(SafeListRemove(nullptr, kSecond));
    EXPECT_TRUE(FileExists(L"slist.dat"));
    EXPECT_TRUE(ReadWholeFile(L"slist.dat").empty());
}

TEST(SafeList, A_cut_tail_is_completed_from_the_entry_before_it) {
    const Bytes cut = {0x00, 0x1A};
    WriteWholeFile(L"slist.dat", Entries({kSecond}) + cut);
    const MacAddress completed = {{0x00, 0x1A, 0xFF, 0xFF, 0xFF, 0xFF}};
    EXPECT_TRUE(SafeListContains(completed));
    EXPECT_FALSE(SafeListContains(kFirst));
    EXPECT_TRUE(SafeListRemove(nullptr, kSecond));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), Entries({completed}));
}

TEST(MacText, Understands_what_it_wrote_upper_case_alone_and_no_cut_text) {
    wchar_t written[kMacTextUnits];
    MacAddress mac = kThird;
    FormatMacText(kFirst, written);
    EXPECT_STREQ(written, L"00:1A:2B:3C:4D:5E");
    EXPECT_TRUE(ParseMacText(written, mac));
    EXPECT_TRUE(MacEquals(mac, kFirst));
    EXPECT_TRUE(ParseMacText(L"00-1A-2B-3C-4D-5e", mac));
    EXPECT_EQ(mac.bytes[4], 0x4D);  // whatever separates
    EXPECT_NE(mac.bytes[5], 0x5E);
    mac = kSecond;
    for (const wchar_t* text : {L"", L"0", L"00:1A:2B:3C:4D:5"}) {
        EXPECT_FALSE(ParseMacText(text, mac));
        EXPECT_TRUE(MacEquals(mac, kSecond));
    }
}

}  // namespace
