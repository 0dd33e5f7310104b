// A Linux link's speed stands in a file of the kernel's, in megabits per second, -1 where it is unknown.

#include "platform/desktop/link_speed.h"

#include "platform/desktop/wine.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

#include <algorithm>

namespace platform {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// 0 when it is not known.
uint32_t ReadMegabits(const char* link) {
    wchar_t path[MAX_PATH];
    FormatText(path, L"\\\\?\\unix\\sys\\class\\net\\%S\\speed", link);
    const ScopedHandle file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    char text[16] = {};
    DWORD read = 0;
    if (!file.IsOpen() || !ReadFile(file.handle, text, sizeof(text) - 1, &read, nullptr)) {
        return 0;
    }
    uint32_t megabits = 0;
    for (const char* digit = text; IsDigit(*digit) && digit - text < 9; ++digit) {
        megabits = megabits * 10 + static_cast<uint32_t>(*digit - '0');
    }
    return megabits;
}

}  // namespace

void CorrectSpeed(MIB_IFROW& row) {
    constexpr uint32_t kMegabit = 1000000;
    constexpr uint32_t kMostMegabits = 0xFFFFFFFF / kMegabit;
    if (row.dwSpeed != 0 || !IsWine()) {
        return;
    }
    char link[MAXLEN_IFDESCR + 1] = {};
    memcpy(link, row.bDescr, std::min<DWORD>(row.dwDescrLen, MAXLEN_IFDESCR));
    const uint32_t megabits = ReadMegabits(link);
    row.dwSpeed = megabits <= kMostMegabits ? megabits * kMegabit : 0xFFFFFFFF;
}

}  // namespace platform
