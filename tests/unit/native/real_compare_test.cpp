// The handheld's own comparisons of doubles, against the processor's.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

extern "C" {
int __aeabi_dcmpeq(double left, double right);
int __aeabi_dcmplt(double left, double right);
int __aeabi_dcmple(double left, double right);
int __aeabi_dcmpge(double left, double right);
int __aeabi_dcmpgt(double left, double right);
int __aeabi_dcmpun(double left, double right);
}

namespace {

TEST(RealCompare, Orders_every_pair_as_the_processor_does) {
    using Limits = std::numeric_limits<double>;
    const double values[] = {-Limits::infinity(),
                             -2,
                             -1,
                             -Limits::denorm_min(),
                             -0.0,
                             0,
                             Limits::denorm_min(),
                             1,
                             2,
                             Limits::infinity(),
                             Limits::quiet_NaN(),
                             -Limits::quiet_NaN()};
    for (const double a : values) {
        for (const double b : values) {
            const bool answers[] = {__aeabi_dcmpeq(a, b) != 0, __aeabi_dcmplt(a, b) != 0, __aeabi_dcmple(a, b) != 0,
                                    __aeabi_dcmpge(a, b) != 0, __aeabi_dcmpgt(a, b) != 0, __aeabi_dcmpun(a, b) != 0};
            const bool expected[] = {a == b, a<b, a <= b, a >= b, a> b, a != a || b != b};
            EXPECT_TRUE(std::ranges::equal(answers, expected)) << a << " and " << b;
        }
    }
}

}  // namespace
