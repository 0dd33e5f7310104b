// platform/device/library_function.h - functions found at run time. Linked to, a library that a handheld lacks would
// keep the whole item from loading.
#pragma once

#include "platform/device/ce_api.h"

namespace platform {

// A library that is loaded when something of it is first wanted, and then stays: what it started may outlive a call.
// For the user interface's thread only.
struct LateLibrary {
    const wchar_t* fileName;
    HMODULE module;

    // Null when library or function is missing. `Function` is a pointer to the function's type.
    template <class Function>
    Function Find(const wchar_t* name) {
        if (module == nullptr) {
            module = LoadLibraryW(fileName);
        }
        return module != nullptr ? reinterpret_cast<Function>(GetProcAddressW(module, name)) : nullptr;
    }
};

}  // namespace platform
