// Finds the internet library's functions by name.

#include "platform/desktop/internet_library.h"

namespace platform {
namespace {

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(GetProcAddress(module, name));
    return function != nullptr;
}

}  // namespace

bool FindInternetLibrary(InternetLibrary& library) {
    HMODULE module = GetModuleHandleW(L"wininet.dll");
    if (module == nullptr) {
        module = LoadLibraryW(L"wininet.dll");
    }
    return module != nullptr && Find(module, "InternetOpenW", library.open) &&
           Find(module, "InternetConnectW", library.connect) && Find(module, "HttpOpenRequestW", library.openRequest) &&
           Find(module, "HttpSendRequestW", library.sendRequest) &&
           Find(module, "InternetReadFile", library.readFile) &&
           Find(module, "InternetSetOptionW", library.setOption) &&
           Find(module, "InternetQueryOptionW", library.queryOption) &&
           Find(module, "InternetCloseHandle", library.closeHandle);
}

}  // namespace platform
