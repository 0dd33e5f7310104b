// The item's data folder of a test: made anew, filled, and read back.

#include "tests/support/data_folder.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

static platform::ScopedHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
    return platform::ScopedHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                              disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void UseEmptyDataFolder() {
    static uint32_t folders = 0;
    CreateDirectoryW(L"\\quorvane-tests", nullptr);
    // Unlike any folder of an earlier run, which a Windows file system keeps.
    do {
        FormatText(itemState.dataFolder, L"\\quorvane-tests\\%X-%d", static_cast<uint32_t>(GetTickCount()), ++folders);
    } while (!CreateDirectoryW(itemState.dataFolder, nullptr));
}

std::wstring DataPath(const std::wstring& name) {
    return std::wstring(itemState.dataFolder) + L"\\" + name;
}

Bytes ReadWholeFile(const std::wstring& name) {
    const platform::ScopedHandle file = Open(DataPath(name), GENERIC_READ, OPEN_EXISTING);
    Bytes content(file.IsOpen() ? GetFileSize(file.handle, nullptr) : 0);
    DWORD read = 0;
    if (file.IsOpen()) {
        ReadFile(file.handle, content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    }
    return content;
}

bool FileExists(const std::wstring& name) {
    return Open(DataPath(name), GENERIC_READ, OPEN_EXISTING).IsOpen();
}

void WriteWholeFile(const std::wstring& name, const Bytes& content) {
    const platform::ScopedHandle file = Open(DataPath(name), GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    WriteFile(file.handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}
