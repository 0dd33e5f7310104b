// One query per setting; a query that fails leaves its text empty and the next is still made.

#include "wireless/card_details.h"

#include "platform/format_text.h"
#include "wireless/channel.h"
#include "wireless/ndis.h"

#include <iterator>

namespace {

constexpr const wchar_t* kAuthenticationModes[] = {L"open", L"shared", L"auto-switch", L"WPA", L"WPAPSK", L"WPANone"};
constexpr const wchar_t* kInfrastructureModes[] = {L"ad hoc mode", L"infrastructure mode", L"auto"};
constexpr const wchar_t* kNetworkTypes[] = {L"FHSS", L"DSSS"};
constexpr const wchar_t* kWepStates[] = {L"enabled", L"disabled", L"key is absent", L"key is not supported"};

// NDIS_802_11_CONFIGURATION
constexpr size_t kBeaconPeriod = 4;
constexpr size_t kAtimWindow = 8;
constexpr size_t kFrequency = 12;

void ReadConfiguration(WirelessDevice& device, CardDetails& details) {
    if (!QueryOid(device, OID_802_11_CONFIGURATION)) {
        return;
    }
    const uint32_t frequency = ReadNdisField(device.Value() + kFrequency);
    const int32_t channel = ChannelFromFrequency(frequency);
    FormatText(details.beacon, L"%d Kusec", ReadNdisField(device.Value() + kBeaconPeriod));
    FormatText(details.atimWindow, L"%d Kusec", ReadNdisField(device.Value() + kAtimWindow));
    FormatText(details.frequency, L"%d kHz", frequency);
    if (channel >= 1) {
        FormatText(details.channel, L"(channel %d)", channel);
    } else {
        FormatText(details.channel, L"(unknown channel)");
    }
}

// Only the low byte of the value counts.
template <size_t Count>
const wchar_t* ReadName(WirelessDevice& device, uint32_t oid, const wchar_t* const (&names)[Count]) {
    if (!QueryOid(device, oid)) {
        return L"";
    }
    const uint8_t value = device.Value()[0];
    return value < Count ? names[value] : L"";
}

}  // namespace

bool ReadCardDetails(CardDetails& details) {
    details = {};
    details.authentication = details.mode = details.networkType = details.wep = L"";
    WirelessDevice device;
    if (OpenWirelessDevice(device) != WirelessOpening::Open || !device.HasAdapter()) {
        return false;
    }
    ReadConfiguration(device, details);
    details.authentication = ReadName(device, OID_802_11_AUTHENTICATION_MODE, kAuthenticationModes);
    details.mode = ReadName(device, OID_802_11_INFRASTRUCTURE_MODE, kInfrastructureModes);
    details.networkType = ReadName(device, OID_802_11_NETWORK_TYPE_IN_USE, kNetworkTypes);
    details.wep = ReadName(device, OID_802_11_WEP_STATUS, kWepStates);
    return true;
}
