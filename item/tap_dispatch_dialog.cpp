// Opens the tools. A missing template or a program that does not start leaves the tap without effect.

#include "adapters/adapter_details_dialog.h"
#include "adapters/dhcp_dialog.h"
#include "charts/live_graph_dialog.h"
#include "charts/usage_dialog.h"
#include "diagnostics/detector_dialog.h"
#include "diagnostics/ping_dialog.h"
#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "platform/dialogs.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"
#include "wireless/card_details_dialog.h"
#include "wireless/scanner_dialog.h"
#include "wireless/signal_dialog.h"

namespace {

struct DialogEntry {
    int templateId;
    DLGPROC procedure;
};

// One line per tool that has a dialog, in the order of the strip.
constexpr DialogEntry kDialogs[] = {
    {IDD_SIGNAL, SignalDlgProc},
    {IDD_DHCP, DhcpDlgProc},
    {IDD_ADAPTER_DETAILS, AdapterDetailsDlgProc},
    {IDD_SCANNER, ScannerDlgProc},
    {IDD_WIRELESS_DETAILS, WirelessDetailsDlgProc},
    {IDD_USAGE, UsageDlgProc},
    {IDD_LIVE_GRAPH, LiveGraphDlgProc},
    {IDD_PING, PingDlgProc},
    {IDD_DETECTOR, DetectorDlgProc},
};

DLGPROC FindProcedure(int templateId) {
    for (const DialogEntry& entry : kDialogs) {
        if (entry.templateId == templateId) {
            return entry.procedure;
        }
    }
    return nullptr;
}

void OpenDialog(HWND item, int templateId, int landscapeId) {
    const DLGPROC procedure = FindProcedure(templateId);
    if (procedure == nullptr) {
        return;
    }
    const bool landscape = landscapeId != kNoTool && IsLandscape();
    platform::RunDialog(itemState.instance, landscape ? landscapeId : templateId, item, procedure);
}

void OpenTool(HWND item, const Tool& tool) {
    if (tool.applet != nullptr) {
        platform::StartProgram(L"\\Windows\\ctlpnl.exe", tool.applet);
    } else {
        OpenDialog(item, tool.templateId, tool.landscapeId);
    }
}

}  // namespace

void DispatchTap(HWND item, uint32_t x, uint32_t y) {
    if (const Tool* tool = FindToolAt(x, y)) {
        OpenTool(item, *tool);
    }
    if (IsOnMiniGraph(x, y)) {
        OpenDialog(item, IDD_LIVE_GRAPH, kNoTool);
    }
}
