// host/keyboard_keys.h - the on-screen keyboard's keys and where they lie.
#pragma once

#include "platform/system.h"

#include <span>

enum class KeyKind { Character, Shift, Hide, Virtual };

struct Key {
    KeyKind kind;
    wchar_t normal;        // the character; for a virtual key its code
    wchar_t shifted;       // the character with shift
    const wchar_t* label;  // null: the character itself
    int units;             // width; a row has kRowUnits
};

inline constexpr int kRowUnits = 14;

std::span<const std::span<const Key>> KeyboardRows();

// The key's rectangle on a keyboard of that size; rows and keys count from 0.
RECT KeyArea(SIZE keyboard, size_t row, size_t key);

// The key at a point, or null.
const Key* FindKey(SIZE keyboard, POINT point);
