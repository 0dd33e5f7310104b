// Dialogs and property sheets from the library's own templates; the script's player drives them.

#include "tests/device/window_state.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr uint32_t kDialogResource = 5;

// Walks over a DLGTEMPLATE.
struct TemplateReader {
    Bed& bed;
    Address at;

    template <class Value>
    Value Take() {
        const auto value = ReadGuest<Value>(bed, at);
        at += sizeof(Value);
        return value;
    }
    // A text, or a number behind 0xFFFF.
    std::u16string TakeText(uint32_t* number = nullptr) {
        if (ReadGuest<uint16_t>(bed, at) == 0xFFFF) {
            at += 2;
            const auto ordinal = Take<uint16_t>();
            if (number != nullptr) {
                *number = ordinal;
            }
            return u"";
        }
        const std::u16string text = ReadText(bed, at);
        at += static_cast<uint32_t>(2 * text.size() + 2);
        return text;
    }
    void Align() { at = (at + 3) & ~3U; }
};

std::string KindOf(uint32_t number, const std::u16string& name) {
    constexpr const char* kKinds[] = {"button", "edit", "static", "listbox", "scrollbar", "combobox"};
    if (number >= 0x80 && number < 0x80 + std::size(kKinds)) {
        return kKinds[number - 0x80];
    }
    std::string kind = Narrow(name);
    std::transform(kind.begin(), kind.end(), kind.begin(), [](unsigned char c) { return std::tolower(c); });
    return kind;
}

void TakeArea(TemplateReader& reader, Window& window) {
    for (int32_t& number : window.area) {
        number = 2 * reader.Take<int16_t>();
    }
}

uint32_t AddControl(TemplateReader& reader, uint32_t dialog) {
    reader.Align();
    const uint32_t handle = AddWindow(reader.bed, "", dialog, 0);
    Window& control = *FindWindow(reader.bed, handle);
    control.style = reader.Take<uint32_t>();
    reader.at += 4;  // extended style
    TakeArea(reader, control);
    control.id = reader.Take<uint16_t>();
    uint32_t number = 0;
    const std::u16string name = reader.TakeText(&number);
    control.kind = KindOf(number, name);
    control.text = reader.TakeText();
    reader.at += reader.Take<uint16_t>();
    return handle;
}

// The part before the controls; gives their number.
int TakeHead(TemplateReader& reader, Window& dialog) {
    constexpr uint32_t kSetFont = 0x40;
    dialog.style = reader.Take<uint32_t>();
    if (dialog.style == 0xFFFF0001) {  // DLGTEMPLATEEX
        AddFault(reader.bed, "a dialog template that a handheld does not know");
        return 0;
    }
    reader.at += 4;  // extended style
    const int controls = reader.Take<uint16_t>();
    TakeArea(reader, dialog);
    for (int i = 0; i < 3; ++i) {  // menu, class, title
        reader.TakeText();
    }
    if ((dialog.style & kSetFont) != 0) {
        reader.at += 2;  // point size
        reader.TakeText();
    }
    return controls;
}

// The handle of a resource is its address, and so is what it is loaded as.
uint32_t FindResourceW(Bed& bed, const Arguments& a) {
    const auto resource = FindGuestResource(bed, a[2], a[1]);
    if (!resource) {
        return 0;
    }
    if (a[2] == kDialogResource) {
        Part<WindowState>(bed).templates[resource->data] = a[1];
    }
    return resource->data;
}

uint32_t DialogBoxIndirectParamW(Bed& bed, const Arguments& a) {
    WindowState& state = Part<WindowState>(bed);
    if (state.player == nullptr) {
        AddFault(bed, "a dialog without a script");
        return 0;
    }
    const std::string name = "dialog " + std::to_string(state.templates[a[1]]);
    const uint32_t dialog = OpenDialog(bed, name, a[1], a[2], a[3]);
    state.player->RunDialog(dialog);
    EndWindow(bed, dialog);
    return 1;
}

