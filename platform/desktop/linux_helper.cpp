// The helper's operations as requests over one exchange.

#include "platform/desktop/linux_helper.h"

#include "platform/desktop/helper_connection.h"

namespace platform {
namespace {

using helper_protocol::Request;
using helper_protocol::RequestKind;

constexpr size_t kNameBytes = helper_protocol::kMaxInterfaceName + 1;

// Interface names are bytes to Linux; only ASCII ones reach it from here. Empty for anything else.
std::string_view NarrowName(const wchar_t* name, char (&space)[kNameBytes]) {
    size_t length = 0;
    for (; name[length] != 0; ++length) {
        if (length + 1 >= kNameBytes || name[length] > 0x7E) {
            return {};
        }
        space[length] = static_cast<char>(name[length]);
    }
    return {space, length};
}

// Cut to what fits.
void WidenText(std::string_view text, wchar_t (&wide)[kHelperNameUnits]) {
    text = text.substr(0, kHelperNameUnits - 1);
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide,
                                          static_cast<int>(kHelperNameUnits) - 1);
    wide[units] = 0;
}

DWORD ChangeLease(RequestKind kind, const char* interfaceName) {
    Request request;
    request.kind = kind;
    request.interfaceName = interfaceName;
    DWORD result = ERROR_NOT_SUPPORTED;
    std::span<const uint8_t> rest;
    ExchangeWithHelper(request, HelperPatience::Long, result, rest);
    return result;
}

}  // namespace

bool HelperLease(const char* interfaceName, HelperLeaseState& state) {
    Request request;
    request.interfaceName = interfaceName;
    DWORD result = 0;
    std::span<const uint8_t> rest;
    return ExchangeWithHelper(request, HelperPatience::Short, result, rest) && DecodeLeaseAnswer(rest, state);
}

DWORD HelperRelease(const char* interfaceName) {
    return ChangeLease(RequestKind::kRelease, interfaceName);
}

DWORD HelperRenew(const char* interfaceName) {
    return ChangeLease(RequestKind::kRenew, interfaceName);
}

bool HelperRadioBinding(wchar_t (&name)[kHelperNameUnits], wchar_t (&description)[kHelperNameUnits]) {
    Request request;
    request.kind = RequestKind::kRadioBinding;
    DWORD result = 0;
    std::span<const uint8_t> rest;
    std::string_view nameText;
    std::string_view descriptionText;
    if (!ExchangeWithHelper(request, HelperPatience::Short, result, rest) ||
        !helper_protocol::DecodeBindingAnswer(rest, nameText, descriptionText)) {
        return false;
    }
    WidenText(nameText, name);
    WidenText(descriptionText, description);
    return true;
}

DWORD HelperRadioQuery(const wchar_t* name, uint32_t oid, std::span<uint8_t> value, size_t& bytes) {
    char space[kNameBytes];
    Request request;
    request.kind = RequestKind::kRadioQuery;
    request.interfaceName = NarrowName(name, space);
    request.oid = oid;
    request.capacity = static_cast<uint32_t>(value.size() < kHelperValueBytes ? value.size() : kHelperValueBytes);
    DWORD result = ERROR_NOT_SUPPORTED;
    std::span<const uint8_t> rest;
    if (!ExchangeWithHelper(request, HelperPatience::Short, result, rest)) {
        return result;
    }
    if (rest.size() > request.capacity) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    memcpy(value.data(), rest.data(), rest.size());
    bytes = rest.size();
    return ERROR_SUCCESS;
}

DWORD HelperRadioSet(const wchar_t* name, uint32_t oid, std::span<const uint8_t> value) {
    char space[kNameBytes];
    Request request;
    request.kind = RequestKind::kRadioSet;
    request.interfaceName = NarrowName(name, space);
    request.oid = oid;
    request.value = value;
    DWORD result = ERROR_NOT_SUPPORTED;
    std::span<const uint8_t> rest;
    ExchangeWithHelper(request, HelperPatience::Short, result, rest);
    return result;
}

}  // namespace platform
