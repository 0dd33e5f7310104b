// Windows and messages. A window of the guest's class hears messages in its procedure, a dialog in its dialog
// procedure, a control in dialog_controls.cpp. There is no queue: the script sends what a person, the clock and the
// host cause.

#include "tests/device/stand_in.h"
#include "tests/device/window_state.h"

#include <algorithm>

namespace {

using Area = std::array<int32_t, 4>;
constexpr uint32_t kFontOfDialogs = kSelectedAtFirst + 2;

uint32_t CreateWindowExW(Bed& bed, const Arguments& a) {
    constexpr uint32_t kCreated = 0x0001;
    const auto found = Part<WindowState>(bed).classes.find(ReadText(bed, a[1]));
    if (found == Part<WindowState>(bed).classes.end()) {
        return 0;
    }
    const uint32_t window = AddWindow(bed, "item", a[8], found->second);
    Name(bed, window, "item");
    SendToWindow(bed, window, kCreated, 0, 0);
    return window;
}

// WNDCLASSW: the procedure is its second word, the name its last.
void RegisterClassW(Bed& bed, Address record) {
    const auto words = ReadGuest<std::array<uint32_t, 10>>(bed, record);
    Part<WindowState>(bed).classes[ReadText(bed, words[9])] = words[1];
}

void GetClientRect(Bed& bed, Window& window, Address area) {
    const World& world = Part<World>(bed);
    WriteGuest(bed, area, std::array{0U, 0U, world.screenWidth, world.HeightOf(window.kind == "item")});
}

void GetWindowRect(Bed& bed, Window& window, Address area) {
    const auto& [x, y, width, height] = window.area;
    WriteGuest(bed, area, Area{x, y, x + width, y + height});
}

uint32_t GetSystemMetrics(Bed& bed, uint32_t which) {
    return which == 0 ? Part<World>(bed).screenWidth : Part<World>(bed).screenHeight;
}

void MapDialogRect(Bed& bed, Window&, Address area) {
    auto mapped = ReadGuest<Area>(bed, area);
    std::transform(mapped.begin(), mapped.end(), mapped.begin(), [](int32_t units) { return 2 * units; });
    WriteGuest(bed, area, mapped);
}

size_t GetDlgItemTextW(Bed& bed, uint32_t dialog, uint32_t id, Address buffer, uint32_t room) {
    const Window* control = FindWindow(bed, FindControl(bed, dialog, id));
    const std::u16string text = control != nullptr && room > 0 ? control->text.substr(0, room - 1) : u"";
    WriteText(bed, buffer, text);
    return text.size();
}

uint32_t SetText(Bed& bed, uint32_t window, Address text) {
    constexpr uint32_t kSetText = 0x000C;
    return window != 0 ? SendToWindow(bed, window, kSetText, 0, text) : 0;
}

uint32_t SendToItem(Bed& bed, uint32_t dialog, uint32_t id, uint32_t message, uint32_t wParam, uint32_t lParam) {
    return SendToWindow(bed, FindControl(bed, dialog, id), message, wParam, lParam);
}

// A drop-down list tells its dialog (CBN_SETFOCUS); nothing else minds.
void SetFocus(Bed& bed, uint32_t handle) {
    constexpr uint32_t kCommand = 0x0111, kFocused = 3;
    const Window* window = FindWindow(bed, handle);
    if (window != nullptr && window->kind == "combobox") {
        SendToWindow(bed, window->parent, kCommand, static_cast<uint32_t>(window->id) | kFocused << 16, handle);
    }
}

uint32_t CreateProcessW(Bed& bed, const Arguments& a) {
    if (ReadText(bed, a[0]) != u"\\Windows\\ctlpnl.exe") {
        AddFault(bed, "starts another program than the control panel");
    }
    NoteCall(a);
    return 0;
}

// The taskbar, made when it is looked for.
uint32_t FindTaskbar(Bed& bed, std::u16string kind) {
    uint32_t& taskbar = Part<WindowState>(bed).taskbar;
    if (kind == u"HHTaskBar" && taskbar == 0) {
        taskbar = AddWindow(bed, "host", 0, 0);
        FindWindow(bed, taskbar)->area[3] = 26;
    }
    return taskbar;
}

// The Today screen, asked to draw its background: context, rectangle, window.
uint32_t SendToHost(Bed& bed, uint32_t message, Address request) {
    constexpr uint32_t kWatermark = 0x0400 + 101;
    if (message == kWatermark) {
        const auto words = ReadGuest<std::array<uint32_t, 6>>(bed, request);
        TraceOf(bed).NoteWatermark(words[5], words[3], words[4]);
    }
    return 1;
}

}  // namespace

