// Byte counts as charts, tables and exports show them.

#include "trafficlog/byte_count.h"

#include "platform/format_text.h"

void FormatByteCount(double bytes, std::span<wchar_t> text) {
    constexpr double kKilobyte = 1024.0;
    constexpr double kMegabyte = kKilobyte * kKilobyte;
    constexpr double kGigabyte = kMegabyte * kKilobyte;
    if (bytes == 0.0) {
        FormatText(text, L"0");
    } else if (bytes < kMegabyte) {
        FormatText(text, L"%.2fKB", bytes / kKilobyte);
    } else if (bytes < kGigabyte) {
        FormatText(text, L"%.2fMB", bytes / kMegabyte);
    } else {
        FormatText(text, L"%.2fGB", bytes / kGigabyte);
    }
}
