// Windows, dialogs, property sheets and drawing. A window of the guest's class hears messages in its procedure, a
// dialog in its dialog procedure, a control in controls.cpp. There is no queue: the script sends what a person, the
// clock and the host cause. Drawing is only written down, and nothing that is compared depends on where a window is.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

constexpr uint32_t kDialogResource = 5, kSetText = 0x000C;

// What contexts hold before anything is selected, and the dialogs' font, by the first letter of its kind.
constexpr uint32_t kSelectedAtFirst = 0x0BAD0000;

uint32_t CreateWindow(uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint32_t parent) {
    const uint32_t window = NewHandle();
    handheld->windows[window] = {.parent = parent, .procedure = handheld->itemProcedure};
    bed->trace->names[window] = "item";
    return window;
}

uint32_t FindControl(uint32_t dialog, uint32_t id) {
    return static_cast<uint32_t>(bed->trace->HandleOf(bed->trace->NameOf(dialog) + "/" + std::to_string(id)));
}

size_t GetItemText(uint32_t dialog, uint32_t id, char16_t* buffer, uint32_t room) {
    const std::u16string& text = handheld->windows[FindControl(dialog, id)].text;
    const size_t units = text.copy(buffer, room - 1);
    buffer[units] = 0;
    return units;
}

bool StartProgram(const char16_t* program) {
    if (Narrow(program) != "\\Windows\\ctlpnl.exe") {
        AddFault("starts another program than the control panel");
    }
    return false;
}

// A drop-down list tells its dialog (CBN_SETFOCUS); nothing else minds.
void SetFocus(uint32_t handle) {
    constexpr uint32_t kCommand = 0x0111, kFocused = 3;
    const Window& window = handheld->windows[handle];
    if (window.isComboBox) {
        SendToWindow(window.parent, kCommand, static_cast<uint32_t>(window.id) | kFocused << 16, handle);
    }
}

// Of a template: a text, or a number behind 0xFFFF.
std::string TakeText(const char16_t*& at) {
    if (*at == 0xFFFF) {
        at += 2;
        return std::to_string(at[-1]);
    }
    const std::string text = Narrow(at);
    at += text.size() + 1;
    return text;
}

// DLGITEMTEMPLATE: styles, area and number, class, text, more bytes.
void AddControl(const char16_t*& at, uint32_t dialog) {
    constexpr uint32_t kComboBox = 0x85;
    at = FromWord<const char16_t*>(((uint64_t)at + 3) & ~uint64_t{3});
    Window control = {.parent = dialog, .id = at[8]};
    at += 9;
    control.isComboBox = TakeText(at) == std::to_string(kComboBox);
    const uint32_t handle = NewHandle();
    bed->trace->Open(handle, bed->trace->NameOf(dialog) + "/" + std::to_string(control.id), TakeText(at));
    at += 1 + *at / 2;
    handheld->windows[handle] = control;
}

// DLGTEMPLATE: styles, the number of controls, area, menu, class, title, and size and name of the font.
void AddControls(const char16_t* at, uint32_t dialog) {
    constexpr uint32_t kSetFont = 0x40, kExtended = 0xFFFF;
    if (at[1] == kExtended) {
        return AddFault("a dialog template that a handheld does not know");
    }
    const bool hasFont = (at[0] & kSetFont) != 0;
    const int controls = at[4];
    at += 9;
    for (int i = 0; i < 3; ++i) {
        TakeText(at);
    }
    if (hasFont) {
        TakeText(++at);
    }
    for (int i = 0; i < controls; ++i) {
        AddControl(at, dialog);
    }
}

// The handle of a resource is its address, and so is what it is loaded as.
Address FindResource(uint64_t, uint32_t number, uint32_t kind) {
    handheld->templateNumber = number;
    return FindGuestResource(kind, number);
}

void RunDialog(uint64_t, Address dialogTemplate, uint32_t owner, Address procedure) {
    const std::string name = "dialog " + std::to_string(handheld->templateNumber);
    player->RunDialog(OpenDialog(name, dialogTemplate, owner, procedure));
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
void RunSheet(const std::array<uint32_t, 10>* header) {
    using Words = std::array<uint32_t, 10>;
    constexpr uint32_t kGetVersion = 3, kVersion = 524;
    const auto [size, flags, owner, module, icon, caption, pages, start, records, callback] = *header;
    const uint32_t sheet = handheld->sheet = NewHandle();
    handheld->windows[sheet] = {.parent = owner};
    if (size != sizeof(Words) || CallGuest(callback, {sheet, kGetVersion, 0}) != kVersion) {
        AddFault("a sheet of another version");
    }
    handheld->pages = {At<Words>(records), At<Words>(records) + pages};
    player->RunSheet(pages);
    if (handheld->windows.count(sheet) != 0) {
        AddFault("the sheet was not closed");
    }
}

// SHINITDLGINFO: a mask for its flags, the dialog, done button with full screen and the keyboard down.
void InitDialog(const std::array<uint32_t, 3>* record) {
    const auto [mask, dialog, flags] = *record;
    if (mask != 1 || flags != 0x0D) {
        AddFault("the shell is given another record");
    }
    bed->trace->NoteKeyboard(dialog, false);
}

uint32_t SelectObject(uint32_t context, uint32_t object) {
    const std::string name = bed->trace->NameOf(object);
    const uint32_t kind = object - kSelectedAtFirst < 0x100 ? object - kSelectedAtFirst
                          : name[0] == 'f'                  ? 'f'
                          : name.rfind("pen", 0) == 0       ? 'p'
                                                            : 'b';
    return std::exchange(handheld->held.try_emplace({context, kind}, kSelectedAtFirst + kind).first->second, object);
}

}  // namespace

