// The list is rewritten through a second file, so that a failure half-way leaves one of the two whole.

#include "diagnostics/host_list.h"

#include "diagnostics/record_file.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "trafficlog/log_file.h"

#include <algorithm>

namespace {

constexpr size_t kUnitBytes = sizeof(uint16_t);
constexpr size_t kHostPathUnits = kPathUnits + 16;

struct HostListPaths {
    wchar_t list[kHostPathUnits];
    wchar_t temporary[kHostPathUnits];

    HostListPaths() {
        FormatText(list, L"%s\\hosts.dat", itemState.dataFolder);
        FormatText(temporary, L"%s\\tmphosts.dat", itemState.dataFolder);
    }
};

void DecodeHost(std::span<const uint8_t> record, wchar_t (&host)[kHostUnits + 1]) {
    for (size_t i = 0; i < kHostUnits; ++i) {
        host[i] = static_cast<wchar_t>(record[i * kUnitBytes] | record[i * kUnitBytes + 1] << 8);
    }
    host[kHostUnits] = 0;
}

void EncodeHost(const wchar_t* host, std::span<uint8_t> record) {
    std::fill(record.begin(), record.end(), uint8_t{0});
    for (size_t i = 0; i + 1 < kHostUnits && host[i] != 0; ++i) {
        const wchar_t unit = host[i];
        record[i * kUnitBytes] = static_cast<uint8_t>(unit & 0xFF);
        record[i * kUnitBytes + 1] = static_cast<uint8_t>(unit >> 8 & 0xFF);
    }
}

bool HoldsHost(std::span<const uint8_t> record, const void* wanted) {
    wchar_t host[kHostUnits + 1];
    DecodeHost(record, host);
    return _wcsicmp(host, static_cast<const wchar_t*>(wanted)) == 0;
}

HANDLE OpenList(const HostListPaths& paths) {
    return OpenRecords(paths.list, paths.temporary);
}

HANDLE OpenForAdding(const HostListPaths& paths) {
    TakeBackRecords(paths.list, paths.temporary);
    HANDLE file = CreateFileW(paths.list, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (platform::IsOpen(file)) {
        return file;
    }
    return CreateFileW(paths.list, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void ReportListNotUpdated(HWND owner) {
    MessageBoxW(owner, L"Cannot update host file!", L"Error", 0);
}

enum class Copied { NotStarted, Partly, Empty, Whole };

Copied CopyOtherHosts(const HostListPaths& paths, const wchar_t* host) {
    const platform::ScopedHandle list(OpenList(paths));
    if (!list.IsOpen()) {
        return Copied::NotStarted;
    }
    const platform::ScopedHandle temporary(
        CreateFileW(paths.temporary, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!temporary.IsOpen()) {
        return Copied::NotStarted;
    }
    std::array<uint8_t, kHostRecordBytes> record = {};
    const RecordCopy copy = CopyOtherRecords(list.handle, temporary.handle, record, HoldsHost, host);
    if (!copy.readAll || !copy.wroteAll) {
        return Copied::Partly;
    }
    return GetFileSize(temporary.handle, nullptr) == 0 ? Copied::Empty : Copied::Whole;
}

}  // namespace

HostListReader::HostListReader() : file(OpenList(HostListPaths())), record{}, host{} {}

bool NextHost(HostListReader& reader) {
    if (ReadRecord(reader.file.handle, reader.record) != RecordRead::Some) {
        return false;
    }
    DecodeHost(reader.record, reader.host);
    return true;
}

bool AddHost(HWND owner, const wchar_t* host) {
    EnsureDataFolders(owner);
    const platform::ScopedHandle file(OpenForAdding(HostListPaths()));
    if (!file.IsOpen()) {
        return false;
    }
    std::array<uint8_t, kHostRecordBytes> record = {};
    while (ReadRecord(file.handle, record) == RecordRead::Some) {
        if (HoldsHost(record, host)) {
            return false;
        }
    }
    EncodeHost(host, record);
    DWORD written = 0;
    return MoveToEnd(file.handle) && WriteFile(file.handle, record.data(), kHostRecordBytes, &written, nullptr) &&
           written == kHostRecordBytes;
}

bool DeleteHost(HWND owner, const wchar_t* host) {
    const int answer =
        MessageBoxW(owner, L"Are you sure you want to delete this host?", L"Question", MB_YESNO | MB_ICONQUESTION);
    if (answer != IDYES) {
        return true;
    }
    const HostListPaths paths;
    const Copied copied = CopyOtherHosts(paths, host);
    if (copied == Copied::NotStarted) {
        return false;
    }
    const bool replaced = copied != Copied::Partly && DeleteFileW(paths.list);
    if (!replaced) {
        ReportListNotUpdated(owner);
    }
    if (!replaced || copied == Copied::Empty) {
        DeleteFileW(paths.temporary);
    } else {
        MoveFileW(paths.temporary, paths.list);
    }
    return true;
}
