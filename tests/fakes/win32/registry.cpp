// An in-memory registry.
#include <algorithm>
#include <utility>

#include "tests/fakes/win32/parts.h"

using namespace fakes;

LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD, HKEY* key) {
    const bool fails = Fails("RegOpenKeyExW"), isThere = !fails && keys.contains(name);
    *key = isThere ? &keys[name] : nullptr;
    openResources += isThere ? 1 : 0;
    return fails ? ERROR_ACCESS_DENIED : isThere ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

LONG RegCreateKeyExW(HKEY, const wchar_t* name, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY* key, DWORD*) {
    const bool fails = Fails("RegCreateKeyExW");
    *key = fails ? nullptr : &keys[name];
    openResources += fails ? 0 : 1;
    return fails ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* bytes) {
    const bool fails = Fails("RegQueryValueExW");
    if (fails || !key->values.contains(name)) {
        return fails ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
    }
    const auto& [itsType, value] = key->values[name];
    const DWORD room = std::exchange(*bytes, static_cast<DWORD>(value.size()));
    *type = itsType;
    if (room < value.size()) {
        return ERROR_MORE_DATA;
    }
    std::ranges::copy(value, data);
    return ERROR_SUCCESS;
}

LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD bytes) {
    if (Fails("RegSetValueExW")) {
        return ERROR_ACCESS_DENIED;
    }
    key->values[name] = {type, std::vector<BYTE>(data, data + bytes)};
    return ERROR_SUCCESS;
}

LONG RegCloseKey(HKEY) {
    --openResources;
    return ERROR_SUCCESS;
}
