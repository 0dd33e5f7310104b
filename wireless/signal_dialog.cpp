// Shows what the sampling tick keeps up to date. The graph is drawn on every timer tick, whatever WM_PAINT does.

#include "wireless/signal_dialog.h"

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "platform/controls.h"
#include "platform/format_text.h"
#include "platform/scoped_gdi.h"
#include "resources/resource_ids.h"
#include "wireless/signal_graph.h"

namespace {

constexpr UINT_PTR kTimerId = 13;
constexpr UINT kPeriodMs = 1500;

struct SignalDialogState {
    bool timerRunning;
};
SignalDialogState state;

bool DrawBackground(HDC surface) {
    const platform::ScopedObject background(LoadBitmapW(itemState.instance, MAKEINTRESOURCEW(IDB_SIGNAL_GRAPH)));
    const platform::ScopedMemoryContext memory(surface);
    if (background.object == nullptr || memory.context == nullptr) {
        return false;
    }
    const platform::ScopedSelection selection(memory.context, background.object);
    BitBlt(surface, 0, 0, kSignalGraphWidth, kSignalGraphHeight, memory.context, 0, 0, SRCCOPY);
    return true;
}

bool DrawLines(HDC surface) {
    constexpr int kLineWidth = 3;
    const platform::ScopedObject pen(CreatePen(PS_SOLID, kLineWidth, RGB(0, 255, 0)));
    if (pen.object == nullptr) {
        return false;
    }
    const platform::ScopedSelection selection(surface, pen.object);
    SignalLine lines[kSignalReadings];
    const size_t count = ArrangeSignalGraph(itemState.SignalHistory, lines);
    for (size_t i = 0; i < count; ++i) {
        const POINT points[] = {{lines[i].x, lines[i].bottom}, {lines[i].x, lines[i].top}};
        Polyline(surface, points, 2);
    }
    return true;
}

void DrawSignalGraph(HWND dialog) {
    constexpr int kLeft = 13;
    constexpr int kTop = 89;
    const platform::ScopedWindowContext window(dialog);
    const platform::ScopedMemoryContext memory(window.context);
    const platform::ScopedObject surface(CreateCompatibleBitmap(window.context, kSignalGraphWidth, kSignalGraphHeight));
    if (window.context == nullptr || memory.context == nullptr || surface.object == nullptr) {
        return;
    }
    const platform::ScopedSelection selection(memory.context, surface.object);
    if (!DrawBackground(memory.context) || !DrawLines(memory.context)) {
        return;
    }
    const int scale = ScreenScale();
    StretchBlt(window.context, kLeft * scale, kTop * scale, kSignalGraphWidth * scale, kSignalGraphHeight * scale,
               memory.context, 0, 0, kSignalGraphWidth, kSignalGraphHeight, SRCCOPY);
}

void Refresh(HWND dialog) {
    wchar_t strength[24];
    FormatText(strength, L"%ddBm", itemState.SignalDbm);
    SetDlgItemTextW(dialog, IDC_SIGNAL_STRENGTH, strength);
    SetDlgItemTextW(dialog, IDC_SIGNAL_STATUS, SignalStatus(itemState.SignalDbm));
    DrawSignalGraph(dialog);
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::BelowTaskbar);
    Refresh(dialog);
    state.timerRunning = SetTimer(dialog, kTimerId, kPeriodMs, nullptr) != 0;
}

void OnClose(HWND dialog, int result) {
    if (state.timerRunning) {
        KillTimer(dialog, kTimerId);
        state.timerRunning = false;
    }
    EndDialog(dialog, result);
}

}  // namespace

INT_PTR CALLBACK SignalDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) {
                return FALSE;
            }
            OnClose(dialog, LOWORD(wParam));
            return TRUE;
        case WM_TIMER:
            if (wParam != kTimerId) {
                return FALSE;
            }
            Refresh(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}
