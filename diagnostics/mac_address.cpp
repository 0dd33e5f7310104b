// Hardware addresses as bytes and as text.

#include "diagnostics/mac_address.h"

#include "platform/format_text.h"

namespace {

// Any character from ":" on counts as a letter, as the list itself writes only 0 to 9 and A to F.
int DigitValue(wchar_t digit) {
    return digit < L':' ? digit - L'0' : digit - L'A' + 10;
}

}  // namespace

bool MacEquals(const MacAddress& a, const MacAddress& b) {
    return memcmp(a.bytes, b.bytes, sizeof(a.bytes)) == 0;
}

void FormatMacText(const MacAddress& mac, wchar_t (&text)[kMacTextUnits]) {
    const uint8_t* b = mac.bytes;
    FormatText(text, L"%02X:%02X:%02X:%02X:%02X:%02X", b[0], b[1], b[2], b[3], b[4], b[5]);
}

bool ParseMacText(const wchar_t* text, MacAddress& mac) {
    constexpr size_t kUnitsPerByte = 3;  // the separator is not looked at
    if (wcslen(text) + 1 < kMacTextUnits) {
        return false;
    }
    for (size_t i = 0; i < sizeof(mac.bytes); ++i) {
        const wchar_t* digits = text + kUnitsPerByte * i;
        mac.bytes[i] = static_cast<uint8_t>(DigitValue(digits[0]) * 16 + DigitValue(digits[1]));
    }
    return true;
}
