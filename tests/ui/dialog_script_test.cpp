// The harness itself: a dialog that misbehaves must fail its test.

#include "tests/ui/ui_test.h"

#include <gtest/gtest-spi.h>

namespace ui {
namespace {

TEST(DialogScript, What_a_script_does_not_expect_fails_the_test) {
    const TodayFrame frame(kScreenSizes[0]);
    const auto ping = [&](const std::vector<Step>& steps, const std::vector<int>& answers) {
        return RunDialogScript([&] { DispatchTap(frame.window, kPingTool, 10); }, steps, answers);
    };
    const Step ok = [](HWND dialog) { Press(dialog, IDOK); };
    const Step ask = [](HWND dialog) { Press(dialog, IDC_PING_PING); };
    EXPECT_EQ(ping({ask}, {IDOK}), (Boxes{{L"Host name is empty", L"Error"}}));
    EXPECT_NONFATAL_FAILURE(ping({ok, ok}, {}), "before its last step");
    EXPECT_NONFATAL_FAILURE(ping({ok}, {IDOK}), "message boxes shown and expected");
    EXPECT_NONFATAL_FAILURE(ping({ask}, {IDYES}), "no answer 6 to Error: Host name is empty");
}

}  // namespace
}  // namespace ui
