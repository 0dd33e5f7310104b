// Attach and detach of the library. Attach readies everything that the item window needs; detach only unregisters the
// class, as the host has cleared the item's cache by then.

#include "item/item_state.h"
#include "item/item_window.h"
#include "platform/controls.h"

namespace {

BOOL OnAttach(HINSTANCE instance) {
    itemState.instance = instance;
    if (!RegisterItemWindowClass()) {
        MessageBoxW(nullptr, L"RegisterClass() failed", L"Error! - quorvane.dll", MB_ICONEXCLAMATION);
        return FALSE;
    }
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    InitializeItem();
    return TRUE;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        return OnAttach(instance);
    }
    if (reason == DLL_PROCESS_DETACH) {
        UnregisterItemWindowClass();
    }
    return TRUE;
}
