// Dialogs from templates. On a high-resolution screen a copy of the template with its font size doubled is used, as a
// 192-dpi handheld would show it: dialog units grow with the font.

#include "platform/dialogs.h"

#include "platform/desktop/template_scale.h"
#include "platform/scoped.h"
#include "platform/screen.h"

namespace platform {

INT_PTR RunDialog(HINSTANCE instance, int templateId, HWND owner, DLGPROC procedure) {
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    HGLOBAL loaded = resource != nullptr ? LoadResource(instance, resource) : nullptr;
    if (loaded == nullptr) {
        return -1;
    }
    const DWORD bytes = SizeofResource(instance, resource);
    const ScopedMemory copy(bytes);
    if (copy.memory == nullptr) {
        return -1;
    }
    memcpy(copy.memory, loaded, bytes);
    ScaleTemplateToScreen(copy.memory);
    return DialogBoxIndirectParamW(instance, copy.As<DLGTEMPLATE>(), owner, procedure, 0);
}

}  // namespace platform
