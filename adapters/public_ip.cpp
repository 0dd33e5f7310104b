// One HTTP GET and the reading of its answer. The answer comes from strangers: it is taken for text of at most 10,000
// bytes and nothing in it is believed but digits and points.

#include "adapters/public_ip.h"

#include "adapters/internet_connection.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "platform/connection.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

#include <algorithm>

namespace {

constexpr DWORD kBodyBytes = 10000;

struct ScopedInternet {
    void* handle;

    explicit ScopedInternet(void* owned) : handle(owned) {}
    ScopedInternet(const ScopedInternet&) = delete;
    ScopedInternet& operator=(const ScopedInternet&) = delete;
    ~ScopedInternet() {
        if (handle != nullptr) {
            platform::InternetCloseHandle(handle);
        }
    }
};

// Number of bytes read; 0 as well when the request cannot be sent.
DWORD ReadBody(void* request, char* body) {
    if (!platform::HttpSendRequestW(request)) {
        return 0;
    }
    DWORD total = 0;
    DWORD read = 0;
    while (total < kBodyBytes && platform::InternetReadFile(request, body + total, kBodyBytes - total, &read) &&
           read > 0) {
        total += read;
    }
    return total;
}

// The three handles are closed in the reverse of their order.
DWORD FetchBody(const InternetConnection& way, const wchar_t* host, const wchar_t* path, char* body) {
    constexpr WORD kHttpPort = 80;
    constexpr DWORD kReload = 0x80000000;  // INTERNET_FLAG_RELOAD: never from a cache
    const ScopedInternet session(platform::InternetOpenW(L"Microsoft Internet Explorer", way.accessType,
                                                         way.accessType == kAccessThroughProxy ? way.proxy : nullptr));
    if (session.handle == nullptr) {
        return 0;
    }
    const ScopedInternet connection(platform::InternetConnectW(session.handle, host, kHttpPort));
    if (connection.handle == nullptr) {
        return 0;
    }
    const ScopedInternet request(platform::HttpOpenRequestW(connection.handle, path, kReload, 1));
    return request.handle != nullptr ? ReadBody(request.handle, body) : 0;
}

bool IsAddressCharacter(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

}  // namespace

bool ParseEchoBody(std::span<const char> body, std::span<wchar_t, kPublicIpUnits> address) {
    const auto length = static_cast<size_t>(std::find(body.begin(), body.end(), '\0') - body.begin());
    if (body.empty() || length > kPublicIpCharacters) {
        return false;
    }
    char text[kPublicIpUnits] = {};
    std::copy_n(body.begin(), length, text);
    char* end = std::find_if_not(text, text + length, IsAddressCharacter);
    const bool isAddress = *end == 0 || *end == '\r' || *end == '\n';
    if (isAddress) {
        *end = 0;
    }
    FormatText(address, L"%S", text);
    return isAddress;
}

bool DetectPublicIp(const wchar_t* host, const wchar_t* path, std::span<wchar_t, kPublicIpUnits> address) {
    const platform::ScopedMemory body(kBodyBytes);  // too large for a handheld's stack
    if (body.memory == nullptr) {
        return false;
    }
    // Without a connection the request is tried directly: a cradle or a LAN may be all it needs.
    InternetConnection way;
    EstablishInternetConnection(way);
    const DWORD bytes = FetchBody(way, host, path, body.As<char>());
    if (way.connection != nullptr) {
        platform::ConnMgrReleaseConnection(way.connection, 1);
    }
    return ParseEchoBody({body.As<char>(), bytes}, address);
}

bool DetectPublicIpFromAny(std::span<wchar_t, kPublicIpUnits> address) {
    constexpr wchar_t kPath[] = L"ip/ip.php";
    wchar_t primary[kPathUnits] = L"ip1.quorvane.net";
    wchar_t fallback[kPathUnits] = L"ip2.quorvane.net";
    ReadStringSetting(L"EchoHost", primary);
    ReadStringSetting(L"EchoHost2", fallback);
    return DetectPublicIp(primary, kPath, address) || DetectPublicIp(fallback, kPath, address);
}
