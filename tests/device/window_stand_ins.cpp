// Windows, dialogs, property sheets and drawing. A window of the guest's class hears messages in its procedure, a
// dialog in its dialog procedure. A control only keeps its text and what was chosen, and otherwise answers as the
// desktop's answered. There is no queue: the script sends what a person, the clock and the host cause.
// Drawing is only written down, and nothing that is compared depends on where a window is.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

constexpr uint32_t kSetText = 0x000C, kDialog = 5;

uint32_t CreateWindow(uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t, uint32_t parent) {
    const uint32_t window = NewHandle();
    handheld->windows[window] = {.parent = parent, .procedure = handheld->itemProcedure};
    return window;
}

int64_t SendToControl(uint32_t dialog, uint32_t id, uint32_t message, uint32_t wParam, uint32_t lParam) {
    return handheld->Send(handheld->ControlOf(dialog, id), message, wParam, lParam);
}

size_t GetItemText(uint32_t dialog, uint32_t id, char16_t* buffer, uint32_t room) {
    const std::u16string& text = handheld->windows[handheld->ControlOf(dialog, id)].text;
    const size_t units = text.copy(buffer, room - 1);
    buffer[units] = 0;
    return units;
}

// The handle of a resource is its address, and so is what it is loaded as.
const uint8_t* FindResource(uint64_t, uint32_t number, uint32_t kind) {
    const std::span<const uint8_t> bytes = FindGuestResource(kind, number);
    handheld->templates[AddressAt(bytes.data())] = {number, bytes};
    return bytes.data();
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
void RunSheet(const std::array<uint32_t, 10>* header) {
    constexpr uint32_t kGetVersion = 3, kVersion = 524, kSize = 0x0005;
    const auto [size, flags, owner, module, icon, caption, pages, start, records, callback] = *header;
    const uint32_t sheet = NewHandle();
    handheld->windows[sheet] = {.parent = owner};
    if (size != sizeof(*header) || CallGuest(callback, {sheet, kGetVersion, 0}) != kVersion) {
        AddFault("a sheet of another version");
    }
    for (const auto& page : std::span(At<std::array<uint32_t, 10>>(records), pages)) {
        const uint32_t dialog = handheld->OpenDialog(AddressAt(FindResource(0, page[3], kDialog)), sheet, page[6]);
        handheld->Send(dialog, kSize, 0, 0);
        handheld->RunDialog(dialog);
    }
    if (handheld->windows.count(sheet) != 0) {
        AddFault("the sheet was not closed");
    }
}

// What the desktop's frame would be sent.
void AskForKeyboard(uint64_t window, bool isRaised) {
    const uint64_t words[kMostArguments] = {handheld->windows.begin()->first, 0x8001, isRaised, window};
    handheld->trace.Call("SendMessageW", words, [](const uint64_t*) { return 0; });
}

}  // namespace

StandInTable WindowStandIns() {
    return {
        {"BeginPaint", [](uint64_t, uint32_t* paint) { return *paint = NewHandle(); }},
        {"CreateProcessW", [](const char16_t* program) { return bed->trace->Add(Narrow(program)), false; }},
        {"CreateWindowExW", CreateWindow},
        {"DestroyWindow", [](uint32_t window) { return handheld->windows.erase(window); }},
        {"DialogBoxIndirectParamW",
         [](uint64_t, Address found, uint32_t owner, Address procedure) {
             handheld->RunDialog(handheld->OpenDialog(found, owner, procedure));
         }},
        {"FindResourceW", FindResource},
        {"GetDlgItem", [](uint32_t dialog, uint32_t id) { return handheld->ControlOf(dialog, id); }},
        {"GetDlgItemTextW", GetItemText},
        {"GetParent", [](uint32_t window) { return handheld->windows[window].parent; }},
        {"GetSystemMetrics", [](uint32_t which) { return which == 0 ? player->screenWidth : player->screenHeight; }},
        {"LoadResource", [](uint32_t, Address resource) { return resource; }},
        {"PropertySheetW", RunSheet},
        // WNDCLASSW, whose procedure is its second word.
        {"RegisterClassW", [](const uint32_t* record) { handheld->itemProcedure = record[1]; }},
        {"SendDlgItemMessageW", SendToControl},
        {"SendMessageW", [](uint32_t window, uint32_t message, uint32_t wParam,
                            uint32_t lParam) { return handheld->Send(window, message, wParam, lParam); }},
        {"SetDlgItemTextW",
         [](uint32_t dialog, uint32_t id, Address text) { return SendToControl(dialog, id, kSetText, 0, text); }},
        {"SetWindowTextW", [](uint32_t window, Address text) { return handheld->Send(window, kSetText, 0, text); }},
        // SHINITDLGINFO: a mask for its flags, the dialog, done button with full screen and the keyboard down.
        {"SHInitDialog", [](const uint32_t* info) { AskForKeyboard(info[1], info[0] != 1 || info[2] != 0x0D); }},
        {"SHSipPreference", [](uint32_t window, uint32_t state) { AskForKeyboard(window, state == 0); }},
    };
}

