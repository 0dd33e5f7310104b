// The lines of a trace. Texts are written with what lies beyond ASCII as "?".

#include "tests/device/trace.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// clang-format off
constexpr CallShape kShapes[] = {
    {"BeginPaint", "h-", "paint"}, {"BitBlt", "hiiiihiix"}, {"CreateCompatibleBitmap", "-ii", "bitmap"},
    {"CreateCompatibleDC", "-", "memory"}, {"CreateFontIndirectW", "f", "font"}, {"CreatePen", "iic", "pen"},
    {"CreateProcessW", "-s--------"}, {"DeleteDC", "h", "", true}, {"DeleteObject", "h", "", true},
    {"DestroyIcon", "h", "", true, true}, {"DrawIconEx", "hiih----x"}, {"DrawTextW", "hsirx"}, {"EndDialog", "hi"},
    {"EndPaint", "h-"}, {"FillRect", "hrh"}, {"GetDC", "h", "context"}, {"GetStockObject", "i", "stock", false, true},
    {"ImageList_Create", "iixii", "images"}, {"ImageList_Destroy", "h", "", true}, {"ImageList_ReplaceIcon", "hih"},
    {"InvalidateRect", "h-i"}, {"KillTimer", "hi"}, {"LoadBitmapW", "-i", "picture"},
    {"LoadIconW", "-i", "icon", false, true}, {"LoadImageW", "-i----", "icon", false, true}, {"MessageBoxW", "hssx"},
    {"Polyline", "hpi"}, {"ReleaseDC", "-h", "", true}, {"SelectObject", "hh"}, {"SetBkColor", "hc"},
    {"SetBkMode", "hi"}, {"SetPixel", "hiic"}, {"SetTextColor", "hc"}, {"SetTimer", "hii-"},
    {"StretchBlt", "hiiiihiiiix"}
};
// clang-format on

template <class... Values>
std::string Print(const char* format, Values... values) {
    char text[160];
    snprintf(text, sizeof(text), format, values...);
    return text;
}

std::string Numbers(const int32_t* numbers, size_t count) {
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += Print(i == 0 ? "(%d" : " %d", numbers[i]);
    }
    return text + ")";
}

std::string FontText(const uint8_t* font) {
    constexpr size_t kWeight = 16, kFace = 28;
    int32_t height = 0, weight = 0;
    memcpy(&height, font, sizeof(height));
    memcpy(&weight, font + kWeight, sizeof(weight));
    std::string face;
    for (size_t i = kFace; font[i] != 0; i += 2) {
        face += static_cast<char>(font[i]);
    }
    return Print("%d %d ", height, weight) + face;
}

std::string ArgumentText(const Trace& trace, char letter, uint64_t value, uint64_t next) {
    constexpr size_t kFontBytes = 92;
    switch (letter) {
        case 'h':
            return trace.NameOf(value);
        case 'i':
            return Print("%d", static_cast<int32_t>(value));
        case 'x':
            return Print("0x%X", static_cast<uint32_t>(value));
        case 'c':
            return Print("#%02x%02x%02x", static_cast<uint32_t>(value & 0xFF), static_cast<uint32_t>(value >> 8 & 0xFF),
                         static_cast<uint32_t>(value >> 16 & 0xFF));
        case 's':
            return '"' + trace.TextAt(value) + '"';
        case 'r':
            return Numbers(static_cast<const int32_t*>(trace.memory(value, 16)), 4);
        case 'p':
            return Numbers(static_cast<const int32_t*>(trace.memory(value, next * 8)), next * 2);
        default:
            return FontText(static_cast<const uint8_t*>(trace.memory(value, kFontBytes)));
    }
}

// Of a memory context: the lowest that no other one has.
std::string FreeNumber(const std::map<uint64_t, std::string>& names) {
    std::string number;
    for (int i = 1; number.empty(); ++i) {
        const std::string wanted = "memory " + std::to_string(i);
        const bool isUsed = std::any_of(names.begin(), names.end(), [&](const auto& n) { return n.second == wanted; });
        number = isUsed ? "" : std::to_string(i);
    }
    return number;
}

