// Texts of the scanner's details.

#include "wireless/access_point_texts.h"

#include "platform/format_text.h"
#include "wireless/signal_level.h"

namespace {

const wchar_t* ModeName(uint32_t mode) {
    return mode == 0 ? L"ad hoc" : mode == 1 ? L"infrastructure" : L"automatic";
}

const wchar_t* TypeName(uint32_t networkType) {
    constexpr const wchar_t* kNames[] = {L"FHSS", L"DSSS", L"FDM5", L"FDM24"};
    return networkType < std::size(kNames) ? kNames[networkType] : L"";
}

void FormatRates(const uint8_t (&rates)[kRateBytes], wchar_t (&text)[64]) {
    constexpr uint8_t kBasicRate = 0x80;
    text[0] = 0;
    for (size_t i = 0; i < kRateBytes && rates[i] != 0; ++i) {
        const int halves = rates[i] & ~kBasicRate;
        const wchar_t* separator = i == 0 ? L"" : L",";
        if (halves % 2 == 0) {
            AppendText(text, L"%s%d", separator, halves / 2);
        } else {
            AppendText(text, L"%s%.1f", separator, halves * 0.5);
        }
    }
    if (text[0] != 0) {
        AppendText(text, L" Mbps");
    }
}

}  // namespace

void DescribeAccessPoint(const AccessPoint& entry, AccessPointTexts& texts) {
    FormatText(texts.signal, L"%ddBm", entry.rssi);
    texts.wep = entry.privacy != 0 ? L"enabled" : L"disabled";
    FormatMac(entry.bssid, texts.bssid);
    FormatText(texts.channel, L"%d", entry.channel);
    texts.mode = ModeName(entry.mode);
    texts.type = TypeName(entry.networkType);
    FormatRates(entry.rates, texts.rates);
}

void DescribeSelectedAccessPoint(const AccessPoint& entry, AccessPointTexts& texts) {
    DescribeAccessPoint(entry, texts);
    texts.wep = entry.privacy != 0 ? L"Enabled" : L"Disabled";
    switch (SignalLevelOf(entry.rssi)) {
        case SignalLevel::None:
            FormatText(texts.signal, L"no signal (%ddBm)", entry.rssi);
            break;
        case SignalLevel::VeryLow:
            FormatText(texts.signal, L"very low (%ddBm)", entry.rssi);
            break;
        case SignalLevel::Low:
            FormatText(texts.signal, L"low (%ddBm)", entry.rssi);
            break;
        case SignalLevel::Good:
            FormatText(texts.signal, L"good (%ddBm)", entry.rssi);
            break;
        case SignalLevel::VeryGood:
            FormatText(texts.signal, L"very good (%ddBm)", entry.rssi);
            break;
    }
}

void FormatMac(const uint8_t* mac, std::span<wchar_t> text) {
    FormatText(text, L"%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}
