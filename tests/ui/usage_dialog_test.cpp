#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

TEST(UsageDialog, Shots) {
    WriteYearsOfLogs();
    itemState.amPmFormat = true;
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        const std::string name = NameOf(screen);
        RunDialogScript([&] { OpenUsage(frame); }, {[&](HWND d) {
                                                        SaveScreen(frame, "usage-empty-" + name);
                                                        PickDate(d, IDC_USAGE_DATE, {2006, 9, 28});
                                                    },
                                                    [&](HWND d) {
                                                        SaveScreen(frame, "usage-daily-" + name);
                                                        ChooseMode(d, 1);
                                                    },
                                                    [&](HWND d) {
                                                        SaveScreen(frame, "usage-hourly-" + name);
                                                        TapScaled(d, 31, 43);
                                                    },
                                                    [&](HWND d) {
                                                        SaveScreen(frame, "usage-hourly-table-" + name);
                                                        ChooseMode(d, 0);
                                                        PickDate(d, IDC_USAGE_DATE, {2005, 12, 28});
                                                    },
                                                    [&](HWND d) {
                                                        SaveScreen(frame, "usage-daily-table-" + name);
                                                        Press(d, IDOK);
                                                    }});
    });
}

}  // namespace
}  // namespace ui
