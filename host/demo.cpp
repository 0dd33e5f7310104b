// The library knows nothing of the demonstration: the process is given other settings, and these name the folder.

#include "host/demo.h"

#include "host/demo_log.h"
#include "platform/system.h"

namespace {

// Stands for HKEY_LOCAL_MACHINE; it needs no administrator's rights.
constexpr wchar_t kMachine[] = L"Software\\Quorvane demonstration";
constexpr wchar_t kItem[] = L"Software\\Microsoft\\Today\\Items\\Quorvane";

bool CreateKey(HKEY parent, const wchar_t* path, HKEY* key) {
    return RegCreateKeyExW(parent, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, key, nullptr) ==
           ERROR_SUCCESS;
}

bool WriteDataFolder(HKEY machine, const std::wstring& folder) {
    HKEY item = nullptr;
    if (!CreateKey(machine, kItem, &item)) {
        return false;
    }
    const LONG result = RegSetValueExW(item, L"InstallDir", 0, REG_SZ, reinterpret_cast<const BYTE*>(folder.c_str()),
                                       static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(item);
    return result == ERROR_SUCCESS;
}

// What an earlier demonstration left there is made anew.
bool ReplaceSettings(const std::wstring& folder) {
    HKEY machine = nullptr;
    RegDeleteTreeW(HKEY_CURRENT_USER, kMachine);
    if (!CreateKey(HKEY_CURRENT_USER, kMachine, &machine)) {
        return false;
    }
    const bool replaced =
        WriteDataFolder(machine, folder) && RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine) == ERROR_SUCCESS;
    RegCloseKey(machine);
    return replaced;
}

}  // namespace

bool PrepareDemo(std::wstring& error) {
    wchar_t temporary[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring folder = std::wstring(temporary) + L"Quorvane demonstration";
    CreateDirectoryW(folder.c_str(), nullptr);
    SYSTEMTIME now;
    GetLocalTime(&now);
    if (!WriteDemoLogs(folder, now)) {
        error = folder + L" cannot be written";
        return false;
    }
    if (!ReplaceSettings(folder)) {
        error = L"the demonstration's settings cannot be written";
        return false;
    }
    return true;
}
