// The lines of a trace.

#include "tests/device/trace.h"

#include <algorithm>
#include <cstring>

namespace {

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
// Messages that show or ask something. The first argument is a number; the second is left out, a text, or it points to a record
// of words and (aligned) pointers: s text, h handle, * left out.
constexpr struct Message {
    uint32_t number;
    const char* letters;
    const char* record = nullptr;
} kMessages[] = {
    {0x00C5, "xi"}, {0x00F0, "x"}, {0x00F1, "xi"}, {0x0141, "xi"}, {0x0143, "xis"}, {0x014B, "xi"},
    {0x014E, "xi"}, {0x014F, "xi"}, {0x0402, "xi"}, {0x0465, "xi", "*iiiih"}, {0x0467, "xii"},
    {0x1002, "xi", "xxxx"}, {0x1003, "xih"}, {0x1009, "xi"}, {0x100C, "xii"}, {0x102B, "xi", "---ii"},
    {0x1030, "xi"}, {0x104B, "xi", "iii"}, {0x104C, "xi", "iii--s-i"}, {0x104D, "xi", "iii--s-i"},
    {0x1053, "xi", "i"}, {0x1061, "xi", "iiis"}, {0x1073, "xi", "-ii"}, {0x1074, "xi", "iii--s-i"}
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

std::string ArgumentText(const Trace& trace, char letter, const uint64_t* words);

std::string Arguments(const Trace& trace, const char* letters, const uint64_t* words) {
    std::string texts;
    for (size_t i = 0; letters[i] != 0; ++i) {
        texts += letters[i] != '-' ? " " + ArgumentText(trace, letters[i], words + i) : "";
    }
    return texts;
}

std::string Record(const Trace& trace, const char* fields, uint64_t address) {
    std::string texts;
    for (; *fields != 0; ++fields) {
        const uint64_t bytes = strchr("sh*", *fields) != nullptr ? trace.pointerBytes : 4;
        address = (address + bytes - 1) / bytes * bytes;
        const uint64_t value = bytes == 4 ? ReadAt<uint32_t>(address) : ReadAt<uint64_t>(address);
        texts += strchr("-*", *fields) == nullptr ? " " + ArgumentText(trace, *fields, &value) : "";
        address += bytes;
    }
    return texts;
}

const Message* FindMessage(uint64_t number) {
    const auto* found = std::find_if(std::begin(kMessages), std::end(kMessages), [&](const Message& message) {
        return message.number == static_cast<uint32_t>(number);
    });
    return found != std::end(kMessages) ? found : nullptr;
}

// One number belongs to two messages: the host's has a record, the range of a spin button is a number.
std::string MessageText(const Trace& trace, const uint64_t* words) {
    const Message& message = *FindMessage(words[0]);
    const bool hasRecord = message.record != nullptr && (message.number != 0x0465 || trace.NameOf(words[-1]) == "host");
    return Arguments(trace, message.letters, words) + (hasRecord ? Record(trace, message.record, words[2]) : "");
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
        case 'm':
            return MessageText(trace, words);
        default:  // a font: height, weight, face
            return Numbers(word, 1) + Numbers(word + 16, 1) + Narrow(FromWord<const char16_t*>(word + 28));
    }
}

// Measuring a text draws nothing, and most messages show nothing.
bool IsOfInterest(const CallShape& shape, const uint64_t* words) {
    constexpr uint64_t kMeasure = 0x400;  // DT_CALCRECT
    const char* message = strchr(shape.arguments, 'm');
    return (shape.name != std::string("DrawTextW") || (words[4] & kMeasure) == 0) &&
           (message == nullptr || FindMessage(words[message - shape.arguments]) != nullptr);
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

}  // namespace

std::span<const CallShape> TracedCalls() {
    return kShapes;
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
        std::string& name = names[result] = shape->makes + arguments;
        name += name == "memory" ? std::to_string(CountOf(name)) : "";  // alike but for a number
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

int64_t Trace::CountOf(const std::string& kind) const {
    return std::count_if(names.begin(), names.end(),
                         [&](const auto& entry) { return entry.second.rfind(kind, 0) == 0; });
}
