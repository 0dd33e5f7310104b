// Uses of FormatText that must not compile, one per number; without a number the file compiles.

#include "platform/format_text.h"

void Format(const wchar_t* wide, const char* narrow) {
    wchar_t out[32];
    FormatText(out, L"%s %S %d", wide, narrow, 1);
#if REJECTED == 1
    FormatText(out, L"%d", wide);
#elif REJECTED == 2
    FormatText(out, L"%s", narrow);
#elif REJECTED == 3
    FormatText(out, L"%d %d", 1);
#elif REJECTED == 4
    FormatText(out, L"%d", 1, 2);
#elif REJECTED == 5
    FormatText(out, L"%.2f", 1);
#elif REJECTED == 6
    FormatText(out, L"%u", 1U);
#elif REJECTED == 7
    FormatText(out, L"%d", int64_t{1});
#endif
}
