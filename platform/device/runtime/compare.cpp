// Comparisons of doubles, as the compiler calls them. The compiler's own library passes their result in the processor's
// flags through a return that the linker turns into `tst lr, #1; moveq pc, lr; bx lr` (so that the file runs on
// processors without BX): the test overwrites the flags, and every comparison is wrong. These return in r0 alone.

#include <cstdint>
#include <cstring>

namespace {

constexpr uint64_t kSign = 0x8000000000000000;
constexpr uint64_t kInfinity = 0x7FF0000000000000;

uint64_t BitsOf(double value) {
    uint64_t bits = 0;
    memcpy(&bits, &value, sizeof(bits));
    return bits;
}

bool IsNumber(uint64_t bits) {
    return (bits & ~kSign) <= kInfinity;
}

// Grows with the number; both zeros are alike.
uint64_t Rank(uint64_t bits) {
    return (bits & kSign) != 0 ? kSign - (bits & ~kSign) : kSign + bits;
}

struct Pair {
    bool comparable;
    uint64_t first, second;

    Pair(double a, double b)
        : comparable(IsNumber(BitsOf(a)) && IsNumber(BitsOf(b))), first(Rank(BitsOf(a))), second(Rank(BitsOf(b))) {}
};

}  // namespace

extern "C" {

int __aeabi_dcmpeq(double a, double b) {
    const Pair pair(a, b);
    return pair.comparable && pair.first == pair.second;
}

int __aeabi_dcmplt(double a, double b) {
    const Pair pair(a, b);
    return pair.comparable && pair.first < pair.second;
}

int __aeabi_dcmple(double a, double b) {
    const Pair pair(a, b);
    return pair.comparable && pair.first <= pair.second;
}

int __aeabi_dcmpge(double a, double b) {
    return __aeabi_dcmple(b, a);
}

int __aeabi_dcmpgt(double a, double b) {
    return __aeabi_dcmplt(b, a);
}

}  // extern "C"
