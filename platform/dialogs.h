// platform/dialogs.h - dialogs and property sheets made from the module's templates, at the screen's scale.
#pragma once

#include "platform/controls.h"

namespace platform {

// Runs the dialog of template `templateId` (RT_DIALOG of `instance`) modally over `owner` with initial parameter 0 and
// returns its result, or -1 when the template is missing or the dialog cannot be made.
INT_PTR RunDialog(HINSTANCE instance, int templateId, HWND owner, DLGPROC procedure);

}  // namespace platform
