// The ping runs from a timer, so that "Pinging..." is painted before it blocks the dialog.

#include "diagnostics/ping_dialog.h"

#include "diagnostics/echo_request.h"
#include "diagnostics/host_list.h"
#include "diagnostics/ping.h"
#include "item/dialog_placement.h"
#include "item/settings.h"
#include "platform/controls.h"
#include "platform/format_text.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"

namespace {

constexpr UINT_PTR kTimerId = 10;
constexpr UINT kDelayMs = 100;
constexpr int kHostTextUnits = 256;
constexpr wchar_t kLastHostValue[] = L"pinghost";

struct PingState {
    bool SipShown;  // this dialog has raised the soft keyboard
};
PingState state;

struct HostText {
    wchar_t text[kHostTextUnits] = {};

    explicit HostText(HWND dialog) { GetDlgItemTextW(dialog, IDC_PING_HOST, text, kHostTextUnits); }
    bool IsEmpty() const { return text[0] == 0; }
};

void ShowKeyboard(HWND dialog) {
    platform::RaiseKeyboard(dialog);
    state.SipShown = true;
}

void HideKeyboard(HWND dialog) {
    platform::LowerKeyboard(dialog);
    state.SipShown = false;
}

void ShowLines(HWND dialog, const PingLines& lines) {
    SetDlgItemTextW(dialog, IDC_PING_STATUS, lines.status);
    SetDlgItemTextW(dialog, IDC_PING_ROUND_TRIP, lines.roundTrip);
    SetDlgItemTextW(dialog, IDC_PING_MAC, lines.mac);
}

void ListHost(HWND combo, const wchar_t* host) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(host));
}

bool LoadHostList(HWND combo) {
    HostListReader reader;
    if (!reader.file.IsOpen()) {
        return false;
    }
    while (NextHost(reader)) {
        ListHost(combo, reader.host);
    }
    return true;
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::Lifted);
    HWND combo = GetDlgItem(dialog, IDC_PING_HOST);
    SendMessageW(combo, CB_LIMITTEXT, kHostUnits - 1, 0);
    LoadHostList(combo);
    wchar_t host[kHostTextUnits] = {};
    ReadStringSetting(kLastHostValue, host);
    host[kHostUnits - 1] = 0;  // the limit above holds for what is typed alone
    SetWindowTextW(combo, host);
    HideKeyboard(dialog);
}

void OnPing(HWND dialog) {
    const HostText host(dialog);
    if (host.IsEmpty()) {
        MessageBeep(MB_ICONASTERISK);
        MessageBoxW(dialog, L"Host name is empty", L"Error", 0);
        return;
    }
    if (AddHost(dialog, host.text)) {
        ListHost(GetDlgItem(dialog, IDC_PING_HOST), host.text);
    }
    HideKeyboard(dialog);
    WriteStringSetting(kLastHostValue, host.text, wcslen(host.text));
    ShowLines(dialog, {L"Pinging...", L"", L""});
    EnableWindow(GetDlgItem(dialog, IDC_PING_PING), FALSE);
    SetTimer(dialog, kTimerId, kDelayMs, nullptr);
}

void Ping(HWND dialog) {
    constexpr WORD kWinsockVersion = 0x0102;
    constexpr size_t kNarrowBytes = 1024;
    const HostText host(dialog);
    if (host.IsEmpty()) {
        return;
    }
    char narrow[kNarrowBytes];
    FormatText(narrow, "%S", host.text);
    WSADATA winsock;
    WSAStartup(kWinsockVersion, &winsock);
    PingLines lines;
    PingHost(narrow, kEchoTimeoutMs, lines);
    WSACleanup();
    ShowLines(dialog, lines);
}

void OnTimer(HWND dialog, UINT_PTR timer) {
    if (timer == kTimerId) {
        KillTimer(dialog, kTimerId);
        Ping(dialog);
    }
    EnableWindow(GetDlgItem(dialog, IDC_PING_PING), TRUE);
}

void OnDelete(HWND dialog) {
    const HostText host(dialog);
    if (host.IsEmpty()) {
        return;
    }
    ShowLines(dialog, {});
    if (DeleteHost(dialog, host.text)) {
        HWND combo = GetDlgItem(dialog, IDC_PING_HOST);
        SendMessageW(combo, CB_RESETCONTENT, 0, 0);
        LoadHostList(combo);
        SetWindowTextW(combo, L"");
    }
}

void OnKeyboard(HWND dialog) {
    if (state.SipShown) {
        HideKeyboard(dialog);
        return;
    }
    ShowKeyboard(dialog);
    SetFocus(GetDlgItem(dialog, IDC_PING_HOST));
}

void OnClose(HWND dialog, int result) {
    if (state.SipShown) {
        HideKeyboard(dialog);
    }
    EndDialog(dialog, result);
}

INT_PTR OnCommand(HWND dialog, WORD id, WORD notification) {
    switch (id) {
        case IDC_PING_PING:
            OnPing(dialog);
            return TRUE;
        case IDC_PING_DELETE:
            OnDelete(dialog);
            return TRUE;
        case IDC_PING_KEYBOARD:
            OnKeyboard(dialog);
            return FALSE;
        case IDC_PING_HOST:
            if (notification == CBN_SETFOCUS) {
                ShowKeyboard(dialog);
            }
            return TRUE;
        case IDOK:
        case IDCANCEL:
            OnClose(dialog, id);
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK PingDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
        case WM_TIMER:
            OnTimer(dialog, wParam);
            return TRUE;
        default:
            return FALSE;
    }
}
