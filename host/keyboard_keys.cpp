// Five rows of fourteen units: at 240 pixels a plain key is 17 wide, enough for a pen.

#include "host/keyboard_keys.h"

namespace {

constexpr Key Plain(wchar_t normal, wchar_t shifted) {
    return {KeyKind::Character, normal, shifted, nullptr, 1};
}

constexpr Key Letter(wchar_t letter) {
    return Plain(letter, static_cast<wchar_t>(letter - L'a' + L'A'));
}

constexpr Key Special(WORD code, const wchar_t* label, int units) {
    return {KeyKind::Virtual, static_cast<wchar_t>(code), 0, label, units};
}

constexpr Key kDigits[] = {Plain(L'1', L'!'),
                           Plain(L'2', L'@'),
                           Plain(L'3', L'#'),
                           Plain(L'4', L'$'),
                           Plain(L'5', L'%'),
                           Plain(L'6', L'^'),
                           Plain(L'7', L'&'),
                           Plain(L'8', L'*'),
                           Plain(L'9', L'('),
                           Plain(L'0', L')'),
                           Plain(L'-', L'_'),
                           Plain(L'=', L'+'),
                           {KeyKind::Character, L'\b', L'\b', L"Back", 2}};
constexpr Key kUpper[] = {Special(VK_TAB, L"Tab", 2),
                          Letter(L'q'),
                          Letter(L'w'),
                          Letter(L'e'),
                          Letter(L'r'),
                          Letter(L't'),
                          Letter(L'y'),
                          Letter(L'u'),
                          Letter(L'i'),
                          Letter(L'o'),
                          Letter(L'p'),
                          Plain(L'[', L'{'),
                          Plain(L']', L'}')};
constexpr Key kMiddle[] = {Letter(L'a'), Letter(L's'),      Letter(L'd'),       Letter(L'f'),
                           Letter(L'g'), Letter(L'h'),      Letter(L'j'),       Letter(L'k'),
                           Letter(L'l'), Plain(L';', L':'), Plain(L'\'', L'"'), Special(VK_RETURN, L"Enter", 3)};
constexpr Key kLower[] = {{KeyKind::Shift, 0, 0, L"Shift", 2},
                          Letter(L'z'),
                          Letter(L'x'),
                          Letter(L'c'),
                          Letter(L'v'),
                          Letter(L'b'),
                          Letter(L'n'),
                          Letter(L'm'),
                          Plain(L',', L'<'),
                          Plain(L'.', L'>'),
                          Plain(L'/', L'?'),
                          Special(VK_LEFT, L"<-", 1),
                          Special(VK_RIGHT, L"->", 1)};
constexpr Key kBottom[] = {{KeyKind::Hide, 0, 0, L"Hide", 2},
                           Plain(L'@', L'`'),
                           Plain(L':', L'~'),
                           Plain(L'_', L'_'),
                           Plain(L'\\', L'|'),
                           {KeyKind::Character, L' ', L' ', L"", 6},
                           Special(VK_DELETE, L"Del", 2)};

constexpr std::span<const Key> kRows[] = {kDigits, kUpper, kMiddle, kLower, kBottom};

constexpr bool EveryRowIsFull() {
    for (const std::span<const Key> row : kRows) {
        int units = 0;
        for (const Key& key : row) {
            units += key.units;
        }
        if (units != kRowUnits) {
            return false;
        }
    }
    return true;
}
static_assert(EveryRowIsFull());

}  // namespace

std::span<const std::span<const Key>> KeyboardRows() {
    return kRows;
}

RECT KeyArea(SIZE keyboard, size_t row, size_t key) {
    int units = 0;
    for (size_t before = 0; before < key; ++before) {
        units += kRows[row][before].units;
    }
    const LONG rows = static_cast<LONG>(std::size(kRows));
    const LONG top = static_cast<LONG>(row);
    return {keyboard.cx * units / kRowUnits, keyboard.cy * top / rows,
            keyboard.cx * (units + kRows[row][key].units) / kRowUnits, keyboard.cy * (top + 1) / rows};
}

const Key* FindKey(SIZE keyboard, POINT point) {
    for (size_t row = 0; row < std::size(kRows); ++row) {
        for (size_t key = 0; key < kRows[row].size(); ++key) {
            const RECT area = KeyArea(keyboard, row, key);
            if (PtInRect(&area, point)) {
                return &kRows[row][key];
            }
        }
    }
    return nullptr;
}
