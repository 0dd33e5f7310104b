// Texts and bytes: what coredll has of the C library, and the conversion between wide and narrow.

#include "tests/device/stand_in.h"

#include <algorithm>

namespace {

using Text = std::u16string;

// Both ways: code page, flags, source, its units, target, its room (0: asks for it). Between 0x80 and 0x9F a handheld
// knows more letters than Latin-1; the script has none of them.
template <class From, class To>
uint32_t Translate(Bed& bed, uint32_t, uint32_t, Address source, uint32_t units, Address target, uint32_t room) {
    for (uint32_t i = 0; i < std::min(units, room); ++i) {
        const auto letter = ReadGuest<From>(bed, source + i * sizeof(From));
        WriteGuest(bed, target + i * sizeof(To), static_cast<To>(letter < 0x100 ? letter : '?'));
    }
    return room != 0 && units > room ? 0 : units;
}

Text Lower(Text text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char16_t unit) -> char16_t {
        return (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7) ? unit + 0x20 : unit;
    });
    return text;
}

uint32_t FindLast(Bed& bed, Address text, uint32_t unit) {
    const size_t at = ReadText(bed, text).rfind(static_cast<char16_t>(unit));
    return at == Text::npos ? 0 : text + static_cast<uint32_t>(at * sizeof(char16_t));
}

int64_t ToNumber(Bed&, Text text, uint32_t, int base) {
    return std::clamp<long>(strtol(Narrow(text).c_str(), nullptr, base), INT32_MIN, INT32_MAX);
}

Address Move(Bed& bed, Address to, Address from, uint32_t bytes) {
    if (const uint8_t* source = bytes != 0 ? GuestMemory(bed, from, bytes) : nullptr) {
        WriteBytes(bed, to, std::vector<uint8_t>(source, source + bytes).data(), bytes);
    }
    return to;
}

Address Fill(Bed& bed, Address to, uint32_t value, uint32_t bytes) {
    WriteBytes(bed, to, std::vector<uint8_t>(bytes, static_cast<uint8_t>(value)).data(), bytes);
    return to;
}

int CompareBytes(Bed& bed, Address left, Address right, uint32_t bytes) {
    const uint8_t* first = GuestMemory(bed, left, bytes);
    const uint8_t* second = GuestMemory(bed, right, bytes);
    return first != nullptr && second != nullptr ? memcmp(first, second, bytes) : 0;
}

}  // namespace

StandInTable TextStandIns() {
    return {
        {"MultiByteToWideChar", Translate<uint8_t, char16_t>},
        {"WideCharToMultiByte", Translate<char16_t, uint8_t>},
        {"wcslen", [](Bed&, Text text) { return text.size(); }},
        {"wcscmp", [](Bed&, Text left, Text right) { return left.compare(right); }},
        {"_wcsicmp", [](Bed&, Text left, Text right) { return Lower(left).compare(Lower(right)); }},
        {"wcsrchr", FindLast},
        {"wcstol", ToNumber},
        {"strcmp", [](Bed&, std::string left, std::string right) { return left.compare(right); }},
        {"memcpy", Move},
        {"memmove", Move},
        {"memset", Fill},
        {"memcmp", CompareBytes},
    };
}