StandInTable WindowStandIns() {
    StandInTable table;
    for (const CallShape& shape : TracedCalls()) {
        table.push_back({shape.name, shape.makes[0] != 0 ? StandIn([](const uint64_t*) { return NewHandle(); })
                                                         : StandIn([](const uint64_t*) { return 1; })});
    }
    for (const char* function :
         {"GetSysColorBrush", "InitCommonControlsEx", "LoadCursorW", "MapDialogRect", "MapWindowPoints", "MessageBeep",
          "MoveWindow", "SetCursor", "SetWindowLongW", "SetWindowPos", "UnregisterClassW", "FindWindowW", "WSACleanup",
          "IcmpCloseHandle", "ConnMgrReleaseConnection", "HttpSendRequestW", "InternetCloseHandle"}) {
        table.push_back({function, [] {}});
    }
    const StandInTable others = {
        {"BeginPaint", [](uint64_t, uint32_t* paint) { return *paint = NewHandle(); }},
        {"CreateProcessW", StartProgram},
        {"CreateWindowExW", CreateWindow},
        {"DestroyWindow", [](uint32_t window) { return handheld->windows.erase(window); }},
        {"DialogBoxIndirectParamW", RunDialog},
        {"FindResourceW", FindResource},
        {"GetDlgCtrlID", [](uint32_t window) { return handheld->windows[window].id; }},
        {"GetDlgItem", FindControl},
        {"GetDlgItemTextW", GetItemText},
        {"GetParent", [](uint32_t window) { return handheld->windows[window].parent; }},
        {"GetSystemMetrics", [](uint32_t which) { return which == 0 ? player->screenWidth : player->screenHeight; }},
        {"GetWindowRect", [](uint64_t, std::array<int32_t, 4>* area) { *area = {}; }},
        {"LoadResource", [](uint32_t, Address resource) { return resource; }},
        {"PropertySheetW", RunSheet},
        // WNDCLASSW, whose procedure is its second word.
        {"RegisterClassW", [](const uint32_t* record) { handheld->itemProcedure = record[1]; }},
        {"SelectObject", SelectObject},
        {"SendDlgItemMessageW",
         [](uint32_t dialog, uint32_t id, uint32_t message, uint32_t wParam, uint32_t lParam) {
             return SendToWindow(FindControl(dialog, id), message, wParam, lParam);
         }},
        {"SendMessageW", SendToWindow},
        {"SetDlgItemTextW", [](uint32_t dialog, uint32_t id,
                               Address text) { return SendToWindow(FindControl(dialog, id), kSetText, 0, text); }},
        {"SetFocus", SetFocus},
        {"SetWindowTextW", [](uint32_t window, Address text) { return SendToWindow(window, kSetText, 0, text); }},
        {"SHInitDialog", InitDialog},
        {"SHSipPreference", [](uint32_t window, uint32_t state) { bed->trace->NoteKeyboard(window, state == 0); }},
    };
    table.insert(table.end(), others.begin(), others.end());
    return table;
}

uint32_t OpenDialog(const std::string& name, Address dialogTemplate, uint32_t parent, Address procedure) {
    constexpr uint32_t kInitDialog = 0x0110;
    const uint32_t handle = NewHandle();
    handheld->windows[handle] = {.parent = parent, .procedure = procedure};
    bed->trace->Open(handle, name, "");
    AddControls(At<char16_t>(dialogTemplate), handle);
    SendToWindow(handle, kInitDialog, 0, 0);
    return handle;
}

uint64_t Handheld::OpenPage(uint32_t number) {
    constexpr uint32_t kSize = 0x0005;
    const auto& page = pages.at(number);
    const uint32_t window =
        OpenDialog("page " + std::to_string(number), FindGuestResource(kDialogResource, page[3]), sheet, page[6]);
    SendToWindow(window, kSize, 0, 0);
    return window;
}

uint32_t SendToWindow(uint32_t handle, uint32_t message, uint32_t wParam, uint32_t lParam) {
    constexpr uint32_t kGetFont = 0x0031;
    const auto found = handheld->windows.find(handle);
    if (found == handheld->windows.end()) {
        return 0;
    }
    if (found->second.procedure == 0) {
        return SendToControl(found->second, message, wParam, lParam);
    }
    const uint32_t result = CallGuest(found->second.procedure, {handle, message, wParam, lParam});
    return message == kGetFont && result == 0 ? kSelectedAtFirst + 'f' : result;
}
