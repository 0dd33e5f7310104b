// The handheld's own comparisons of doubles, against the processor's.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

extern "C" {
int __aeabi_dcmpeq(double left, double right);
int __aeabi_dcmplt(double left, double right);
int __aeabi_dcmple(double left, double right);
int __aeabi_dcmpge(double left, double right);
int __aeabi_dcmpgt(double left, double right);
int __aeabi_dcmpun(double left, double right);
}

TEST(RealCompare, Orders_every_pair_as_the_processor_does) {
    constexpr double kLeast = std::numeric_limits<double>::denorm_min();
    constexpr double kValues[] = {-HUGE_VAL, -2, -1, -kLeast, -0.0, 0, kLeast, 1, 2, HUGE_VAL, NAN, -NAN};
    for (const double a : kValues) {
        for (const double b : kValues) {
            const std::pair<int, bool> answers[] = {
                {__aeabi_dcmpeq(a, b), a == b}, {__aeabi_dcmplt(a, b), a < b},
                {__aeabi_dcmple(a, b), a <= b}, {__aeabi_dcmpge(a, b), a >= b},
                {__aeabi_dcmpgt(a, b), a > b},  {__aeabi_dcmpun(a, b), std::isunordered(a, b)}};
            for (const auto& [answer, expected] : answers) {
                EXPECT_EQ(answer != 0, expected) << a << " and " << b;
            }
        }
    }
}
