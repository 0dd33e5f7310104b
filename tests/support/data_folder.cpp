// The item's data folder of a test: made anew, filled, and read back.

#include "tests/support/data_folder.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

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

static platform::ScopedHandle OpenToRead(const std::wstring& path) {
    return platform::ScopedHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

Bytes ReadWholePath(const std::wstring& path) {
    const platform::ScopedHandle file = OpenToRead(path);
    if (!file.IsOpen()) {
        return {};
    }
    Bytes content(GetFileSize(file.handle, nullptr));
    DWORD read = 0;
    ReadFile(file.handle, content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    content.resize(read);
    return content;
}

Bytes ReadWholeFile(const std::wstring& name) {
    return ReadWholePath(DataPath(name));
}

bool FileExists(const std::wstring& name) {
    return OpenToRead(DataPath(name)).IsOpen();
}

void WriteWholeFile(const std::wstring& name, const Bytes& content) {
    const platform::ScopedHandle file(
        CreateFileW(DataPath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    WriteFile(file.handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}
