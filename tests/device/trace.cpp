// The lines of a trace.

#include "tests/device/trace.h"

#include <algorithm>
#include <cstring>

namespace {

// How one function's calls are written. A letter an argument: h handle, i number, x hexadecimal, c colour, s UTF-16
// text, r RECT*, f LOGFONTW*, p POINT* (the next argument is their number), v the value of a registry's type before it,
// m a message with its two arguments, - left out. Of messages: d SYSTEMTIME*, C LVCOLUMN*, I LVITEM*, S the state in
// one, W a request to draw the background.
struct CallShape {
    const char* name;
    const char* arguments;
    const char* makes = "";  // kind of the handle that it returns, which is then called by this and the arguments
    bool releases = false;   // the last handle among the arguments is gone afterwards
    bool silent = false;     // only keeps the names
};

// clang-format off
constexpr CallShape kShapes[] = {
    {"BeginPaint", "h-", "paint"}, {"BitBlt", "hiiiihiix"}, {"CreateCompatibleBitmap", "-ii", "bitmap"},
    {"CreateCompatibleDC", "-", "memory"}, {"CreateFontIndirectW", "f", "font"}, {"CreatePen", "iic", "pen"},
    {"CreateProcessW", "-s"}, {"DeleteDC", "h", "", true}, {"DeleteObject", "h", "", true},
    {"DestroyIcon", "h", "", true, true}, {"DrawIconEx", "hiih----x"}, {"DrawTextW", "hsirx"}, {"EnableWindow", "hi"},
    {"EndDialog", "hi"}, {"EndPaint", "h-"}, {"FillRect", "hrh"}, {"GetDC", "h", "context"},
    {"GetStockObject", "i", "stock", false, true}, {"ImageList_Create", "iixii", "images"},
    {"ImageList_Destroy", "h", "", true}, {"ImageList_ReplaceIcon", "hih"}, {"InvalidateRect", "h-i"},
    {"KillTimer", "hi"}, {"LoadBitmapW", "-i", "picture"}, {"LoadIconW", "-i", "icon", false, true},
    {"LoadImageW", "-i----", "icon", false, true}, {"MessageBoxW", "hssx"}, {"Polyline", "hpi"},
    {"RegSetValueExW", "-s-iv"}, {"ReleaseDC", "-h", "", true}, {"SelectObject", "hh"},
    {"SendDlgItemMessageW", "him"}, {"SendMessageW", "hm"}, {"SetBkColor", "hc"}, {"SetBkMode", "hi"},
    {"SetDlgItemTextW", "his"}, {"SetPixel", "hiic"}, {"SetTextColor", "hc"}, {"SetTimer", "hii-"},
    {"SetWindowTextW", "hs"}, {"StretchBlt", "hiiiihiiiix"}, {"closesocket", "h", "", true, true},
    {"socket", "---", "socket", false, true}
};
// Messages that show something, with the letter of their second argument; the first is a number.
constexpr std::pair<uint32_t, char> kMessages[] = {
    {0x00C5, '-'}, {0x00F1, '-'}, {0x0141, '-'}, {0x0143, 's'}, {0x014B, '-'}, {0x014E, '-'}, {0x014F, '-'},
    {0x0402, '-'}, {0x0467, 'i'}, {0x0465, 'W'}, {0x1002, 'd'}, {0x1003, 'h'}, {0x1009, '-'},
    {0x102B, 'S'}, {0x1030, '-'}, {0x104C, 'I'}, {0x104D, 'I'}, {0x1061, 'C'}, {0x1074, 'I'}
};
// clang-format on

template <class Value>
Value ReadAt(uint64_t address) {
    Value value;
    memcpy(&value, FromWord<const void*>(address), sizeof(value));
    return value;
}

template <class... Values>
std::string Print(const char* format, Values... values) {
    char text[160];
    snprintf(text, sizeof(text), format, values...);
    return text;
}

std::string Numbers(uint64_t address, uint64_t count) {
    std::string text = "(";
    for (uint64_t i = 0; i < count; ++i) {
        text += Print(" %d", ReadAt<int32_t>(address + i * 4));
    }
    return text + " )";
}

std::string Text(uint64_t address) {
    return address != 0 ? '"' + Narrow(FromWord<const char16_t*>(address)) + '"' : "null";
}

// The pointer that stands, aligned, at that place of a record or behind it.
uint64_t PointerPlace(const Trace& trace, uint64_t place) {
    return (place + trace.pointerBytes - 1) / trace.pointerBytes * trace.pointerBytes;
}

uint64_t PointerAt(const Trace& trace, uint64_t place) {
    const uint64_t at = PointerPlace(trace, place);
    return trace.pointerBytes == 4 ? ReadAt<uint32_t>(at) : ReadAt<uint64_t>(at);
}

// Mask, row and column, text, image.
std::string Item(const Trace& trace, uint64_t item) {
    const uint64_t image = PointerPlace(trace, item + 20) + trace.pointerBytes + 4;
    return Numbers(item, 3) + Text(PointerAt(trace, item + 20)) + Numbers(image, 1);
}

// Rectangle and window.
std::string Background(const Trace& trace, uint64_t request) {
    return Numbers(request + trace.pointerBytes, 4) + trace.NameOf(PointerAt(trace, request + trace.pointerBytes + 16));
}

std::string Arguments(const Trace& trace, const char* letters, const uint64_t* words);

const char* LetterOf(uint64_t message) {
    const auto* found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                     [&](const auto& row) { return row.first == static_cast<uint32_t>(message); });
    return found != std::end(kMessages) ? &found->second : nullptr;
}

