// Reads the item's settings once at attach; single values are also read and written by the tools.

#include "item/settings.h"

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "platform/format_text.h"

namespace {

constexpr wchar_t kDefaultMakerFolder[] = L"\\Program Files\\Ostrik";
constexpr wchar_t kDefaultDataFolder[] = L"\\Program Files\\Ostrik\\Quorvane";

// A value of another type or size counts as absent; one that only cannot be read now must not be replaced.
enum class Stored { Here, Absent, Unreadable };

Stored StoredAs(LONG result) {
    switch (result) {
        case ERROR_SUCCESS:
            return Stored::Here;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_MORE_DATA:
            return Stored::Absent;
        default:
            return Stored::Unreadable;
    }
}

Stored ReadSetting(const wchar_t* name, DWORD wantedType, void* value, DWORD bytes, DWORD* stored) {
    HKEY key = nullptr;
    const LONG opened = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, KEY_READ, &key);
    if (opened != ERROR_SUCCESS) {
        return StoredAs(opened);
    }
    DWORD type = 0;
    DWORD size = bytes;
    const LONG result = RegQueryValueExW(key, name, nullptr, &type, static_cast<BYTE*>(value), &size);
    RegCloseKey(key);
    *stored = size;
    return result == ERROR_SUCCESS && type != wantedType ? Stored::Absent : StoredAs(result);
}

Stored ReadString(const wchar_t* name, std::span<wchar_t> value) {
    wchar_t text[kPathUnits];
    const size_t room = value.size() < kPathUnits ? value.size() : kPathUnits;
    DWORD bytes = 0;
    const Stored stored = ReadSetting(name, REG_SZ, text, static_cast<DWORD>(room * sizeof(wchar_t)), &bytes);
    if (stored != Stored::Here) {
        return stored;
    }
    // A stored text need not carry its terminator; the output always does.
    const size_t units = bytes / sizeof(wchar_t);
    text[units < room ? units : room - 1] = 0;
    FormatText(value, L"%s", text);
    return stored;
}

Stored ReadNumber(const wchar_t* name, uint32_t* value) {
    uint32_t number = 0;
    DWORD bytes = 0;
    const Stored stored = ReadSetting(name, REG_DWORD, &number, sizeof(number), &bytes);
    if (stored == Stored::Here && bytes != sizeof(number)) {
        return Stored::Absent;
    }
    if (stored == Stored::Here) {
        *value = number;
    }
    return stored;
}

bool WriteSetting(const wchar_t* name, DWORD type, const void* value, DWORD bytes) {
    HKEY key = nullptr;
    DWORD disposition = 0;  // of no interest, but a handheld is not promised to take a null for it
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition) !=
        ERROR_SUCCESS) {
        return false;
    }
    const LONG result = RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(value), bytes);
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

uint32_t ReadOrWriteDefault(const wchar_t* name, uint32_t fallback) {
    uint32_t value = fallback;
    if (ReadNumber(name, &value) == Stored::Absent) {
        WriteNumberSetting(name, fallback);
    }
    return value;
}

void LoadAdapterName() {
    const Stored stored = ReadString(L"Adapter", itemState.adapterName);
    if (stored == Stored::Here) {
        return;
    }
    if (ChooseAdapter() && itemState.adapterName[0] != 0 && stored == Stored::Absent) {
        WriteStringSetting(L"Adapter", itemState.adapterName, wcslen(itemState.adapterName) + 1);
    }
}

void LoadDataFolder() {
    if (ReadStringSetting(L"InstallDir", itemState.dataFolder)) {
        return;
    }
    FormatText(itemState.dataFolder, L"%s", kDefaultDataFolder);
    CreateDirectoryW(kDefaultMakerFolder, nullptr);
    CreateDirectoryW(kDefaultDataFolder, nullptr);
}

void LoadXLocation() {
    constexpr uint32_t kDefaultXLocation = 75;
    itemState.xLocation = ReadOrWriteDefault(L"XLocation", kDefaultXLocation);
    if (itemState.xLocation > kLargestXLocation) {
        itemState.xLocation = kLargestXLocation;
        WriteNumberSetting(L"XLocation", kLargestXLocation);
    }
}

}  // namespace

bool ReadStringSetting(const wchar_t* name, std::span<wchar_t> value) {
    return !value.empty() && ReadString(name, value) == Stored::Here;
}

bool ReadNumberSetting(const wchar_t* name, uint32_t* value) {
    return ReadNumber(name, value) == Stored::Here;
}

bool WriteStringSetting(const wchar_t* name, const wchar_t* value, size_t characters) {
    return WriteSetting(name, REG_SZ, value, static_cast<DWORD>(characters * sizeof(wchar_t)));
}

bool WriteNumberSetting(const wchar_t* name, uint32_t value) {
    return WriteSetting(name, REG_DWORD, &value, sizeof(value));
}

void LoadFolderSettings() {
    LoadAdapterName();
    LoadDataFolder();
}

void LoadDisplaySettings() {
    LoadXLocation();
    itemState.showTaskbarIcon = ReadOrWriteDefault(L"TIcon", 1) != 0;
    itemState.amPmFormat = ReadOrWriteDefault(L"TFormat", 1) != 0;
}
