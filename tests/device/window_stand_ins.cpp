// Windows, dialogs, property sheets and drawing. A window of the guest's class hears messages in its procedure, a
// dialog in its dialog procedure, a control in controls.cpp. There is no queue: the script sends what a person, the
// clock and the host cause. Drawing is only written down, and nothing that is compared depends on where a window is.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

constexpr uint32_t kDialogResource = 5;

// What contexts hold before anything is selected, and the dialogs' font, by the first letter of its kind.
constexpr uint32_t kSelectedAtFirst = 0x0BAD0000;

uint32_t CreateWindow(uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint32_t parent) {
    constexpr uint32_t kCreated = 0x0001;
    const uint32_t window = NewHandle();
    handheld->windows[window] = {.parent = parent, .procedure = handheld->itemProcedure};
    bed->trace->names[window] = "item";
    SendToWindow(window, kCreated, 0, 0);
    return window;
}

// A record of zeros: a rectangle of a window, of dialog units.
void GetRectangle(uint64_t, std::array<int32_t, 4>* area) {
    *area = {};
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

uint32_t SetText(uint32_t window, Address text) {
    constexpr uint32_t kSetText = 0x000C;
    return SendToWindow(window, kSetText, 0, text);
}

// A drop-down list tells its dialog (CBN_SETFOCUS); nothing else minds.
void SetFocus(uint32_t handle) {
    constexpr uint32_t kCommand = 0x0111, kFocused = 3;
    const Window& window = handheld->windows[handle];
    if (window.isComboBox) {
        SendToWindow(window.parent, kCommand, static_cast<uint32_t>(window.id) | kFocused << 16, handle);
    }
}

// Walks over a DLGTEMPLATE.
struct TemplateReader {
    Address at;

    template <class Value>
    Value Take() {
        Value value;
        memcpy(&value, At<void>(at), sizeof(value));
        at += sizeof(value);
        return value;
    }
    // A text; or a number behind 0xFFFF, of a class of the system's.
    std::string TakeText() {
        if (*At<uint16_t>(at) == 0xFFFF) {
            return std::to_string(Take<uint32_t>() >> 16);
        }
        const std::string text = Narrow(At<char16_t>(at));
        at += static_cast<uint32_t>(2 * text.size() + 2);
        return text;
    }
};

void AddControl(TemplateReader& reader, uint32_t dialog) {
    constexpr uint32_t kBeforeId = 8 + 8;  // styles, area
    reader.at = ((reader.at + 3) & ~3U) + kBeforeId;
    Window control = {.parent = dialog};
    control.id = reader.Take<uint16_t>();
    control.isComboBox = reader.TakeText() == "133";
    const std::string text = reader.TakeText();
    reader.at += reader.Take<uint16_t>();
    const uint32_t handle = NewHandle();
    bed->trace->Open(handle, bed->trace->NameOf(dialog) + "/" + std::to_string(control.id), text);
    handheld->windows[handle] = control;
}

// The part before the controls; gives their number.
int TakeHead(TemplateReader& reader) {
    constexpr uint32_t kSetFont = 0x40;
    const auto style = reader.Take<uint32_t>();
    if (style == 0xFFFF0001) {  // DLGTEMPLATEEX
        AddFault("a dialog template that a handheld does not know");
        return 0;
    }
    reader.at += 4;  // extended style
    const int controls = reader.Take<uint16_t>();
    reader.at += 8;                // area
    for (int i = 0; i < 3; ++i) {  // menu, class, title
        reader.TakeText();
    }
    if ((style & kSetFont) != 0) {
        reader.at += 2;  // point size
        reader.TakeText();
    }
    return controls;
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

// PAINTSTRUCT begins with the context.
uint32_t BeginPaint(uint64_t, uint32_t* paint) {
    return *paint = NewHandle();
}

}  // namespace

StandInTable WindowStandIns() {
    StandInTable table;
    for (const auto& [function, makes] : TracedFunctions()) {
        table.push_back({function, StandIn([makes = makes](const uint64_t*) { return makes ? NewHandle() : 1; })});
    }
    for (const char* function :
         {"GetSysColorBrush", "InitCommonControlsEx", "LoadCursorW", "MapDialogRect", "MapWindowPoints", "MessageBeep",
          "MoveWindow", "SetCursor", "SetWindowLongW", "SetWindowPos", "UnregisterClassW", "FindWindowW", "WSACleanup",
          "IcmpCloseHandle", "ConnMgrReleaseConnection", "HttpSendRequestW", "InternetCloseHandle"}) {
        table.push_back({function, [] {}});
    }
    const StandInTable others = {
        {"BeginPaint", BeginPaint},
        {"CreateWindowExW", CreateWindow},
        {"DestroyWindow", RemoveWindow},
        {"DialogBoxIndirectParamW", RunDialog},
        {"FindResourceW", FindResource},
        {"GetDlgCtrlID", [](uint32_t window) { return handheld->windows[window].id; }},
        {"GetDlgItem", FindControl},
        {"GetDlgItemTextW", GetItemText},
        {"GetParent", [](uint32_t window) { return handheld->windows[window].parent; }},
        {"GetSystemMetrics", [](uint32_t which) { return which == 0 ? player->screenWidth : player->screenHeight; }},
        {"GetWindowRect", GetRectangle},
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
        {"SetDlgItemTextW",
         [](uint32_t dialog, uint32_t id, Address text) { return SetText(FindControl(dialog, id), text); }},
        {"SetFocus", SetFocus},
        {"SetWindowTextW", SetText},
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
    TemplateReader reader = {dialogTemplate};
    for (int controls = TakeHead(reader); controls > 0; --controls) {
        AddControl(reader, handle);
    }
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

void RemoveWindow(uint32_t handle) {
    handheld->windows.erase(handle);
    while (true) {
        const auto child = std::find_if(handheld->windows.begin(), handheld->windows.end(),
                                        [&](const auto& entry) { return entry.second.parent == handle; });
        if (child == handheld->windows.end()) {
            return;
        }
        RemoveWindow(child->first);
    }
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