uint32_t EndDialog(Bed& bed, const Arguments& a) {
    NoteCall(bed, "EndDialog", a);
    if (FindWindow(bed, a[0]) == nullptr || Part<WindowState>(bed).player == nullptr) {
        AddFault(bed, "ends a dialog that is not open");
        return 0;
    }
    Part<WindowState>(bed).player->ended = a[0];
    return 1;
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
uint32_t PropertySheetW(Bed& bed, const Arguments& a) {
    constexpr uint32_t kRecordBytes = 40;
    constexpr uint32_t kGetVersion = 3, kVersion = 524;
    WindowState& state = Part<WindowState>(bed);
    const auto header = ReadGuest<std::array<uint32_t, 10>>(bed, a[0]);
    const auto& [size, flags, owner, module, icon, caption, pages, start, records, callback] = header;
    state.sheet = AddWindow(bed, "sheet", owner, 0);
    if (size != kRecordBytes || CallGuest(bed, callback, {state.sheet, kGetVersion, 0}) != kVersion) {
        AddFault(bed, "a sheet of another version");
    }
    state.pages.clear();
    for (uint32_t i = 0; i < pages; ++i) {
        const auto page = ReadGuest<std::array<uint32_t, 10>>(bed, records + i * kRecordBytes);
        if (page[0] != kRecordBytes || page[2] != bed.imageBase) {
            AddFault(bed, "a page of another version");
        }
        state.pages.push_back({page[3], page[6], 0});
    }
    state.player->RunSheet();
    for (const WindowState::Page& page : state.pages) {
        if (page.window != 0) {
            EndWindow(bed, page.window);
        }
    }
    if (FindWindow(bed, state.sheet) != nullptr) {
        AddFault(bed, "the sheet was not closed");
    }
    return 1;
}

// SHINITDLGINFO: a mask for its flags, the dialog, done button with full screen and the keyboard down.
uint32_t SHInitDialog(Bed& bed, const Arguments& a) {
    const auto info = ReadGuest<std::array<uint32_t, 3>>(bed, a[0]);
    if (info[0] != 1 || FindWindow(bed, info[1]) == nullptr || info[2] != 0x0D) {
        AddFault(bed, "the shell is given another record");
    }
    TraceOf(bed).Add("no keyboard for " + TraceOf(bed).NameOf(info[1]));
    return 1;
}

uint32_t SHSipPreference(Bed& bed, const Arguments& a) {
    if (FindWindow(bed, a[0]) == nullptr || a[1] > 1) {
        AddFault(bed, "a keyboard for no window");
    }
    TraceOf(bed).Add((a[1] == 0 ? "keyboard for " : "no keyboard for ") + TraceOf(bed).NameOf(a[0]));
    return 1;
}

constexpr StandInRow kRows[] = {
    {"DialogBoxIndirectParamW", DialogBoxIndirectParamW},
    {"EndDialog", EndDialog},
    {"FindResourceW", FindResourceW},
    {"LoadResource", [](Bed&, const Arguments& a) { return a[1]; }},
    {"PropertySheetW", PropertySheetW},
    {"SHInitDialog", SHInitDialog},
    {"SHSipPreference", SHSipPreference},
};

}  // namespace

std::span<const StandInRow> DialogStandIns() {
    return kRows;
}

uint32_t OpenDialog(Bed& bed, const std::string& name, Address dialogTemplate, uint32_t parent, Address procedure) {
    constexpr uint32_t kInitDialog = 0x0110;
    const uint32_t handle = AddWindow(bed, "dialog", parent, procedure);
    Window& dialog = *FindWindow(bed, handle);
    Name(bed, handle, name);
    TemplateReader reader = {bed, dialogTemplate};
    for (int controls = TakeHead(reader, dialog); controls > 0; --controls) {
        dialog.children.push_back(AddControl(reader, handle));
        const Window& control = *FindWindow(bed, dialog.children.back());
        Name(bed, dialog.children.back(), name + "/" + std::to_string(control.id));
    }
    TraceOf(bed).Open(name);
    SendToWindow(bed, handle, kInitDialog, dialog.children.empty() ? 0 : dialog.children[0], 0);
    return handle;
}

void EndWindow(Bed& bed, uint32_t dialog) {
    TraceOf(bed).Close(dialog);
    if (FindWindow(bed, dialog) != nullptr) {
        RemoveWindow(bed, dialog);
    }
}

uint32_t ShowPage(Bed& bed, uint32_t number) {
    constexpr uint32_t kSize = 0x0005;
    WindowState& state = Part<WindowState>(bed);
    WindowState::Page& page = state.pages.at(number);
    if (page.window == 0) {
        const auto resource = FindGuestResource(bed, kDialogResource, page.templateNumber);
        page.window = OpenDialog(bed, "page " + std::to_string(number), resource ? resource->data : 0, state.sheet,
                                 page.procedure);
        FindWindow(bed, state.sheet)->children.push_back(page.window);
        SendToWindow(bed, page.window, kSize, 0, 0);
    }
    return page.window;
}
