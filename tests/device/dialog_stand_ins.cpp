// Dialogs and property sheets from the library's own templates; the script's player drives them.

#include "tests/device/stand_in.h"
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
    // A text; a number behind 0xFFFF gives the name of the system's class of that number, or nothing.
    std::u16string TakeText() {
        if (ReadGuest<uint16_t>(bed, at) == 0xFFFF) {
            constexpr const char16_t* kKinds[] = {u"button", u"edit", u"static", u"listbox", u"scrollbar", u"combobox"};
            const uint32_t number = Take<uint32_t>() >> 16;
            return number >= 0x80 && number < 0x80 + std::size(kKinds) ? kKinds[number - 0x80] : u"";
        }
        const std::u16string text = ReadText(bed, at);
        at += static_cast<uint32_t>(2 * text.size() + 2);
        return text;
    }
    void TakeArea(Window& window) {
        for (int32_t& number : window.area) {
            number = 2 * Take<int16_t>();
        }
    }
};

uint32_t AddControl(TemplateReader& reader, uint32_t dialog) {
    reader.at = ((reader.at + 3) & ~3U) + 8;  // style, extended style
    const uint32_t handle = AddWindow(reader.bed, "", dialog, 0);
    Window& control = *FindWindow(reader.bed, handle);
    reader.TakeArea(control);
    control.id = reader.Take<uint16_t>();
    control.kind = Narrow(reader.TakeText());
    std::transform(control.kind.begin(), control.kind.end(), control.kind.begin(), tolower);
    control.text = reader.TakeText();
    reader.at += reader.Take<uint16_t>();
    return handle;
}

// The part before the controls; gives their number.
int TakeHead(TemplateReader& reader, Window& dialog) {
    constexpr uint32_t kSetFont = 0x40;
    const auto style = reader.Take<uint32_t>();
    if (style == 0xFFFF0001) {  // DLGTEMPLATEEX
        AddFault(reader.bed, "a dialog template that a handheld does not know");
        return 0;
    }
    reader.at += 4;  // extended style
    const int controls = reader.Take<uint16_t>();
    reader.TakeArea(dialog);
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
Address FindResourceW(Bed& bed, uint32_t, uint32_t number, uint32_t kind) {
    const Address resource = FindGuestResource(bed, kind, number);
    Part<WindowState>(bed).templates[resource] = number;
    return resource;
}

void RunDialog(Bed& bed, uint32_t, Address dialogTemplate, uint32_t owner, Address procedure) {
    WindowState& state = Part<WindowState>(bed);
    const std::string name = "dialog " + std::to_string(state.templates[dialogTemplate]);
    state.player->RunDialog(OpenDialog(bed, name, dialogTemplate, owner, procedure));
}

void EndDialog(Bed& bed, const Arguments& a) {
    NoteCall(a);
    if (FindWindow(bed, a[0]) == nullptr) {
        AddFault(bed, "ends a dialog that is not open");
    }
    Part<WindowState>(bed).player->ended = a[0];
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
void PropertySheetW(Bed& bed, Address record) {
    using Words = std::array<uint32_t, 10>;
    constexpr uint32_t kGetVersion = 3, kVersion = 524;
    WindowState& state = Part<WindowState>(bed);
    const auto [size, flags, owner, module, icon, caption, pages, start, records, callback] =
        ReadGuest<Words>(bed, record);
    state.sheet = AddWindow(bed, "sheet", owner, 0);
    if (size != sizeof(Words) || CallGuest(bed, callback, {state.sheet, kGetVersion, 0}) != kVersion) {
        AddFault(bed, "a sheet of another version");
    }
    state.pages.clear();
    for (uint32_t i = 0; i < pages; ++i) {
        const auto page = ReadGuest<Words>(bed, records + i * sizeof(Words));
        if (page[0] != sizeof(Words) || page[2] != bed.imageBase) {
            AddFault(bed, "a page of another version");
        }
        state.pages.push_back({page[3], page[6]});
    }
    state.player->RunSheet(pages);
    if (FindWindow(bed, state.sheet) != nullptr) {
        AddFault(bed, "the sheet was not closed");
    }
}

// SHINITDLGINFO: a mask for its flags, the dialog, done button with full screen and the keyboard down.
void SHInitDialog(Bed& bed, Address record) {
    const auto [mask, dialog, flags] = ReadGuest<std::array<uint32_t, 3>>(bed, record);
    if (mask != 1 || FindWindow(bed, dialog) == nullptr || flags != 0x0D) {
        AddFault(bed, "the shell is given another record");
    }
    TraceOf(bed).NoteKeyboard(dialog, false);
}

void SHSipPreference(Bed& bed, uint32_t window, uint32_t state) {
    if (FindWindow(bed, window) == nullptr || state > 1) {
        AddFault(bed, "a keyboard for no window");
    }
    TraceOf(bed).NoteKeyboard(window, state == 0);
}

}  // namespace

StandInTable DialogStandIns() {
    return {
        {"DialogBoxIndirectParamW", RunDialog},
        {"EndDialog", EndDialog},
        {"FindResourceW", FindResourceW},
        {"LoadResource", [](Bed&, uint32_t, Address resource) { return resource; }},
        {"PropertySheetW", PropertySheetW},
        {"SHInitDialog", SHInitDialog},
        {"SHSipPreference", SHSipPreference},
    };
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

uint32_t OpenPage(Bed& bed, uint32_t number) {
    constexpr uint32_t kSize = 0x0005;
    const WindowState& state = Part<WindowState>(bed);
    const auto& [templateNumber, procedure] = state.pages.at(number);
    const uint32_t window = OpenDialog(bed, "page " + std::to_string(number),
                                       FindGuestResource(bed, kDialogResource, templateNumber), state.sheet, procedure);
    FindWindow(bed, state.sheet)->children.push_back(window);
    SendToWindow(bed, window, kSize, 0, 0);
    return window;
}