// LVITEMW has text, image and data from its sixth word on. What is not written down gets 1.
int32_t Window::Answer(uint32_t message, uint32_t wParam, uint32_t lParam) {
    constexpr uint32_t kGetChosen = 0x0147, kChoose = 0x014E, kGetItem = 0x104B, kGetCell = 0x1073;
    const std::string answer = bed->trace->reference.empty() ? "" : bed->trace->reference.front();
    int32_t result = 1, image = 0, data = 0;
    sscanf(answer.c_str(), "= %d ( null %d %d", &result, &image, &data);
    if (message == kSetText) {
        text = At<char16_t>(lParam);
    } else if (message == kChoose || message == kGetChosen) {
        return chosen = message == kChoose ? static_cast<int32_t>(wParam) : chosen;
    } else if (message == kGetItem) {
        At<int32_t>(lParam)[7] = image;
        At<int32_t>(lParam)[8] = data;
    } else if (const size_t quote = answer.find('"'); message == kGetCell && quote < answer.size()) {
        *std::copy_n(answer.begin() + quote + 1, result, At<char16_t>(At<uint32_t>(lParam)[5])) = 0;
    }
    return result;
}

uint32_t Handheld::OpenDialog(Address found, uint32_t parent, Address procedure) {
    constexpr uint32_t kInitDialog = 0x0110;
    constexpr uint16_t kExtended = 0xFFFF;
    const uint32_t dialog = NewHandle();
    const auto& [number, bytes] = templates.at(found);
    windows[dialog] = {.parent = parent, .procedure = procedure};
    trace.Open(dialog, number, bytes);
    if (At<uint16_t>(found)[1] == kExtended) {
        AddFault("a dialog template that a handheld does not know");
    }
    Send(dialog, kInitDialog, 0, 0);
    return dialog;
}

void Handheld::OpenOptions() {
    RunDialog(OpenDialog(AddressAt(FindResource(0, IDD_TODAY_OPTIONS, kDialog)), 0, bed->exports[241]));
}

uint64_t Handheld::ControlOf(uint64_t dialog, uint32_t number) {
    uint32_t& control = controls[{dialog, number}];
    if (control == 0) {
        control = NewHandle();
        trace.names[control] = trace.NameOf(dialog) + "/" + std::to_string(number);
        windows[control] = {.parent = static_cast<uint32_t>(dialog)};
    }
    return control;
}

int64_t Handheld::Send(uint64_t handle, uint32_t message, uint64_t wParam, uint64_t lParam) {
    constexpr uint32_t kGetFont = 0x0031, kSomeFont = 0xF0;
    if (windows.count(handle) == 0) {
        return 0;
    }
    const auto window = static_cast<uint32_t>(handle), first = static_cast<uint32_t>(wParam),
               second = static_cast<uint32_t>(lParam);
    if (windows[handle].procedure == 0) {
        return windows[handle].Answer(message, first, second);
    }
    const uint32_t result = CallGuest(windows[handle].procedure, {window, message, first, second});
    return message == kGetFont && result == 0 ? kSomeFont : result;
}
