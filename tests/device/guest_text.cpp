// Bytes and texts in the guest's memory, texts unit by unit, as a system function would walk over them.

#include "tests/device/bed.h"

namespace {

template <class Text>
Text ReadUnits(Bed& bed, Address address) {
    using Unit = typename Text::value_type;
    Text text;
    while (const auto unit = address != 0 ? ReadGuest<Unit>(bed, address) : Unit{0}) {
        text += unit;
        address += sizeof(Unit);
    }
    return text;
}

}  // namespace

void WriteBytes(Bed& bed, Address to, const void* bytes, size_t count) {
    uint8_t* memory = count != 0 ? GuestMemory(bed, to, count, true) : nullptr;
    if (memory != nullptr) {
        memcpy(memory, bytes, count);
    }
}

std::u16string ReadText(Bed& bed, Address text) {
    return ReadUnits<std::u16string>(bed, text);
}

std::string ReadNarrow(Bed& bed, Address text) {
    return ReadUnits<std::string>(bed, text);
}

void WriteText(Bed& bed, Address text, std::u16string_view value) {
    for (const char16_t unit : value) {
        WriteGuest(bed, text, unit);
        text += sizeof(unit);
    }
    WriteGuest(bed, text, char16_t{0});
}

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text) {
        narrow += unit < 0x100 ? static_cast<char>(unit) : '?';
    }
    return narrow;
}

std::u16string Widen(std::string_view text) {
    return {text.begin(), text.end()};
}
