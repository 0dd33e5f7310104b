// Comparisons of doubles for a processor without them. The compiler's own library has them too, but its functions pass
// their answer on in the processor's flags, and the return sequence that runs on an ARMv4 as well as between ARM and
// Thumb code (the linker's "bx" veneers) changes those flags: there, everything would equal everything.
//
// Nothing in here may compare doubles, as that would call these functions. A NaN is neither less, equal nor greater.

#include <cstdint>
#include <cstring>

namespace {

int64_t BitsOf(double value) {
    int64_t bits = 0;
    memcpy(&bits, &value, sizeof(bits));
    return bits;
}

bool IsNan(int64_t bits) {
    constexpr int64_t kInfinity = 0x7FF0000000000000;
    return (bits & INT64_MAX) > kInfinity;
}

// Numbers that are in the order of the doubles; both zeros are 0.
int64_t RankOf(int64_t bits) {
    return bits < 0 ? INT64_MIN - bits : bits;
}

// Below 0, 0 or above 0; `unordered` when there is no order.
int Compare(double left, double right, int unordered) {
    const int64_t a = BitsOf(left);
    const int64_t b = BitsOf(right);
    if (IsNan(a) || IsNan(b)) {
        return unordered;
    }
    return RankOf(a) < RankOf(b) ? -1 : RankOf(a) > RankOf(b);
}

}  // namespace

extern "C" {

int __aeabi_dcmpeq(double left, double right) {
    return Compare(left, right, 1) == 0;
}

int __aeabi_dcmplt(double left, double right) {
    return Compare(left, right, 1) < 0;
}

int __aeabi_dcmple(double left, double right) {
    return Compare(left, right, 1) <= 0;
}

int __aeabi_dcmpge(double left, double right) {
    return Compare(left, right, -1) >= 0;
}

int __aeabi_dcmpgt(double left, double right) {
    return Compare(left, right, -1) > 0;
}

int __aeabi_dcmpun(double left, double right) {
    return IsNan(BitsOf(left)) || IsNan(BitsOf(right));
}
}
