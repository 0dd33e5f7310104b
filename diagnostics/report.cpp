// 8-bit text with line feeds alone and every field in quotes; a quote inside a name is not escaped.

#include "diagnostics/report.h"

#include "diagnostics/safe_list.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

namespace {

constexpr size_t kReportPathUnits = MAX_PATH + 32;

bool CanBeRead(const wchar_t* path) {
    return platform::ScopedHandle(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
        .IsOpen();
}

// False when every number is in use.
bool ChooseReportPath(HWND owner, std::span<wchar_t> path) {
    constexpr int kNumbers = 600;
    wchar_t folder[MAX_PATH] = {};
    SHGetSpecialFolderPathW(owner, folder, CSIDL_PERSONAL, FALSE);
    for (int number = 1; number < kNumbers; ++number) {
        FormatText(path, L"%s\\QuorvaneRpt%03d.csv", folder, number);
        if (!CanBeRead(path.data())) {
            return true;
        }
    }
    return false;
}

void WriteText(HANDLE file, const char* text, size_t length) {
    DWORD written = 0;
    WriteFile(file, text, static_cast<DWORD>(length), &written, nullptr);
}

bool IsIntruder(const DetectorCells& cells, const MacAddress& ownMac) {
    MacAddress mac = {};
    return !ParseMacText(cells.mac, mac) || (!SafeListContains(mac) && !MacEquals(mac, ownMac));
}

void WriteRow(HANDLE file, const DetectorCells& cells, const MacAddress& ownMac) {
    constexpr size_t kBytesPerUnit = 4;
    char line[sizeof(DetectorCells) / sizeof(wchar_t) * kBytesPerUnit + 32];
    const size_t length = IsIntruder(cells, ownMac)
                              ? FormatText(line, "\"%S\",\"Yes\",\"%S\",\"%S\"\n", cells.host, cells.address, cells.mac)
                              : FormatText(line, "\"%S\",\"No\",\"%S\",\"%S\"\n", cells.host, cells.address, cells.mac);
    WriteText(file, line, length);
}

}  // namespace

void ExportIntruderReport(HWND owner, const MacAddress& ownMac, const ReportRows& rows) {
    static constexpr char kHeader[] = "\"Host\",\"Intruder\",\"IP\",\"Mac Addr\"\n";
    wchar_t path[kReportPathUnits];
    if (!ChooseReportPath(owner, path)) {
        return;
    }
    platform::ScopedHandle file(
        CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) {
        MessageBoxW(owner, L"Output to file error!", L"Infomation", MB_OK);
        return;
    }
    WriteText(file.handle, kHeader, sizeof(kHeader) - 1);
    for (int row = 0; row < rows.count; ++row) {
        DetectorCells cells = {};
        rows.read(rows.list, row, cells);
        WriteRow(file.handle, cells, ownMac);
    }
    file.Close();
    wchar_t message[kReportPathUnits + 32];
    FormatText(message, L"Data output to: %s", path);
    MessageBoxW(owner, message, L"Infomation", MB_OK);
}