std::string ArgumentText(const Trace& trace, char letter, const uint64_t* words) {
    const uint64_t word = words[0];
    const auto number = static_cast<uint32_t>(word);
    switch (letter) {
        case 'h':
            return trace.NameOf(word);
        case 'i':
            return Print("%d", static_cast<int32_t>(number));
        case 'x':
            return Print("0x%X", number);
        case 'c':
            return Print("#%02x%02x%02x", number & 0xFF, number >> 8 & 0xFF, number >> 16 & 0xFF);
        case 's':
            return Text(word);
        case 'r':
            return Numbers(word, 4);
        case 'p':
            return Numbers(word, words[1] * 2);
        case 'v':
            return static_cast<uint32_t>(words[-1]) == 1 ? Text(word) : Print("%u", ReadAt<uint32_t>(word));
        case 'm': {
            const char letters[] = {'x', 'i', *LetterOf(word), 0};
            return Arguments(trace, letters, words);
        }
        case 'd':
            return Print("%d-%d-%d", ReadAt<uint16_t>(word), ReadAt<uint16_t>(word + 2), ReadAt<uint16_t>(word + 6));
        case 'C':
            return Numbers(word, 3) + Text(PointerAt(trace, word + 12));
        case 'I':
            return Item(trace, word);
        case 'S':
            return Numbers(word + 12, 2);
        case 'W':  // the number of two messages: to the host, and to a spin button with its range
            return trace.NameOf(words[-3]) != "host" ? Print("%d", static_cast<int32_t>(number))
                                                     : Background(trace, word);
        default:  // a font: height, weight, face
            return Numbers(word, 1) + Numbers(word + 16, 1) + Narrow(FromWord<const char16_t*>(word + 28));
    }
}

std::string Arguments(const Trace& trace, const char* letters, const uint64_t* words) {
    std::string texts;
    for (size_t i = 0; letters[i] != 0; ++i) {
        texts += letters[i] != '-' ? " " + ArgumentText(trace, letters[i], words + i) : "";
    }
    return texts;
}

// Measuring a text draws nothing, and most messages show nothing.
bool IsOfInterest(const CallShape& shape, const uint64_t* words) {
    constexpr uint64_t kMeasure = 0x400;  // DT_CALCRECT
    const char* message = strchr(shape.arguments, 'm');
    return (shape.name != std::string("DrawTextW") || (words[4] & kMeasure) == 0) &&
           (message == nullptr || LetterOf(words[message - shape.arguments]) != nullptr);
}

void Release(Trace& trace, uint64_t handle) {
    trace.selected.erase(handle);
    for (const auto& [context, objects] : trace.selected) {
        if (objects.count(handle) != 0) {
            trace.Add("  still selected: " + trace.NameOf(handle));
        }
    }
    trace.names.erase(handle);
}

// Memory contexts are alike but for a number, the lowest that no other one has.
std::string NameOfMade(const Trace& trace, const CallShape& shape, const std::string& arguments) {
    if (shape.makes != std::string("memory")) {
        return shape.makes + arguments;
    }
    int number = 1;
    while (trace.HandleOf("memory " + std::to_string(number)) != 0) {
        ++number;
    }
    return "memory " + std::to_string(number);
}

}  // namespace

std::vector<std::pair<const char*, bool>> TracedFunctions() {
    std::vector<std::pair<const char*, bool>> functions;
    for (const CallShape& shape : kShapes) {
        functions.emplace_back(shape.name, shape.makes[0] != 0);
    }
    return functions;
}

std::string Narrow(const char16_t* text) {
    std::string narrow;
    for (; *text != 0; ++text) {
        narrow += *text >= ' ' && *text < 0x7F ? static_cast<char>(*text) : '?';
    }
    return narrow;
}

std::string Trace::NameOf(uint64_t handle) const {
    const auto found = names.find(handle);
    return found != names.end() ? found->second : handle == 0 ? "null" : "other";
}

uint64_t Trace::HandleOf(const std::string& name) const {
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const auto& entry) { return entry.second == name; });
    return found != names.end() ? found->first : 0;
}

uint64_t Trace::Call(const std::string& function, const uint64_t* words, const StandIn& perform) {
    const auto* shape =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const CallShape& s) { return function == s.name; });
    if (shape == std::end(kShapes) || !IsOfInterest(*shape, words)) {
        return perform(words);
    }
    const std::string arguments = Arguments(*this, shape->arguments, words);
    if (!shape->silent) {
        Add(function + arguments);
    }
    const uint64_t result = perform(words);
    if (shape->makes[0] != 0) {
        names[result] = NameOfMade(*this, *shape, arguments);
    }
    if (function == "SelectObject") {
        selected[words[0]].erase(result);
        selected[words[0]].insert(words[1]);
    }
    if (shape->releases) {
        Release(*this, words[strrchr(shape->arguments, 'h') - shape->arguments]);
    }
    return result;
}

void Trace::Close(uint64_t window) {
    const std::string name = NameOf(window) + "/";
    std::erase_if(names, [&](const auto& entry) { return (entry.second + "/").rfind(name, 0) == 0; });
}

std::string Trace::Leftovers() const {
    std::string leftovers;
    for (const char* kind : {"context", "memory", "bitmap", "picture", "pen", "font", "icon", "socket"}) {
        for (const auto& [handle, name] : names) {
            leftovers += name.rfind(kind, 0) == 0 && kept.count(handle) == 0 ? name + "\n" : "";
        }
    }
    return leftovers;
}
