// The item's registry values: defaults, what is written back, odd contents.

#include "item/settings.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"

namespace {

void StoreRaw(const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), 0);
    RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes);
    RegCloseKey(key);
}

DWORD StoredBytes(const wchar_t* name) {
    HKEY key = nullptr;
    DWORD bytes = 0;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, KEY_READ, &key), 0);
    EXPECT_EQ(RegQueryValueExW(key, name, nullptr, nullptr, nullptr, &bytes), 0);
    RegCloseKey(key);
    return bytes;
}

std::optional<uint32_t> StoredNumber(const wchar_t* name) {
    uint32_t value = 0;
    return ReadNumberSetting(name, &value) ? std::optional(value) : std::nullopt;
}

TEST(Settings, Defaults_are_written_back) {
    scripted::system.adapters = {{.name = "eth"}};
    LoadFolderSettings();
    LoadDisplaySettings();
    EXPECT_STREQ(itemState.adapterName, L"eth");
    EXPECT_STREQ(itemState.dataFolder, L"\\Program Files\\Ostrik\\Quorvane");
    EXPECT_EQ(itemState.xLocation, 75U);
    EXPECT_EQ(StoredNumber(L"XLocation"), 75U);
    EXPECT_EQ(StoredNumber(L"TIcon"), 1U);
    EXPECT_EQ(StoredNumber(L"TFormat"), 1U);
    wchar_t text[32] = {};
    EXPECT_TRUE(ReadStringSetting(L"Adapter", text));
    EXPECT_STREQ(text, L"eth");
    EXPECT_EQ(StoredBytes(L"Adapter"), 4 * sizeof(wchar_t)) << "its terminator counts";
    EXPECT_FALSE(ReadStringSetting(L"InstallDir", text));
}

TEST(Settings, The_stored_adapter_stands_though_its_index_is_unknown) {
    scripted::system.adapters = {{.name = "eth"}};
    WriteStringSetting(L"Adapter", L"other", 5);  // without its terminator
    LoadFolderSettings();
    EXPECT_STREQ(itemState.adapterName, L"other");
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(Settings, XLocation_is_clamped_and_the_clamped_value_written_back) {
    for (const auto& [stored, used] : std::map<uint32_t, uint32_t>{{0, 0}, {639, 639}, {640, 639}, {0xFFFFFFFF, 639}}) {
        WriteNumberSetting(L"XLocation", stored);
        LoadDisplaySettings();
        EXPECT_EQ(itemState.xLocation, used);
        EXPECT_EQ(StoredNumber(L"XLocation"), used);
    }
}

TEST(Settings, Any_number_but_zero_is_yes) {
    WriteNumberSetting(L"TFormat", 7);
    WriteNumberSetting(L"TIcon", 0);
    LoadDisplaySettings();
    EXPECT_TRUE(itemState.amPmFormat);
    EXPECT_FALSE(itemState.showTaskbarIcon);
}

TEST(Settings, Values_of_another_type_count_as_absent) {
    const wchar_t text[] = L"12";
    const uint32_t number = 5;
    StoreRaw(L"XLocation", REG_SZ, text, sizeof(text));
    StoreRaw(L"TIcon", REG_BINARY, &number, 2);
    StoreRaw(L"InstallDir", REG_DWORD, &number, sizeof(number));
    LoadFolderSettings();
    LoadDisplaySettings();
    EXPECT_EQ(itemState.xLocation, 75U);
    EXPECT_EQ(StoredNumber(L"XLocation"), 75U);
    EXPECT_TRUE(itemState.showTaskbarIcon);
    EXPECT_STREQ(itemState.dataFolder, L"\\Program Files\\Ostrik\\Quorvane");
}

TEST(Settings, A_text_longer_than_its_buffer_counts_as_absent) {
    const std::wstring longText(kPathUnits + 40, L'x');
    WriteStringSetting(L"InstallDir", longText.c_str(), longText.size());
    LoadFolderSettings();
    EXPECT_STREQ(itemState.dataFolder, L"\\Program Files\\Ostrik\\Quorvane");
    wchar_t text[8] = L"before";
    EXPECT_FALSE(ReadStringSetting(L"InstallDir", text));
    EXPECT_STREQ(text, L"before");
}

}  // namespace
