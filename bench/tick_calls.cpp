// tick_calls N - the file work of N ticks in a full month and nothing else, for tools that count what a program asks of
// the system: the difference between two runs, divided by the difference of N, is what one tick asks.

#include "bench/logged_months.h"

#include <cstdlib>

int main(int count, char** words) {
    const long ticks = count > 1 ? std::strtol(words[1], nullptr, 10) : 0;
    ResetSystemForTest();
    ResetItemState();
    UseEmptyDataFolder();
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    WriteMonthOf(kRecordsPerMonth, now);
    for (long i = 0; i < ticks; ++i) {
        LogTraffic(nullptr, 1, 1);
    }
    return 0;
}
