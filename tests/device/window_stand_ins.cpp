// Windows and messages. A window of the guest's class hears messages in its procedure, a dialog in its dialog
// procedure, a control in dialog_controls.cpp. There is no queue: the script sends what a person, the clock and the
// host cause.

#include "tests/device/window_state.h"

#include <algorithm>

namespace {

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
uint32_t RegisterClassW(Bed& bed, const Arguments& a) {
    Part<WindowState>(bed).classes[ReadText(bed, ReadGuest<uint32_t>(bed, a[0] + 36))] =
        ReadGuest<uint32_t>(bed, a[0] + 4);
    return 1;
}

// The item is as large as its strip, every other window as the screen.
uint32_t GetClientRect(Bed& bed, const Arguments& a) {
    const World& world = Part<World>(bed);
    const Window* window = FindWindow(bed, a[0]);
    const bool hiRes = std::max(world.screenWidth, world.screenHeight) > 320;
    const uint32_t height = window != nullptr && window->kind == "item" ? (hiRes ? 40 : 24) : world.screenHeight;
    WriteGuest(bed, a[1], std::array<uint32_t, 4>{0, 0, world.screenWidth, height});
    return window != nullptr;
}

uint32_t GetWindowRect(Bed& bed, const Arguments& a) {
    const Window* window = FindWindow(bed, a[0]);
    if (window != nullptr) {
        const int32_t* area = window->area;
        WriteGuest(bed, a[1], std::array<int32_t, 4>{area[0], area[1], area[0] + area[2], area[1] + area[3]});
    }
    return window != nullptr;
}

uint32_t Place(Bed& bed, uint32_t handle, const Arguments& a, size_t first) {
    Window* window = FindWindow(bed, handle);
    for (size_t i = 0; window != nullptr && i < 4; ++i) {
        window->area[i] = a.Signed(first + i);
    }
    return window != nullptr;
}

uint32_t GetSystemMetrics(Bed& bed, const Arguments& a) {
    return a[0] == 0 ? Part<World>(bed).screenWidth : Part<World>(bed).screenHeight;
}

uint32_t MapDialogRect(Bed& bed, const Arguments& a) {
    auto area = ReadGuest<std::array<int32_t, 4>>(bed, a[1]);
    std::transform(area.begin(), area.end(), area.begin(), [](int32_t units) { return 2 * units; });
    WriteGuest(bed, a[1], area);
    return 1;
}

uint32_t MessageBoxW(Bed& bed, const Arguments& a) {
    NoteCall(bed, "MessageBoxW", a);
    Player* player = Part<WindowState>(bed).player;
    return player != nullptr ? player->AnswerMessageBox() : 1;
}

uint32_t PostMessageW(Bed& bed, const Arguments& a) {
    if (Player* player = Part<WindowState>(bed).player) {
        player->posted.push_back({a[0], a[1], a[2]});
    }
    return 1;
}

uint32_t GetDlgItemTextW(Bed& bed, const Arguments& a) {
    const Window* control = FindWindow(bed, FindControl(bed, a[0], a[1]));
    const std::u16string text = control != nullptr && a[3] > 0 ? control->text.substr(0, a[3] - 1) : u"";
    WriteText(bed, a[2], text);
    return static_cast<uint32_t>(text.size());
}

uint32_t SetText(Bed& bed, uint32_t window, Address text) {
    constexpr uint32_t kSetText = 0x000C;
    return window != 0 ? SendToWindow(bed, window, kSetText, 0, text) : 0;
}

uint32_t EnableWindow(Bed& bed, const Arguments& a) {
    if (Window* window = FindWindow(bed, a[0])) {
        window->enabled = a[1] != 0;
    }
    return 0;
}

uint32_t NoteTimer(Bed& bed, const Arguments& a) {
    NoteCall(bed, "SetTimer", a);
    return a[1];
}

// A drop-down list tells its dialog (CBN_SETFOCUS); nothing else minds.
uint32_t SetFocus(Bed& bed, const Arguments& a) {
    constexpr uint32_t kCommand = 0x0111, kFocused = 3;
    const Window* window = FindWindow(bed, a[0]);
    if (window != nullptr && window->kind == "combobox") {
        SendToWindow(bed, window->parent, kCommand, static_cast<uint32_t>(window->id) | kFocused << 16, a[0]);
    }
    return 0;
}

uint32_t CreateProcessW(Bed& bed, const Arguments& a) {
    if (ReadText(bed, a[0]) != u"\\Windows\\ctlpnl.exe") {
        AddFault(bed, "starts another program than the control panel");
    }
    NoteCall(bed, "CreateProcessW", a);
    return 0;
}

// The taskbar, made when it is looked for.
uint32_t FindWindowW(Bed& bed, const Arguments& a) {
    uint32_t& taskbar = Part<WindowState>(bed).taskbar;
    if (ReadText(bed, a[0]) == u"HHTaskBar" && taskbar == 0) {
        taskbar = AddWindow(bed, "host", 0, 0);
        FindWindow(bed, taskbar)->area[3] = 26;
    }
    return taskbar;
}

uint32_t Ignore(Bed&, const Arguments&) {
    return 1;
}

constexpr StandInRow kRows[] = {
    {"CreateProcessW", CreateProcessW},
    {"CreateWindowExW", CreateWindowExW},
    {"DestroyWindow",
     [](Bed& bed, const Arguments& a) {
         RemoveWindow(bed, a[0]);
         return 1U;
     }},
    {"EnableWindow", EnableWindow},
    {"FindWindowW", FindWindowW},
    {"GetClientRect", GetClientRect},
    {"GetDlgCtrlID",
     [](Bed& bed, const Arguments& a) {
         const Window* control = FindWindow(bed, a[0]);
         return control != nullptr ? static_cast<uint32_t>(control->id) : 0;
     }},
    {"GetDlgItem", [](Bed& bed, const Arguments& a) { return FindControl(bed, a[0], a[1]); }},
    {"GetDlgItemTextW", GetDlgItemTextW},
    {"GetParent",
     [](Bed& bed, const Arguments& a) {
         const Window* window = FindWindow(bed, a[0]);
         return window != nullptr ? window->parent : 0;
     }},
    {"GetSystemMetrics", GetSystemMetrics},
    {"GetWindowRect", GetWindowRect},
    {"InitCommonControlsEx", Ignore},
    {"InvalidateRect",
     [](Bed& bed, const Arguments& a) -> uint32_t { return NoteCall(bed, "InvalidateRect", a) == ""; }},
    {"KillTimer", [](Bed& bed, const Arguments& a) -> uint32_t { return NoteCall(bed, "KillTimer", a) == ""; }},
    {"LoadCursorW", Ignore},
    {"MapDialogRect", MapDialogRect},
    {"MapWindowPoints", Ignore},
    {"MessageBeep", Ignore},
    {"MessageBoxW", MessageBoxW},
    {"MoveWindow", [](Bed& bed, const Arguments& a) { return Place(bed, a[0], a, 1); }},
    {"PostMessageW", PostMessageW},
    {"RegisterClassW", RegisterClassW},
    {"SendDlgItemMessageW",
     [](Bed& bed, const Arguments& a) {
         const uint32_t control = FindControl(bed, a[0], a[1]);
         return control != 0 ? SendToWindow(bed, control, a[2], a[3], a[4]) : 0;
     }},
    {"SendMessageW", [](Bed& bed, const Arguments& a) { return SendToWindow(bed, a[0], a[1], a[2], a[3]); }},
    {"SetCursor", Ignore},
    {"SetDlgItemTextW", [](Bed& bed, const Arguments& a) { return SetText(bed, FindControl(bed, a[0], a[1]), a[2]); }},
    {"SetFocus", SetFocus},
    {"SetTimer", NoteTimer},
    {"SetWindowLongW", Ignore},
    {"SetWindowPos", [](Bed& bed, const Arguments& a) { return Place(bed, a[0], a, 2); }},
    {"SetWindowTextW", [](Bed& bed, const Arguments& a) { return SetText(bed, a[0], a[1]); }},
    {"UnregisterClassW",
     [](Bed& bed, const Arguments& a) -> uint32_t {
         return static_cast<uint32_t>(Part<WindowState>(bed).classes.erase(ReadText(bed, a[0])));
     }},
};

// The Today screen, asked to draw its background: context, rectangle, window.
void NoteWatermark(Bed& bed, Address request) {
    const auto words = ReadGuest<std::array<uint32_t, 6>>(bed, request);
    TraceOf(bed).Add("watermark of " + TraceOf(bed).NameOf(words[5]) + " " + std::to_string(words[3]) + " " +
                     std::to_string(words[4]));
}

}  // namespace

