// platform/date_picker.h - date pickers as the system's common control, at their word.
#pragma once

#include "platform/system.h"

namespace platform {

// DTM_SETFORMATW with a format that begins with the month's abbreviation ("MMM"). `format` must live as long as the
// picker.
void SetDateFormat(HWND picker, const wchar_t* format);

}  // namespace platform
