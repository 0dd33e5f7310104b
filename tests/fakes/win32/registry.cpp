// An in-memory registry: keys by their full name, values by name without regard to case.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/system.h"
#include "tests/fakes/win32/parts.h"

using fakes::Fails;

namespace {

struct IgnoringCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const { return _wcsicmp(a.c_str(), b.c_str()) < 0; }
};

struct Value {
    DWORD type;
    std::vector<BYTE> data;
};

}  // namespace

struct FakeKey {
    std::map<std::wstring, Value, IgnoringCase> values;
};

namespace {

std::map<std::wstring, FakeKey, IgnoringCase> keys;

}  // namespace

void fakes::ResetRegistry() {
    keys.clear();
}

LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD, HKEY* key) {
    const auto found = keys.find(name);
    if (Fails("RegOpenKeyExW")) {
        return ERROR_ACCESS_DENIED;
    }
    if (found == keys.end()) {
        return ERROR_FILE_NOT_FOUND;
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
    if (Fails("RegQueryValueExW")) {
        return ERROR_ACCESS_DENIED;
    }
    const auto found = key->values.find(name);
    if (found == key->values.end()) {
        return ERROR_FILE_NOT_FOUND;
    }
    const Value& value = found->second;
    const DWORD room = std::exchange(*bytes, static_cast<DWORD>(value.data.size()));
    if (type != nullptr) {
        *type = value.type;
    }
    if (data != nullptr && room < value.data.size()) {
        return ERROR_MORE_DATA;
    }
    if (data != nullptr) {
        std::copy(value.data.begin(), value.data.end(), data);
    }
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