std::span<const StandInRow> WindowStandIns() {
    return kRows;
}

Trace& TraceOf(Bed& bed) {
    WindowState& state = Part<WindowState>(bed);
    Trace& trace = state.player != nullptr ? state.player->trace : state.spare;
    trace.memory = [&bed](uint64_t address, size_t bytes) -> const void* {
        static constexpr uint8_t kNothing[256] = {};
        const uint8_t* memory = GuestMemory(bed, static_cast<Address>(address), bytes);
        return memory != nullptr ? memory : kNothing;
    };
    return trace;
}

void Name(Bed& bed, uint32_t handle, const std::string& name) {
    TraceOf(bed).names[handle] = name;
}

std::string NoteCall(Bed& bed, const char* name, const Arguments& arguments) {
    const CallShape& shape = ShapeOf(name);
    uint64_t values[16] = {};
    for (size_t i = 0; shape.arguments[i] != 0; ++i) {
        values[i] = shape.arguments[i] != '-' ? arguments[i] : 0;
    }
    return TraceOf(bed).Note(shape, values);
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
    if (window == nullptr) {
        AddFault(bed, "destroys what is no window");
        return;
    }
    for (const uint32_t child : std::vector<uint32_t>(window->children)) {
        RemoveWindow(bed, child);
    }
    bed.objects.erase(handle);
}

uint32_t FindControl(Bed& bed, uint32_t dialog, uint32_t id) {
    const Window* window = FindWindow(bed, dialog);
    for (size_t i = 0; window != nullptr && i < window->children.size(); ++i) {
        const Window* child = FindWindow(bed, window->children[i]);
        if (child != nullptr && child->id == static_cast<int32_t>(id)) {
            return window->children[i];
        }
    }
    return 0;
}

uint32_t SendToWindow(Bed& bed, uint32_t handle, uint32_t message, uint32_t wParam, uint32_t lParam) {
    constexpr uint32_t kWatermark = 0x0400 + 101;
    constexpr uint32_t kGetFont = 0x0031;
    Window* window = FindWindow(bed, handle);
    if (window == nullptr) {
        return 0;
    }
    if (window->procedure == 0) {
        if (window->kind == "host") {
            if (message == kWatermark) {
                NoteWatermark(bed, lParam);
            }
            return 1;
        }
        return SendToControl(bed, *window, message, wParam, lParam);
    }
    const uint32_t result = CallGuest(bed, window->procedure, {handle, message, wParam, lParam});
    return message == kGetFont && result == 0 ? kFontOfDialogs : result;
}
