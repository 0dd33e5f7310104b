// Texts and bytes: what coredll has of the C library, and the conversion between wide and narrow (code page 1252).

#include "tests/device/bed.h"

#include <algorithm>

namespace {

// Code page 1252 from 0x80 to 0x9F; 0 is not assigned. All else is as in Latin-1.
constexpr char16_t kUpperControls[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char16_t ToWide(uint8_t byte) {
    const bool special = byte >= 0x80 && byte < 0xA0 && kUpperControls[byte - 0x80] != 0;
    return special ? kUpperControls[byte - 0x80] : byte;
}

uint8_t ToNarrow(char16_t unit) {
    for (int byte = 0; byte < 0x100; ++byte) {
        if (ToWide(static_cast<uint8_t>(byte)) == unit) {
            return static_cast<uint8_t>(byte);
        }
    }
    return '?';
}

// Both ways: code page, flags, source, its units (-1: with its terminator), target, its room (0: asks for it).
template <class From, class To, To Convert(From)>
uint32_t Translate(Bed& bed, const Arguments& a) {
    constexpr uint32_t kInsufficientBuffer = 122;
    uint32_t count = a[3];
    if (a.Signed(3) < 0) {
        count = 0;
        while (ReadGuest<From>(bed, a[2] + count++ * sizeof(From)) != 0) {
        }
    }
    const bool fits = count <= a[5];
    for (uint32_t i = 0; i < std::min(count, a[5]); ++i) {
        WriteGuest(bed, a[4] + i * sizeof(To), Convert(ReadGuest<From>(bed, a[2] + i * sizeof(From))));
    }
    if (a[5] != 0 && !fits) {
        bed.lastError = kInsufficientBuffer;
        return 0;
    }
    return count;
}

template <class Text>
uint32_t Compare(const Text& left, const Text& right) {
    return static_cast<uint32_t>(left.compare(right));
}

std::u16string Lower(std::u16string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char16_t unit) -> char16_t {
        return (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7) ? unit + 0x20 : unit;
    });
    return text;
}

uint32_t wcsrchr(Bed& bed, const Arguments& a) {
    const size_t at = ReadText(bed, a[0]).rfind(static_cast<char16_t>(a[1]));
    return at == std::u16string::npos ? 0 : a[0] + static_cast<uint32_t>(at * sizeof(char16_t));
}

uint32_t wcstol(Bed& bed, const Arguments& a) {
    const std::string text = Narrow(ReadText(bed, a[0]));
    char* end = nullptr;
    const long value = strtol(text.c_str(), &end, static_cast<int>(a[2]));
    if (a[1] != 0) {
        WriteGuest(bed, a[1], a[0] + static_cast<uint32_t>(end - text.c_str()) * 2);
    }
    return static_cast<uint32_t>(std::clamp<long>(value, INT32_MIN, INT32_MAX));
}

uint32_t memmove(Bed& bed, const Arguments& a) {
    const uint8_t* from = a[2] != 0 ? GuestMemory(bed, a[1], a[2]) : nullptr;
    uint8_t* to = a[2] != 0 ? GuestMemory(bed, a[0], a[2], true) : nullptr;
    if (from != nullptr && to != nullptr) {
        ::memmove(to, from, a[2]);
    }
    return a[0];
}

uint32_t memset(Bed& bed, const Arguments& a) {
    if (uint8_t* to = a[2] != 0 ? GuestMemory(bed, a[0], a[2], true) : nullptr) {
        ::memset(to, static_cast<int>(a[1]), a[2]);
    }
    return a[0];
}

uint32_t memcmp(Bed& bed, const Arguments& a) {
    const uint8_t* left = GuestMemory(bed, a[0], a[2]);
    const uint8_t* right = GuestMemory(bed, a[1], a[2]);
    return left != nullptr && right != nullptr ? static_cast<uint32_t>(::memcmp(left, right, a[2])) : 0;
}

constexpr StandInRow kRows[] = {
    {"MultiByteToWideChar", Translate<uint8_t, char16_t, ToWide>},
    {"WideCharToMultiByte", Translate<char16_t, uint8_t, ToNarrow>},
    {"wcslen", [](Bed& bed, const Arguments& a) { return static_cast<uint32_t>(ReadText(bed, a[0]).size()); }},
    {"wcscmp", [](Bed& bed, const Arguments& a) { return Compare(ReadText(bed, a[0]), ReadText(bed, a[1])); }},
    {"_wcsicmp",
     [](Bed& bed, const Arguments& a) { return Compare(Lower(ReadText(bed, a[0])), Lower(ReadText(bed, a[1]))); }},
    {"wcsrchr", wcsrchr},
    {"wcstol", wcstol},
    {"strlen", [](Bed& bed, const Arguments& a) { return static_cast<uint32_t>(ReadNarrow(bed, a[0]).size()); }},
    {"strcmp", [](Bed& bed, const Arguments& a) { return Compare(ReadNarrow(bed, a[0]), ReadNarrow(bed, a[1])); }},
    {"memcpy", memmove},
    {"memmove", memmove},
    {"memset", memset},
    {"memcmp", memcmp},
};

}  // namespace

std::span<const StandInRow> TextStandIns() {
    return kRows;
}