std::string Describe(const ControlState& control) {
    std::string line = std::to_string(control.id) + " " + control.kind + " \"" + control.text + '"';
    line += control.enabled ? "" : " disabled";
    line += control.check != 0 ? " checked" : "";
    for (const std::string& item : control.items) {
        line += " [" + item + "]";
    }
    return control.selected >= 0 ? line + " selected " + std::to_string(control.selected) : line;
}

}  // namespace

std::string DateText(std::span<const uint16_t, 8> date) {
    return Print("%d-%d-%d", date[0], date[1], date[3]);
}

std::span<const CallShape> CallShapes() {
    return kShapes;
}

const CallShape& ShapeOf(const std::string& name) {
    const auto* found =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const CallShape& s) { return name == s.name; });
    if (found == std::end(kShapes)) {
        fprintf(stderr, "no shape of %s\n", name.c_str());
        abort();
    }
    return *found;
}

std::string Trace::NameOf(uint64_t handle) const {
    const auto found = names.find(handle);
    return found != names.end() ? found->second : handle == 0 ? "null" : "other";
}

std::string Trace::TextAt(uint64_t address) const {
    std::string text;
    if (address == 0) {
        return text;
    }
    for (uint16_t unit = 0;; address += sizeof(unit)) {
        memcpy(&unit, memory(address, sizeof(unit)), sizeof(unit));
        if (unit == 0) {
            return text;
        }
        text += unit >= ' ' && unit < 0x7F ? static_cast<char>(unit) : '?';
    }
}

std::string Trace::Note(const CallShape& shape, std::span<const uint64_t> arguments) {
    std::string texts;
    uint64_t handle = 0;
    for (size_t i = 0; shape.arguments[i] != 0; ++i) {
        const char letter = shape.arguments[i];
        if (letter == '-') {
            continue;
        }
        handle = letter == 'h' ? arguments[i] : handle;
        texts += " " + ArgumentText(*this, letter, arguments[i], letter == 'p' ? arguments[i + 1] : 0);
    }
    if (!shape.silent) {
        Add(shape.name + texts);
    }
    if (shape.releases) {
        selected.erase(handle);
        if (std::any_of(selected.begin(), selected.end(), [&](const auto& s) { return s.second.count(handle) != 0; })) {
            Add("  still selected: " + NameOf(handle));
        }
        names.erase(handle);
    }
    if (shape.makes == std::string_view("memory")) {
        texts = " " + FreeNumber(names);
    }
    return shape.makes[0] != 0 ? shape.makes + texts : "";
}

void Trace::NoteWatermark(uint64_t window, uint32_t right, uint32_t bottom) {
    Add("watermark of " + NameOf(window) + " " + std::to_string(right) + " " + std::to_string(bottom));
}

void Trace::NoteKeyboard(uint64_t window, bool isShown) {
    Add((isShown ? "keyboard for " : "no keyboard for ") + NameOf(window));
}

void Trace::Select(uint64_t context, uint64_t object, uint64_t before) {
    selected[context].erase(before);
    selected[context].insert(object);
}

void Trace::Open(const std::string& name) {
    if (dialogsOpen++ == 0) {
        strip += "open " + name + "\n";
    }
    dialogs += "open " + name + "\n";
}

void Trace::Close(uint64_t window) {
    const std::string name = NameOf(window);
    const auto isOf = [&](const std::string& other) { return other == name || other.rfind(name + "/", 0) == 0; };
    std::erase_if(names, [&](const auto& entry) { return isOf(entry.second); });
    std::erase_if(controls, [&](const auto& entry) { return isOf(entry.first); });
    --dialogsOpen;
}

void Trace::NoteControls(uint64_t window, std::span<const ControlState> states) {
    int place = 0;
    for (const ControlState& state : states) {
        const std::string line = Describe(state);
        std::string& before = controls[NameOf(window) + "/" + std::to_string(place++)];
        if (before != line) {
            Add("  " + line);
            before = line;
        }
    }
}

std::string Trace::Leftovers() const {
    std::string text;
    for (const char* kind : {"context", "memory", "bitmap", "picture", "pen", "font", "icon"}) {
        for (const auto& [handle, name] : names) {
            text += name.rfind(kind, 0) == 0 && kept.count(handle) == 0 ? name + "\n" : "";
        }
    }
    return text;
}
