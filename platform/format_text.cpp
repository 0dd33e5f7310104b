// Writes the conversions that FormatText offers. Nothing here allocates, and nothing writes past the output.

#include "platform/format_text.h"

#include <algorithm>

namespace format_detail {
namespace {

// Longest run of characters converted between the two widths at once; longer arguments are cut there.
constexpr int kConversionUnits = 256;

template <class Char>
struct Output {
    std::span<Char> space;
    size_t used = 0;

    void Put(Char character) {
        if (used + 1 < space.size()) {
            space[used++] = character;
        }
    }
    void PutText(const Char* text, size_t length) {
        for (size_t i = 0; i < length; ++i) {
            Put(text[i]);
        }
    }
};

template <class Char>
size_t Length(const Char* text) {
    size_t length = 0;
    while (text[length] != 0) {
        ++length;
    }
    return length;
}

template <class Char>
void PutNumber(Output<Char>& out, uint64_t value, uint32_t base, int minimum) {
    char digits[20];
    int count = 0;
    do {
        digits[count++] = "0123456789ABCDEF"[value % base];
        value /= base;
    } while (value != 0);
    for (int i = count; i < minimum; ++i) {
        out.Put('0');
    }
    while (count > 0) {
        out.Put(static_cast<Char>(digits[--count]));
    }
}

template <class Char>
void PutSigned(Output<Char>& out, uint32_t bits, int minimum) {
    if ((bits & 0x80000000U) == 0) {
        PutNumber(out, bits, 10, minimum);
        return;
    }
    out.Put('-');
    PutNumber(out, uint64_t{0x100000000} - bits, 10, minimum - 1);
}

// Exact decimal rounding: the fraction is a whole number of 2^-52 steps for every value that is shown, so halves are
// true halves. They go away from zero, as the platform's C library takes them.
template <class Char>
void PutReal(Output<Char>& out, double value, int decimals) {
    if (value < 0) {
        out.Put('-');
        value = -value;
    }
    constexpr double kLargest = 9.0e18;
    value = value < kLargest ? value : kLargest;  // a NaN fails the comparison as well
    auto whole = static_cast<uint64_t>(value);
    constexpr uint64_t kOne = uint64_t{1} << 52;
    auto fraction = static_cast<uint64_t>((value - static_cast<double>(whole)) * static_cast<double>(kOne));
    uint64_t shown = 0;
    uint64_t scale = 1;
    for (int i = 0; i < decimals; ++i) {
        fraction *= 10;
        shown = shown * 10 + fraction / kOne;
        fraction %= kOne;
        scale *= 10;
    }
    if (fraction >= kOne / 2 && ++shown == scale) {
        shown = 0;
        ++whole;
    }
    PutNumber(out, whole, 10, 0);
    if (decimals > 0) {
        out.Put('.');
        PutNumber(out, shown, 10, decimals);
    }
}

void PutOtherWidth(Output<wchar_t>& out, const char* text) {
    wchar_t converted[kConversionUnits];
    const int length = static_cast<int>(std::min<size_t>(Length(text), kConversionUnits));
    const int count = length == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, text, length, converted, kConversionUnits);
    out.PutText(converted, static_cast<size_t>(count));
}

void PutOtherWidth(Output<char>& out, const wchar_t* text) {
    constexpr int kBytesPerUnit = 4;
    char converted[kConversionUnits * kBytesPerUnit];
    const int length = static_cast<int>(std::min<size_t>(Length(text), kConversionUnits));
    const int count = length == 0 ? 0
                                  : WideCharToMultiByte(CP_ACP, 0, text, length, converted,
                                                        kConversionUnits * kBytesPerUnit, nullptr, nullptr);
    out.PutText(converted, static_cast<size_t>(count));
}

void PutText(Output<wchar_t>& out, const Argument& argument) {
    if (argument.kind == Kind::Wide && argument.wide != nullptr) {
        out.PutText(argument.wide, Length(argument.wide));
    } else if (argument.kind == Kind::Narrow && argument.narrow != nullptr) {
        PutOtherWidth(out, argument.narrow);
    }
}

void PutText(Output<char>& out, const Argument& argument) {
    if (argument.kind == Kind::Narrow && argument.narrow != nullptr) {
        out.PutText(argument.narrow, Length(argument.narrow));
    } else if (argument.kind == Kind::Wide && argument.wide != nullptr) {
        PutOtherWidth(out, argument.wide);
    }
}

template <class Char>
void PutConversion(Output<Char>& out, const Conversion<Char>& conversion, const Argument& argument) {
    switch (conversion.letter) {
        case 'd':
            PutSigned(out, argument.integer, conversion.zeros);
            break;
        case 'X':
            PutNumber(out, argument.integer, 16, conversion.zeros);
            break;
        case 'f':
            PutReal(out, argument.real, conversion.decimals);
            break;
        default:
            PutText(out, argument);
            break;
    }
}

template <class Char>
size_t WriteAll(std::span<Char> space, const Char* format, const Argument* arguments) {
    if (space.empty()) {
        return 0;
    }
    Output<Char> out{space};
    for (const Char* p = format; *p != 0;) {
        if (*p != '%') {
            out.Put(*p++);
            continue;
        }
        if (p[1] == '%') {
            out.Put('%');
            p += 2;
            continue;
        }
        const Conversion<Char> conversion = ParseConversion(p + 1);
        PutConversion(out, conversion, *arguments++);
        p = conversion.end;
    }
    space[out.used] = 0;
    return out.used;
}

}  // namespace

size_t Write(std::span<wchar_t> out, const wchar_t* format, const Argument* arguments) {
    return WriteAll(out, format, arguments);
}

size_t Write(std::span<char> out, const char* format, const Argument* arguments) {
    return WriteAll(out, format, arguments);
}

}  // namespace format_detail
