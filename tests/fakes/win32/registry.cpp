// An in-memory registry: keys by their full name, values by name, which the product never spells in two ways.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/fakes/win32/parts.h"

struct FakeKey {
    std::map<std::wstring, std::pair<DWORD, std::vector<BYTE>>> values;  // type and data
};
static std::map<std::wstring, FakeKey> keys;

void fakes::ResetRegistry() {
    keys.clear();
}

using fakes::Fails;

LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD, HKEY* key) {
    const bool fails = Fails("RegOpenKeyExW");
    const auto found = keys.find(name);
    if (fails || found == keys.end()) {
        return fails ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
    }
    *key = &found->second;
    fakes::CountResource(1);
    return ERROR_SUCCESS;
}

LONG RegCreateKeyExW(HKEY, const wchar_t* name, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY* key, DWORD*) {
    if (Fails("RegCreateKeyExW")) {
        return ERROR_ACCESS_DENIED;
    }
    *key = &keys[name];
    fakes::CountResource(1);
    return ERROR_SUCCESS;
}

LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* bytes) {
    const bool fails = Fails("RegQueryValueExW");
    const auto found = key->values.find(name);
    if (fails || found == key->values.end()) {
        return fails ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
    }
    const auto& [itsType, value] = found->second;
    const DWORD room = std::exchange(*bytes, static_cast<DWORD>(value.size()));
    *type = itsType;
    if (room < value.size()) {
        return ERROR_MORE_DATA;
    }
    std::copy(value.begin(), value.end(), data);
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
    fakes::CountResource(-1);
    return ERROR_SUCCESS;
}
