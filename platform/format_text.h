// platform/format_text.h - bounded text formatting whose format strings are checked against their arguments at compile
// time.
//
// A handheld's compiler and ours pass variadic arguments differently, and the C libraries disagree on "%s" and "%S", so
// no variadic system function is called. The subset: %d %0Nd (any integer up to 32 bits, read as signed) %X %0NX (read
// as unsigned), %.Nf (double, N 0 to 9), %s (text of the output's own width), %S (text of the other width, converted
// with the system's ANSI code page), %%. A wrong type or a missing argument does not compile. Texts are the platform's
// own for all of these.
#pragma once

#include "platform/system.h"

#include <span>
#include <type_traits>

namespace format_detail {

enum class Kind : uint8_t { Integer, Real, Wide, Narrow };

struct Argument {
    Kind kind;
    union {
        uint32_t integer;
        double real;
        const wchar_t* wide;
        const char* narrow;
    };
};

template <class Value>
constexpr Kind KindOf() {
    using Plain = std::decay_t<Value>;
    if constexpr (std::is_same_v<Plain, double>) {
        return Kind::Real;
    } else if constexpr (std::is_convertible_v<Plain, const wchar_t*>) {
        return Kind::Wide;
    } else if constexpr (std::is_convertible_v<Plain, const char*>) {
        return Kind::Narrow;
    } else {
        static_assert(std::is_integral_v<Plain> && sizeof(Plain) <= 4, "not a formattable type");
        return Kind::Integer;
    }
}

template <class Value>
Argument MakeArgument(const Value& value) {
    Argument argument{};
    argument.kind = KindOf<Value>();
    if constexpr (KindOf<Value>() == Kind::Real) {
        argument.real = value;
    } else if constexpr (KindOf<Value>() == Kind::Wide) {
        argument.wide = value;
    } else if constexpr (KindOf<Value>() == Kind::Narrow) {
        argument.narrow = value;
    } else {
        argument.integer = static_cast<uint32_t>(value);
    }
    return argument;
}

template <class Char>
constexpr bool Accepts(Char conversion, Kind kind) {
    constexpr Kind same = std::is_same_v<Char, wchar_t> ? Kind::Wide : Kind::Narrow;
    constexpr Kind other = std::is_same_v<Char, wchar_t> ? Kind::Narrow : Kind::Wide;
    switch (conversion) {
        case 'd':
        case 'X':
            return kind == Kind::Integer;
        case 'f':
            return kind == Kind::Real;
        case 's':
            return kind == same;
        case 'S':
            return kind == other;
        default:
            return false;
    }
}

// One "%..." of a format: its minimal width in zeros, its digits after the point, its conversion and where it ends.
template <class Char>
struct Conversion {
    int zeros = 0;
    int decimals = 0;
    Char letter = 0;
    const Char* end = nullptr;
};

template <class Char>
constexpr Conversion<Char> ParseConversion(const Char* afterPercent) {
    Conversion<Char> conversion;
    const Char* p = afterPercent;
    if (p[0] == '0' && p[1] >= '1' && p[1] <= '9') {
        conversion.zeros = p[1] - '0';
        p += 2;
    } else if (p[0] == '.' && p[1] >= '0' && p[1] <= '9') {
        conversion.decimals = p[1] - '0';
        p += 2;
    }
    conversion.letter = *p;
    conversion.end = *p == 0 ? p : p + 1;
    return conversion;
}

void FormatDoesNotMatchItsArguments();  // never defined: reaching it ends constant evaluation

template <class Char, class... Values>
struct Format {
    const Char* text;

    template <size_t Size>
    consteval Format(const Char (&literal)[Size]) : text(literal) {  // NOLINT: implicit on purpose
        constexpr Kind kinds[] = {KindOf<Values>()..., Kind::Integer};
        size_t used = 0;
        for (const Char* p = literal; *p != 0;) {
            if (*p++ != '%') {
                continue;
            }
            if (*p == '%') {
                ++p;
                continue;
            }
            const Conversion<Char> conversion = ParseConversion(p);
            if (used >= sizeof...(Values) || !Accepts(conversion.letter, kinds[used])) {
                FormatDoesNotMatchItsArguments();
            }
            ++used;
            p = conversion.end;
        }
        if (used != sizeof...(Values)) {
            FormatDoesNotMatchItsArguments();
        }
    }
};

size_t Write(std::span<wchar_t> out, const wchar_t* format, const Argument* arguments);
size_t Write(std::span<char> out, const char* format, const Argument* arguments);

}  // namespace format_detail

// Writes the formatted text and its terminator into `out`, cut to what fits. Returns the length without the terminator.
template <class... Values>
size_t FormatText(std::span<wchar_t> out, std::type_identity_t<format_detail::Format<wchar_t, Values...>> format,
                  const Values&... values) {
    const format_detail::Argument arguments[] = {format_detail::MakeArgument(values)..., {}};
    return format_detail::Write(out, format.text, arguments);
}

template <class... Values>
size_t FormatText(std::span<char> out, std::type_identity_t<format_detail::Format<char, Values...>> format,
                  const Values&... values) {
    const format_detail::Argument arguments[] = {format_detail::MakeArgument(values)..., {}};
    return format_detail::Write(out, format.text, arguments);
}

// FormatText behind the text that `out` already holds. Returns the length of the whole.
template <size_t Size, class... Values>
size_t AppendText(wchar_t (&out)[Size], std::type_identity_t<format_detail::Format<wchar_t, Values...>> format,
                  const Values&... values) {
    const size_t used = wcslen(out);
    return used + FormatText(std::span<wchar_t>(out + used, Size - used), format, values...);
}
