// Walks the elements: a number, a length and that many bytes each.

#include "platform/linux/information_elements.h"

#include <algorithm>

namespace helper {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint8_t kSsid = 0;
constexpr uint8_t kSupportedRates = 1;
constexpr uint8_t kIbssParameters = 6;
constexpr uint8_t kRsn = 48;
constexpr uint8_t kExtendedRates = 50;
constexpr uint8_t kVendor = 221;

// Values from here on, without the basic bit, are no rates but demands on whoever joins (9.4.2.3: "BSS membership
// selectors").
constexpr uint8_t kFirstMembershipSelector = 122;

// A suite is an organisation's three bytes and a number. RSN and WPA count ciphers and key management alike.
constexpr uint8_t kRsnOrganisation[] = {0x00, 0x0F, 0xAC};
constexpr uint8_t kWpaOrganisation[] = {0x00, 0x50, 0xF2};
constexpr uint8_t kCipherCcmp = 4;
constexpr uint8_t kCipherGcmp = 8;
constexpr uint8_t kCipherGcmp256 = 9;
constexpr uint8_t kCipherCcmp256 = 10;

uint32_t Number16(Bytes bytes) {
    return bytes.size() < 2 ? 0 : bytes[0] | static_cast<uint32_t>(bytes[1]) << 8;
}

// Takes a counted list of suites off `rest`; `visit` gets the number of each that is the organisation's own.
template <typename Visit>
void TakeSuites(Bytes& rest, Bytes organisation, Visit visit) {
    const size_t count = std::min<size_t>(Number16(rest), rest.size() < 2 ? 0 : (rest.size() - 2) / 4);
    rest = rest.subspan(std::min<size_t>(2, rest.size()));
    for (size_t i = 0; i < count; ++i) {
        if (std::equal(organisation.begin(), organisation.end(), rest.begin())) {
            visit(rest[3]);
        }
        rest = rest.subspan(4);
    }
}

// Management by a server (802.1X and its variants) or by a shared key; every other number is of the latter kind or
// derived from it.
bool IsServerManaged(uint8_t suite) {
    return suite == 1 || suite == 3 || suite == 5 || suite == 11 || suite == 12 || suite == 13;
}

// `rest` begins with the element's version.
void ApplySecurity(Bytes rest, Bytes organisation, Security managed, Security shared, AccessPoint& accessPoint) {
    constexpr size_t kVersionAndGroupCipher = 6;
    accessPoint.security = shared;
    accessPoint.usesAes = false;
    rest = rest.subspan(std::min(kVersionAndGroupCipher, rest.size()));
    TakeSuites(rest, organisation, [&](uint8_t suite) {
        const bool isAes =
            suite == kCipherCcmp || suite == kCipherGcmp || suite == kCipherGcmp256 || suite == kCipherCcmp256;
        accessPoint.usesAes = accessPoint.usesAes || isAes;
    });
    TakeSuites(rest, organisation, [&](uint8_t suite) {
        if (IsServerManaged(suite)) {
            accessPoint.security = managed;
        }
    });
}

void AppendRates(Bytes rates, AccessPoint& accessPoint) {
    for (const uint8_t rate : rates) {
        if ((rate & 0x7F) != 0 && (rate & 0x7F) < kFirstMembershipSelector) {
            accessPoint.rates.push_back(rate);
        }
    }
}

bool IsWpaElement(Bytes body) {
    return body.size() > 4 && std::equal(std::begin(kWpaOrganisation), std::end(kWpaOrganisation), body.begin()) &&
           body[3] == 1;
}

void ApplyElement(uint8_t number, Bytes body, AccessPoint& accessPoint) {
    if (number == kSsid && body.size() <= kMaxSsidBytes) {
        accessPoint.ssid.assign(body.begin(), body.end());
    } else if (number == kSupportedRates || number == kExtendedRates) {
        AppendRates(body, accessPoint);
    } else if (number == kIbssParameters) {
        accessPoint.atimWindow = Number16(body);
    } else if (number == kRsn) {
        ApplySecurity(body, kRsnOrganisation, Security::kWpa2, Security::kWpa2Psk, accessPoint);
    } else if (number == kVendor && IsWpaElement(body) && accessPoint.security != Security::kWpa2 &&
               accessPoint.security != Security::kWpa2Psk) {
        ApplySecurity(body.subspan(4), kWpaOrganisation, Security::kWpa, Security::kWpaPsk, accessPoint);
    }
}

}  // namespace

void ApplyInformationElements(Bytes elements, AccessPoint& accessPoint) {
    accessPoint.security = accessPoint.hasPrivacy ? Security::kWep : Security::kOpen;
    while (elements.size() >= 2 && elements.size() - 2 >= elements[1]) {
        ApplyElement(elements[0], elements.subspan(2, elements[1]), accessPoint);
        elements = elements.subspan(2u + elements[1]);
    }
    // A hidden network's name is empty, or its length in zeros.
    if (std::all_of(accessPoint.ssid.begin(), accessPoint.ssid.end(), [](char c) { return c == 0; })) {
        accessPoint.ssid.clear();
    }
}

}  // namespace helper
