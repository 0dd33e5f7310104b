// Dialogs straight from the module: the handheld scales dialog units itself. What LoadResource returns there is the
// template's address.

#include "platform/dialogs.h"

namespace platform {

INT_PTR RunDialog(HINSTANCE instance, int templateId, HWND owner, DLGPROC procedure) {
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    HGLOBAL loaded = resource != nullptr ? LoadResource(instance, resource) : nullptr;
    return loaded != nullptr
               ? DialogBoxIndirectParamW(instance, static_cast<const DLGTEMPLATE*>(loaded), owner, procedure, 0)
               : -1;
}

}  // namespace platform
