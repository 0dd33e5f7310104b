// Known hosts are safe, and so is the device.

#include "diagnostics/detector_row.h"

#include "diagnostics/safe_list.h"
#include "platform/format_text.h"

namespace {

bool IsSafe(const HostRecord& host) {
    return (host.macKnown != 0 && SafeListContains(host.mac)) || host.address == scanState.ownAddress;
}

}  // namespace

void DescribeHost(HostRecord& host, DetectorRow& row) {
    row = {};
    uint8_t bytes[4];
    memcpy(bytes, &host.address, sizeof(bytes));
    FormatText(row.cells.host, L"%S", host.name);
    FormatText(row.cells.address, L"%d.%d.%d.%d", bytes[0], bytes[1], bytes[2], bytes[3]);
    row.order = bytes[3];
    host.safe = IsSafe(host) ? 1 : 0;
    row.image = host.safe != 0 ? kSafeImage : kIntruderImage;
    if (host.macKnown == 0) {
        if (host.address != scanState.ownAddress) {
            return;
        }
        host.mac = scanState.ownMac;
    }
    wchar_t mac[kMacTextUnits];
    FormatMacText(host.mac, mac);
    FormatText(row.cells.mac, L"%s", mac);
}

DetectorImage ToggleSafe(HWND owner, const DetectorCells& cells, DetectorImage image) {
    MacAddress mac = {};
    if (!ParseMacText(cells.mac, mac) || MacEquals(mac, scanState.ownMac)) {
        return image;
    }
    const wchar_t* label = cells.host[0] != 0 ? cells.host : cells.address;
    const bool known = SafeListContains(mac);
    wchar_t question[sizeof(cells.host) / sizeof(wchar_t) + 32];
    if (known) {
        FormatText(question, L"Delete %s from safe list?", label);
    } else {
        FormatText(question, L"Add %s to safe list?", label);
    }
    if (MessageBoxW(owner, question, L"Question", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES) {
        return image;
    }
    if (known) {
        return SafeListRemove(owner, mac) ? kIntruderImage : image;
    }
    return SafeListAdd(mac) ? kSafeImage : image;
}
