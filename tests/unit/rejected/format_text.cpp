// Uses of FormatText that must not compile, one per number; without a number the file compiles.
#include "platform/format_text.h"

void Format(const wchar_t* wide, const char* narrow) {
    wchar_t out[32];
#if REJECTED == 0
    FormatText(out, L"%s %S %d", wide, narrow, 1);
#elif REJECTED == 1
    FormatText(out, L"%s", narrow);
#elif REJECTED == 2
    FormatText(out, L"%d %d", 1);
#endif
}
