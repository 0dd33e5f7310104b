// Takes no samples of its own: it shows what the sampling tick keeps.

#include "charts/live_graph_dialog.h"

#include "charts/live_graph_paint.h"
#include "item/dialog_placement.h"
#include "platform/controls.h"

namespace {

constexpr UINT_PTR kTimerId = 12;
constexpr UINT kPeriodMs = 2000;

struct LiveGraphDialog {
    HPEN transmittedPen;
    HPEN receivedPen;
    bool timerRunning;
};

LiveGraphDialog live;

void OnInit(HWND dialog) {
    constexpr int kPenWidth = 3;
    PlaceDialog(dialog, Placement::Centred);
    live = {};
    live.transmittedPen = CreatePen(PS_SOLID, kPenWidth, RGB(255, 0, 0));
    live.receivedPen = CreatePen(PS_SOLID, kPenWidth, RGB(0, 0, 255));
    live.timerRunning = SetTimer(dialog, kTimerId, kPeriodMs, nullptr) != 0;
}

void DeletePen(HPEN& pen) {
    if (pen != nullptr) {
        DeleteObject(pen);
        pen = nullptr;
    }
}

void OnClose(HWND dialog, int button) {
    if (live.timerRunning) {
        KillTimer(dialog, kTimerId);
        live.timerRunning = false;
    }
    DeletePen(live.transmittedPen);
    DeletePen(live.receivedPen);
    EndDialog(dialog, button);
}

}  // namespace

INT_PTR CALLBACK LiveGraphDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                OnClose(dialog, LOWORD(wParam));
            }
            return TRUE;
        case WM_TIMER:
            if (wParam == kTimerId) {
                InvalidateRect(dialog, nullptr, FALSE);
            }
            return TRUE;
        case WM_PAINT:
            PaintLiveGraph(dialog, live.transmittedPen, live.receivedPen);
            return TRUE;
        default:
            return FALSE;
    }
}
