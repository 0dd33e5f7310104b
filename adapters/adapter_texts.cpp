// Interface types and hardware addresses as text.

#include "adapters/adapter_texts.h"

#include "platform/format_text.h"

#include <algorithm>

namespace {

struct TypeName {
    uint32_t type;
    const wchar_t* name;
};

constexpr TypeName kTypeNames[] = {
    {1, L"other"}, {6, L"ethernet"}, {9, L"token ring"}, {15, L"fddi"}, {23, L"ppp"}, {24, L"loopback"}, {28, L"slip"},
};

}  // namespace

const wchar_t* InterfaceTypeName(uint32_t type) {
    for (const TypeName& entry : kTypeNames) {
        if (entry.type == type) {
            return entry.name;
        }
    }
    return L"";
}

void WriteHardwareAddress(const IP_ADAPTER_INFO& adapter, std::span<wchar_t> text) {
    const UINT length = std::min<UINT>(adapter.AddressLength, MAX_ADAPTER_ADDRESS_LENGTH);
    if (length == 0) {
        return;
    }
    size_t used = FormatText(text, L"%02X", adapter.Address[0]);
    for (UINT i = 1; i < length; ++i) {
        used += FormatText(text.subspan(used), L":%02X", adapter.Address[i]);
    }
}
