// An in-memory registry: keys by their full name, values by name without regard to case.

#include <algorithm>
#include <cstring>
#include <cwctype>
#include <map>
#include <set>

#include "tests/fakes/fakes.h"
#include "tests/fakes/win32/parts.h"

namespace {

struct Value {
    DWORD type;
    std::vector<BYTE> data;
};

std::wstring Lower(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t c) { return towlower(static_cast<wint_t>(c)); });
    return text;
}

}  // namespace

struct FakeKey {
    std::map<std::wstring, Value> values;
};

namespace {

std::map<std::wstring, FakeKey> keys;

}  // namespace

namespace fakes {

void ResetRegistry() {
    keys.clear();
}

}  // namespace fakes

LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD, HKEY* key) {
    if (fakes::Fails("RegOpenKeyExW")) {
        return ERROR_ACCESS_DENIED;
    }
    const auto found = keys.find(Lower(name));
    if (found == keys.end()) {
        return ERROR_FILE_NOT_FOUND;
    }
    *key = &found->second;
    fakes::CountResource(1);
    return ERROR_SUCCESS;
}

LONG RegCreateKeyExW(HKEY, const wchar_t* name, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY* key, DWORD*) {
    if (fakes::Fails("RegCreateKeyExW")) {
        return ERROR_ACCESS_DENIED;
    }
    *key = &keys[Lower(name)];
    fakes::CountResource(1);
    return ERROR_SUCCESS;
}

LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* bytes) {
    if (fakes::Fails("RegQueryValueExW")) {
        return ERROR_ACCESS_DENIED;
    }
    const auto found = key->values.find(Lower(name));
    if (found == key->values.end()) {
        return ERROR_FILE_NOT_FOUND;
    }
    const Value& value = found->second;
    const DWORD room = *bytes;
    *bytes = static_cast<DWORD>(value.data.size());
    if (type != nullptr) {
        *type = value.type;
    }
    if (data != nullptr && room < value.data.size()) {
        return ERROR_MORE_DATA;
    }
    if (data != nullptr && !value.data.empty()) {
        memcpy(data, value.data.data(), value.data.size());
    }
    return ERROR_SUCCESS;
}

LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD bytes) {
    if (fakes::Fails("RegSetValueExW")) {
        return ERROR_ACCESS_DENIED;
    }
    key->values[Lower(name)] = {type, std::vector<BYTE>(data, data + bytes)};
    return ERROR_SUCCESS;
}

LONG RegCloseKey(HKEY) {
    fakes::CountResource(-1);
    return ERROR_SUCCESS;
}
