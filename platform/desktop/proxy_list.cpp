// Reads the internet library's proxy lists.

#include "platform/desktop/proxy_list.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace platform {
namespace {

// substr by another name: its range check would want the C++ runtime library.
std::wstring_view FirstOf(std::wstring_view text, size_t count) {
    return {text.data(), std::min(count, text.size())};
}

std::wstring_view BehindOf(std::wstring_view text, size_t place) {
    return {text.data() + place + 1, text.size() - place - 1};
}

std::wstring_view TakeEntry(std::wstring_view& rest) {
    const size_t start = rest.find_first_not_of(L"; \t");
    if (start == rest.npos) {
        rest = {};
        return {};
    }
    rest.remove_prefix(start);
    const std::wstring_view entry = FirstOf(rest, rest.find_first_of(L"; \t"));
    rest.remove_prefix(entry.size());
    return entry;
}

void RemovePrefix(std::wstring_view& text, std::wstring_view prefix) {
    if (text.starts_with(prefix)) {
        text.remove_prefix(prefix.size());
    }
}

bool ReadPort(std::wstring_view digits, WORD* port) {
    uint32_t value = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9' || value > 65535) {
            return false;
        }
        value = value * 10 + static_cast<uint32_t>(digit - L'0');
    }
    *port = static_cast<WORD>(value);
    return value != 0 && value <= 65535;
}

}  // namespace

bool FindHttpProxy(const wchar_t* list, wchar_t (&host)[kProxyHostUnits], WORD* port) {
    std::wstring_view rest = list;
    for (std::wstring_view entry = TakeEntry(rest); !entry.empty(); entry = TakeEntry(rest)) {
        RemovePrefix(entry, L"http=");
        if (entry.find(L'=') != entry.npos) {
            continue;  // another protocol's
        }
        RemovePrefix(entry, L"http://");
        const size_t colon = entry.find(L':');
        const std::wstring_view name = FirstOf(entry, colon);
        *port = 80;
        if (name.empty() || name.size() >= std::size(host) ||
            (colon != entry.npos && !ReadPort(BehindOf(entry, colon), port))) {
            continue;
        }
        name.copy(host, name.size());
        host[name.size()] = 0;
        return true;
    }
    return false;
}

}  // namespace platform
