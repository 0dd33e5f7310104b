// The lines of a trace.

#include "tests/device/trace.h"

#include <algorithm>
#include <cstring>

namespace {

// clang-format off
constexpr CallShape kShapes[] = {
    {"BeginPaint", "h-", "paint"}, {"BitBlt", "hiiiihiix"}, {"CreateCompatibleBitmap", "-ii", "bitmap"},
    {"CreateCompatibleDC", "-", "memory"}, {"CreateFontIndirectW", "(i---i--t)", "font"}, {"CreatePen", "iix", "pen"},
    {"CreateProcessW", "-s"}, {"DeleteDC", "h", "", true}, {"DeleteObject", "h", "", true},
    {"DestroyIcon", "h", "", true, true}, {"DrawIconEx", "hiih----x"}, {"DrawTextW", "hsi(iiii)x"},
    {"EnableWindow", "hi"}, {"EndDialog", "hi"}, {"EndPaint", "h-"}, {"FillRect", "h(iiii)h"},
    {"GetDC", "h", "context"}, {"GetStockObject", "i", "shared", false, true}, {"ImageList_Create", "iixii", "images"},
    {"ImageList_Destroy", "h", "", true}, {"ImageList_ReplaceIcon", "hih"}, {"InvalidateRect", "h-i"},
    {"KillTimer", "hi"}, {"LoadBitmapW", "-i", "picture"}, {"LoadIconW", "-i", "icon", false, true},
    {"LoadImageW", "-i----", "icon", false, true}, {"MessageBoxW", "hssx"}, {"Polyline", "h(iiii)i"},
    {"RegSetValueExW", "-s-iv"}, {"ReleaseDC", "-h", "", true}, {"SelectObject", "hh"},
    {"SendDlgItemMessageW", "him"}, {"SendMessageW", "hm"}, {"SetBkColor", "hx"}, {"SetBkMode", "hi"},
    {"SetDlgItemTextW", "his"}, {"SetPixel", "hiix"}, {"SetTextColor", "hx"}, {"SetTimer", "hii-"},
    {"SetWindowTextW", "hs"}, {"StretchBlt", "hiiiihiiiix"}, {"closesocket", "h", "", true, true},
    {"socket", "---", "socket", false, true}
};
// Messages that show or ask something, and their two arguments.
const std::map<uint32_t, const char*> kMessages = {
    {0x00C5, "i"}, {0x00F0, "="}, {0x00F1, "i"}, {0x0141, "i"}, {0x0143, "is"}, {0x014B, "i"},
    {0x014E, "i"}, {0x014F, "i"}, {0x0402, "i"}, {0x0467, "ii"}, {0x1002, "i(xxxx)"},
    {0x1003, "ih"}, {0x1004, "="}, {0x1009, "i"}, {0x100C, "ii="}, {0x102B, "i(---ii)"}, {0x1030, "i"},
    {0x104B, "i(iii)=-(-----s-ii)"}, {0x104C, "i(iii--s-i)"}, {0x104D, "i(iii--s-i)="}, {0x1053, "i(i)="},
    {0x1061, "i(iiis)"}, {0x1073, "i(-ii)=-(-----s)"}, {0x1074, "i(iii--s-i)"}, {0x8001, "ih"}
};
// clang-format on

std::string Text(uint64_t address) {
    return address != 0 ? '"' + Narrow(reinterpret_cast<const char16_t*>(address)) + '"' : "null";
}

uint64_t ReadWord(uint64_t address, uint32_t bytes) {
    uint64_t word = 0;
    memcpy(&word, reinterpret_cast<const void*>(address), bytes);
    return word;
}

// The values from `address` on, up to the end of the letters or of the record that they describe.
std::string Describe(const Trace& trace, const char*& letter, uint64_t address, uint32_t wordBytes);

std::string Arguments(const Trace& trace, const char* letters, const uint64_t* words) {
    return Describe(trace, letters, reinterpret_cast<uintptr_t>(words), sizeof(*words));
}

std::string ValueText(const Trace& trace, char letter, uint64_t address, uint64_t word) {
    switch (letter) {
        case 'h':
            return trace.NameOf(word);
        case 'i':
            return std::to_string(static_cast<int32_t>(word));
        case 's':
            return Text(word);
        case 't':
            return Text(address);
        case 'v':
            return ReadWord(address - sizeof(word), 4) == 1 ? Text(word) : std::to_string(ReadWord(word, 4));
        case 'm':
            return Hex(word) + Arguments(trace, kMessages.at(static_cast<uint32_t>(word)),
                                         reinterpret_cast<const uint64_t*>(address) + 1);
        default:
            return Hex(static_cast<uint32_t>(word));
    }
}

std::string Describe(const Trace& trace, const char*& letter, uint64_t address, uint32_t wordBytes) {
    std::string texts;
    for (; strchr("=)", *letter) == nullptr; ++letter) {
        const uint32_t bytes = *letter == 's' ? std::max(wordBytes, trace.pointerBytes) : wordBytes;
        address = (address + bytes - 1) / bytes * bytes;
        const uint64_t word = ReadWord(address, bytes);
        if (*letter == '(') {
            texts += " (" + Describe(trace, ++letter, word, 4) + " )";
        } else if (*letter != '-') {
            texts += " " + ValueText(trace, *letter, address, word);
        }
        address += bytes;
    }
    return texts;
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

std::string Hex(uint64_t value) {
    char text[24];
    snprintf(text, sizeof(text), "0x%llX", static_cast<unsigned long long>(value));
    return text;
}

std::string Trace::NameOf(uint64_t handle) const {
    const auto found = names.find(handle);
    return found != names.end() ? found->second : handle == 0 ? "null" : "other";
}

void Trace::Add(const std::string& line) {
    if (isSilent) {
        return;
    }
    text += line + "\n";
    if (!reference.empty()) {
        if (difference.empty() && line != reference.front()) {
            difference = text.substr(text.rfind('#')) + "instead of " + reference.front();
        }
        reference.pop_front();
    }
}

uint64_t Trace::Call(const std::string& function, const uint64_t* words, const StandIn& perform) {
    const auto* shape =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const CallShape& s) { return function == s.name; });
    if (shape == std::end(kShapes)) {
        return perform(words);
    }
    const char* message = strchr(shape->arguments, 'm');
    const uint64_t* asked = words + (message != nullptr ? message - shape->arguments : 0);
    const auto found = message != nullptr ? kMessages.find(static_cast<uint32_t>(*asked)) : kMessages.end();
    if (message != nullptr && found == kMessages.end()) {
        return perform(words);  // shows nothing
    }
    const std::string arguments = Arguments(*this, shape->arguments, words);
    if (!shape->isSilent) {
        Add(function + arguments);
    }
    const uint64_t result = perform(words);
    if (const char* answer = message != nullptr ? strchr(found->second, '=') : nullptr) {
        Add("= " + std::to_string(static_cast<int32_t>(result)) + Arguments(*this, answer + 1, asked + 1));
    }
    if (shape->makes[0] != 0) {
        names[result] = shape->makes + arguments;
    }
    if (shape->releases) {
        names.erase(words[strrchr(shape->arguments, 'h') - shape->arguments]);
    }
    return result;
}

void Trace::Open(uint64_t window, uint32_t number, std::span<const uint8_t> dialogTemplate) {
    uint32_t sum = 0;
    for (const uint8_t byte : dialogTemplate) {
        sum = sum * 31 + byte;
    }
    names[window] = "dialog " + std::to_string(number);
    Add("open " + names[window] + " " + Hex(sum));
}
