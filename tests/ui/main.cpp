// UI tests: the product's dialogs and drawing with real templates, real controls and a scripted platform. The resources
// are this program's own.

#include "item/item_state.h"
#include "platform/controls.h"

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    itemState.instance = GetModuleHandleW(nullptr);
    // As the Today host does for every plug-in.
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    SetCurrentDirectoryW(L"C:\\");
    return RUN_ALL_TESTS();
}
