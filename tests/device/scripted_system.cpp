// What of the system the script answers by itself, alike on both: time, the network's peers, a person's answers.

#include "tests/device/player.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"

namespace {

// Who answers an echo in 192.168.7.0/24: the last byte of the address, and of the hardware address, and how fast (ms).
const std::map<uint32_t, uint32_t> kHosts = {{1, 2}, {20, 14}, {250, 120}};

std::optional<platform::EchoReply> AnswerEcho(uint32_t address, DWORD) {
    const auto host = kHosts.find(address >> 24);
    platform::EchoReply reply = {};
    reply.address = address;
    reply.roundTripTime = host != kHosts.end() ? host->second : 0;
    reply.timeToLive = 64;
    return host != kHosts.end() ? std::optional(reply) : std::nullopt;
}

void GetClientArea(uint64_t window, int32_t* area) {
    const uint32_t strip = player.screenWidth > 320 ? 40 : 24;
    area[0] = area[1] = 0;
    area[2] = static_cast<int32_t>(player.screenWidth);
    area[3] = static_cast<int32_t>(window == player.item ? strip : player.screenHeight);
}

bool GetSpecialFolder(uint64_t, char16_t* path, int folder) {
    const std::u16string_view name = folder == CSIDL_PERSONAL ? u"\\My Documents" : u"\\Program Files";
    path[name.copy(path, name.size())] = 0;
    return true;
}

// No font decides how wide a text is.
int DrawOrMeasure(uint64_t, const char16_t* text, int, int32_t* area, uint32_t flags) {
    constexpr uint32_t kMeasure = 0x400;  // DT_CALCRECT
    constexpr int kHeight = 12, kCharacterWidth = 5;
    if ((flags & kMeasure) != 0) {
        area[2] = area[0] + kCharacterWidth * static_cast<int32_t>(std::u16string_view(text).size());
        area[3] = area[1] + kHeight;
    }
    return kHeight;
}

}  // namespace

void ResetPlayer() {
    player = {};
    scripted::Reset();
    scripted::Platform& system = scripted::system;
    for (const auto& [host, time] : kHosts) {
        system.arp.push_back({0x0007A8C0 | host << 24, {2, 0, 0, 0, 7, static_cast<uint8_t>(host)}});
    }
    system.echo = AnswerEcho;
    system.internet.answers[L"ip1.quorvane.net"].pieces = {"203.0.113.77\n"};
    UseWireless();
    system.wireless.values = {
        {OID_802_11_BSSID, {2, 0, 0, 0, 0, 1}},
        {OID_802_11_SSID, SsidValue("Office & Lab", 12)},
        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
        {OID_802_11_BSSID_LIST_SCAN, {}},
        {OID_802_11_CONFIGURATION, NdisFields({32, 100, 10, 2437000, 0, 0, 0, 0})},
        {OID_802_11_BSSID_LIST,
         AccessPointListBuilder().Add("Office & Lab", 1, -52, 1).Add("guest", 2, -81, 0, 2462000).Value()},
    };
}

StandInTable ScriptedStandIns() {
    return {
        {"CreateProcessW", [] { return false; }},
        {"DrawTextW", DrawOrMeasure},
        {"EndDialog", [](uint64_t dialog) { player.ended = dialog; }},
        {"GetClientRect", GetClientArea},
        {"GetLocalTime", [](SYSTEMTIME* time) { *time = player.time; }},
        {"GetPixel", [] { return 0; }},
        {"GetTextFaceW", [](uint64_t, int, char16_t* face) { return memcpy(face, u"Tahoma", 14), 7; }},
        {"GetTickCount", [] { return player.tickCount; }},
        {"GetTimeZoneInformation", [](uint8_t* zone) { return memset(zone, 0, 172), 0; }},  // UTC, no daylight saving
        {"MessageBoxW", [] { return std::exchange(player.answer, 1); }},
        {"PostMessageW",
         [](uint64_t window, uint32_t message, uint64_t wParam) {
             player.posted.push_back({window, message, wParam});
         }},
        {"SetTimer", [](uint64_t, uint32_t timer) { return timer; }},
        {"SHGetSpecialFolderPathW", GetSpecialFolder},
        {"Sleep", [] {}},
        // No peer tells its name.
        {"gethostbyname", [] { return 0; }},
        {"socket", [] { return -1; }},
    };
}
