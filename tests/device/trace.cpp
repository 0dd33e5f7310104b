// The lines of a trace: functions with their arguments, at last the files.

#include "tests/device/player.h"

#include <algorithm>
#include <cstring>
#include <fstream>

// How a function's calls are written. A letter an argument: w window, i number, s UTF-16 text, v the value of a
// registry's type before it, m a message with its two arguments, - left out. Letters in parentheses are the fields of a
// record that is pointed to: 32 bits each, but for texts. What stands behind "=" is described after the call, with its
// result, on a line of its own.
// clang-format off
const std::map<std::string, const char*> kTracedFunctions = {
    {"BeginPaint", "w"}, {"BitBlt", "-iiii-iii"}, {"CreateCompatibleBitmap", "-ii"}, {"CreateFontIndirectW", "(i---i)"},
    {"CreatePen", "iii"}, {"CreateProcessW", "-s"}, {"DeleteDC", "-"}, {"DeleteObject", "-"}, {"DrawIconEx", "-ii-----i"},
    {"DrawTextW", "-si(iiii)i"}, {"EnableWindow", "wi"}, {"EndDialog", "wi"}, {"FillRect", "-(iiii)"}, {"GetDC", "w"},
    {"GetDlgItemTextW", "wi=--s"}, {"ImageList_Create", "iiiii"}, {"ImageList_Destroy", "-"},
    {"ImageList_ReplaceIcon", "-i"}, {"InvalidateRect", "w-i"}, {"KillTimer", "wi"}, {"LoadBitmapW", "-i"},
    {"LoadIconW", "-i"}, {"LoadImageW", "-i"}, {"MessageBoxW", "wssi"}, {"Polyline", "-(iiii)i"}, {"PostMessageW", "wii"},
    {"RegSetValueExW", "-s-iv"}, {"SelectObject", "-"}, {"SendDlgItemMessageW", "wim"}, {"SendMessageW", "wm"},
    {"SetBkColor", "-i"}, {"SetBkMode", "-i"}, {"SetDlgItemTextW", "wis"}, {"SetPixel", "-iii"}, {"SetTextColor", "-i"},
    {"SetTimer", "wii"}, {"SetWindowTextW", "ws"}, {"StretchBlt", "-iiii-iiiii"},
};

namespace {

// Messages that show or ask something, and their two arguments; others are left out.
const std::map<uint32_t, const char*> kMessages = {
    {0x00F0, "="}, {0x00F1, "i"}, {0x0143, "is"}, {0x0147, "="}, {0x014B, "i"}, {0x014E, "i"}, {0x0402, "i"},
    {0x1002, "i(iiii)"}, {0x1004, "="}, {0x1009, "i"}, {0x100C, "ii="}, {0x104B, "i(iii)=-(-----s-ii)"},
    {0x104C, "i(iii--s-i)"}, {0x104D, "i(iii--s-i)="}, {0x1053, "i(i)="}, {0x1061, "i(iiis)"},
    {0x1073, "i(-ii)=-(-----s)"}, {0x1074, "i(iii--s-i)"},
};
// clang-format on

uint64_t ReadWord(uint64_t address, size_t bytes) {
    uint64_t word = 0;
    memcpy(&word, reinterpret_cast<const void*>(address), bytes);
    return word;
}

std::string Number(uint64_t word) {
    return std::to_string(static_cast<int32_t>(word));
}

// The values from `address` on, up to the end of the letters or of the record that they describe.
std::string Describe(const char*& letter, uint64_t address, size_t wordBytes) {
    std::string texts;
    for (; strchr("=)", *letter) == nullptr; ++letter) {
        const size_t bytes = *letter == 's' ? std::max(wordBytes, kPointerBytes) : wordBytes;
        address = (address + bytes - 1) / bytes * bytes;
        const uint64_t word = ReadWord(address, bytes);
        if (*letter == '(') {
            texts += " (" + Describe(++letter, word, 4) + " )";
        } else if (*letter == 's' || (*letter == 'v' && ReadWord(address - sizeof(word), 4) == 1)) {
            texts += word != 0 ? " \"" + Narrow(reinterpret_cast<const char16_t*>(word)) + '"' : " null";
        } else if (*letter == 'm') {
            const char* letters = kMessages.at(static_cast<uint32_t>(word));
            texts += " " + Number(word) + Describe(letters, address + sizeof(word), sizeof(word));
        } else if (*letter != '-') {
            texts += " " + Number(*letter == 'w' ? NumberOf(word) : *letter == 'v' ? ReadWord(word, 4) : word);
        }
        address += bytes;
    }
    return texts;
}

std::string Arguments(const char* letters, const uint64_t* words) {
    return Describe(letters, reinterpret_cast<uintptr_t>(words), sizeof(*words));
}

}  // namespace

std::string Narrow(const char16_t* text) {
    std::string narrow;
    for (; *text != 0; ++text) {
        narrow += *text >= ' ' && *text < 0x7F ? static_cast<char>(*text) : '?';
    }
    return narrow;
}

void Add(const std::string& line) {
    player.trace += line + "\n";
    if (!player.reference.empty()) {
        if (player.difference.empty() && line != player.reference.front()) {
            player.difference = player.trace.substr(player.trace.rfind('#')) + "instead of " + player.reference.front();
        }
        player.reference.pop_front();
    }
}

uint64_t TraceCall(const std::string& function, const uint64_t* words, const StandIn& perform) {
    const auto shape = kTracedFunctions.find(function);
    const char* letters = shape != kTracedFunctions.end() ? shape->second : "";
    const char* message = strchr(letters, 'm');
    const uint64_t* asked = message != nullptr ? words + (message - letters) : words;
    const auto known = message != nullptr ? kMessages.find(static_cast<uint32_t>(*asked++)) : kMessages.end();
    if (*letters == 0 || (message != nullptr && known == kMessages.end())) {
        return perform(words);
    }
    Add((function == "LoadImageW" ? "LoadIconW" : function) + Arguments(letters, words));  // a desktop's way to an icon
    const uint64_t result = perform(words);
    if (const char* answer = strchr(message != nullptr ? known->second : letters, '=')) {
        Add("= " + Number(result) + Arguments(answer + 1, asked));
    }
    return result;
}

void AddFiles() {
    std::map<std::string, std::string> found;
    for (const char* folder : {"My Documents", "Program Files/Ostrik"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(player.root / folder)) {
            std::ifstream file(entry.path(), std::ios::binary);
            std::string& bytes = found[entry.path().lexically_relative(player.root).generic_string()];
            for (char byte = 0; file.get(byte);) {
                bytes += ' ' + std::to_string(byte);
            }
        }
    }
    for (const auto& [name, bytes] : found) {
        Add(name + ":" + bytes);
    }
}
