// The handheld's date picker takes the format as it is.

#include "platform/date_picker.h"

#include "platform/controls.h"

namespace platform {

void SetDateFormat(HWND picker, const wchar_t* format) {
    SendMessageW(picker, DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(format));
}

}  // namespace platform
