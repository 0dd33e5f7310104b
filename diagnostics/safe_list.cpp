// The list is short and read from disk whenever it is asked: there is no copy that could differ from the file.

#include "diagnostics/safe_list.h"

#include "diagnostics/record_file.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

#include <array>

namespace {

constexpr size_t kEntryBytes = sizeof(MacAddress);
using Entry = std::array<uint8_t, kEntryBytes>;

// Reading and rewriting name the file behind a doubled separator, which the system reads as one.
struct SafeListPaths {
    wchar_t list[kPathUnits + 16];
    wchar_t temporary[kPathUnits + 16];

    SafeListPaths() {
        FormatText(list, L"%s\\\\slist.dat", itemState.dataFolder);
        FormatText(temporary, L"%s\\tmpslist", itemState.dataFolder);
    }
};

HANDLE OpenList(const SafeListPaths& paths) {
    return OpenRecords(paths.list, paths.temporary);
}

bool IsEntryOf(std::span<const uint8_t> entry, const void* mac) {
    return memcmp(entry.data(), mac, kEntryBytes) == 0;
}

// False when the list cannot be copied whole; nothing has changed then.
bool CopyOtherEntries(const SafeListPaths& paths, const MacAddress& mac, bool* found) {
    const platform::ScopedHandle list(OpenList(paths));
    if (!list.IsOpen()) {
        return false;
    }
    platform::ScopedHandle temporary(
        CreateFileW(paths.temporary, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!temporary.IsOpen()) {
        return false;
    }
    Entry entry = {};
    const RecordCopy copy = CopyOtherRecords(list.handle, temporary.handle, entry, IsEntryOf, &mac);
    *found = copy.dropped;
    const bool isWhole = copy.readAll && copy.wroteAll;
    if (!isWhole) {
        temporary.Close();
        DeleteFileW(paths.temporary);
    }
    return isWhole;
}

}  // namespace

bool SafeListContains(const MacAddress& mac) {
    const platform::ScopedHandle list(OpenList(SafeListPaths()));
    if (!list.IsOpen()) {
        return false;
    }
    Entry entry = {};  // a cut tail is compared with what the buffer held before
    while (ReadRecord(list.handle, entry) == RecordRead::Some) {
        if (IsEntryOf(entry, &mac)) {
            return true;
        }
    }
    return false;
}

bool SafeListAdd(const MacAddress& mac) {
    const SafeListPaths paths;
    wchar_t path[kPathUnits + 16];
    FormatText(path, L"%s\\slist.dat", itemState.dataFolder);
    TakeBackRecords(path, paths.temporary);
    const platform::ScopedHandle list(
        CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!list.IsOpen() || !MoveToEnd(list.handle)) {
        return false;
    }
    DWORD written = 0;
    WriteFile(list.handle, mac.bytes, kEntryBytes, &written, nullptr);
    return true;
}

bool SafeListRemove(HWND owner, const MacAddress& mac) {
    const SafeListPaths paths;
    bool found = false;
    if (!CopyOtherEntries(paths, mac, &found)) {
        return false;
    }
    if (!DeleteFileW(paths.list)) {
        MessageBoxW(owner, L"Cannot delete host!", L"Error", MB_ICONHAND);
        DeleteFileW(paths.temporary);
        return found;
    }
    MoveFileW(paths.temporary, paths.list);
    return found;
}
