// The item's registry values: what is written back, odd contents. Defaults are in the walk over failing calls.
#include "item/settings.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "platform/scoped.h"
#include "tests/fakes/scripted_platform.h"

namespace {

HKEY ItemKey() {
    HKEY key = nullptr;
    EXPECT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key, nullptr), 0);
    return key;
}

TEST(Settings, The_chosen_adapter_is_stored_with_its_terminator) {
    scripted::system.adapters = {{.name = "eth"}};
    LoadFolderSettings();
    const HKEY key = ItemKey();
    DWORD bytes = 0;
    RegQueryValueExW(key, L"Adapter", nullptr, nullptr, nullptr, &bytes);
    RegCloseKey(key);
    EXPECT_EQ(bytes, 4 * sizeof(wchar_t));
    WriteStringSetting(L"Adapter", L"other", 5);  // without one
    ResetItemState();
    LoadFolderSettings();
    EXPECT_STREQ(itemState.adapterName, L"other");
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(Settings, XLocation_is_clamped_and_the_clamped_value_written_back) {
    for (const auto& [stored, used] : {std::pair(0U, 0U), {639U, 639U}, {640U, 639U}, {0xFFFFFFFFU, 639U}}) {
        WriteNumberSetting(L"XLocation", stored);
        LoadDisplaySettings();
        EXPECT_EQ(itemState.xLocation, used);
        uint32_t written = 0;
        ReadNumberSetting(L"XLocation", &written);
        EXPECT_EQ(written, used);
    }
}

TEST(Settings, Any_number_but_zero_is_yes_and_other_types_and_long_texts_count_as_absent) {
    const HKEY key = ItemKey();
    const uint32_t number = 5;
    RegSetValueExW(key, L"XLocation", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"12"), 3 * sizeof(wchar_t));
    RegSetValueExW(key, L"TIcon", 0, REG_BINARY, reinterpret_cast<const BYTE*>(&number), 2);
    RegSetValueExW(key, L"InstallDir", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof(number));
    RegCloseKey(key);
    WriteNumberSetting(L"TFormat", 7);
    LoadFolderSettings();
    LoadDisplaySettings();
    EXPECT_EQ(itemState.xLocation, 75U);
    EXPECT_TRUE(itemState.showTaskbarIcon && itemState.amPmFormat);
    EXPECT_STREQ(itemState.dataFolder, L"\\Program Files\\Ostrik\\Quorvane");
    const std::wstring longText(kPathUnits + 40, L'x');
    WriteStringSetting(L"InstallDir", longText.c_str(), longText.size());
    LoadFolderSettings();
    EXPECT_STREQ(itemState.dataFolder, L"\\Program Files\\Ostrik\\Quorvane");
    wchar_t text[8] = L"before";
    EXPECT_FALSE(ReadStringSetting(L"InstallDir", text));
    EXPECT_STREQ(text, L"before");
}

}  // namespace