StandInTable WindowStandIns() {
    return {
        {"CreateProcessW", CreateProcessW},
        {"CreateWindowExW", CreateWindowExW},
        {"DestroyWindow", RemoveWindow},
        {"EnableWindow", [](Bed&, Window& window, bool enabled) { window.enabled = enabled; }},
        {"FindWindowW", FindTaskbar},
        {"GetClientRect", GetClientRect},
        {"GetDlgCtrlID", [](Bed&, Window& window) { return window.id; }},
        {"GetDlgItem", FindControl},
        {"GetDlgItemTextW", GetDlgItemTextW},
        {"GetParent", [](Bed&, Window& window) { return window.parent; }},
        {"GetSystemMetrics", GetSystemMetrics},
        {"GetWindowRect", GetWindowRect},
        {"InitCommonControlsEx", Ignore},
        {"LoadCursorW", Ignore},
        {"MapDialogRect", MapDialogRect},
        {"MapWindowPoints", Ignore},
        {"MessageBeep", Ignore},
        {"MessageBoxW",
         [](Bed& bed, const Arguments& a) { return NoteCall(a), Part<WindowState>(bed).player->AnswerMessageBox(); }},
        {"MoveWindow",
         [](Bed&, Window& window, int x, int y, int width, int height) {
             window.area = {x, y, width, height};
         }},
        {"PostMessageW",
         [](Bed& bed, uint32_t window, uint32_t message, uint32_t wParam) {
             Part<WindowState>(bed).player->posted.push_back({window, message, wParam});
         }},
        {"RegisterClassW", RegisterClassW},
        {"SendDlgItemMessageW", SendToItem},
        {"SendMessageW", SendToWindow},
        {"SetCursor", Ignore},
        {"SetDlgItemTextW", [](Bed& bed, uint32_t dialog, uint32_t id,
                               Address text) { return SetText(bed, FindControl(bed, dialog, id), text); }},
        {"SetFocus", SetFocus},
        {"SetTimer", [](Bed&, const Arguments& a) { return NoteCall(a), a[1]; }},
        {"SetWindowLongW", Ignore},
        {"SetWindowPos",
         [](Bed&, Window& window, uint32_t, int x, int y, int width, int height) {
             window.area = {x, y, width, height};
         }},
        {"SetWindowTextW", SetText},
        {"UnregisterClassW", [](Bed& bed, std::u16string name) { return Part<WindowState>(bed).classes.erase(name); }},
    };
}

Trace& TraceOf(Bed& bed) {
    return Part<WindowState>(bed).player->trace;
}

void Name(Bed& bed, uint32_t handle, const std::string& name) {
    TraceOf(bed).names[handle] = name;
}

std::string NoteCall(const Arguments& arguments) {
    const CallShape& shape = ShapeOf(arguments.function);
    uint64_t values[16] = {};
    for (size_t i = 0; shape.arguments[i] != 0; ++i) {
        values[i] = shape.arguments[i] != '-' ? arguments[i] : 0;
    }
    return TraceOf(arguments.bed).Note(shape, values);
}

Window* FindWindow(Bed& bed, uint32_t handle) {
    return FindObject<Window>(bed, handle);
}

uint32_t AddWindow(Bed& bed, const std::string& kind, uint32_t parent, Address procedure) {
    auto window = std::make_unique<Window>();
    window->kind = kind;
    window->parent = parent;
    window->procedure = procedure;
    return AddObject(bed, std::move(window));
}

void RemoveWindow(Bed& bed, uint32_t handle) {
    const Window* window = FindWindow(bed, handle);
    for (const uint32_t child : window != nullptr ? window->children : std::vector<uint32_t>()) {
        RemoveWindow(bed, child);
    }
    RemoveObject<Window>(bed, handle);
}

uint32_t FindControl(Bed& bed, uint32_t dialog, uint32_t id) {
    const Window* window = FindWindow(bed, dialog);
    for (const uint32_t handle : window != nullptr ? window->children : std::vector<uint32_t>()) {
        const Window* child = FindWindow(bed, handle);
        if (child != nullptr && child->id == static_cast<int32_t>(id)) {
            return handle;
        }
    }
    return 0;
}

uint32_t SendToWindow(Bed& bed, uint32_t handle, uint32_t message, uint32_t wParam, uint32_t lParam) {
    constexpr uint32_t kGetFont = 0x0031;
    Window* window = FindWindow(bed, handle);
    if (window == nullptr) {
        return 0;
    }
    if (window->procedure == 0) {
        return window->kind == "host" ? SendToHost(bed, message, lParam)
                                      : SendToControl(bed, *window, message, wParam, lParam);
    }
    const uint32_t result = CallGuest(bed, window->procedure, {handle, message, wParam, lParam});
    return message == kGetFont && result == 0 ? kFontOfDialogs : result;
}
