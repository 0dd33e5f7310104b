// What of the system the script answers by itself, alike on both: time, the network's peers, a person's answers.

#include "tests/device/player.h"
#include "tests/support/access_point_list.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/wireless_values.h"

#include <algorithm>

using namespace device_script;

namespace {

// In network byte order.
uint32_t AddressOf(const Host& host) {
    return 0x0007A8C0 | static_cast<uint32_t>(host.lastByte) << 24;
}

const Host* FindHost(uint32_t address) {
    const auto* found = std::find_if(std::begin(kHosts), std::end(kHosts),
                                     [&](const Host& host) { return AddressOf(host) == address; });
    return found != std::end(kHosts) ? found : nullptr;
}

std::optional<platform::EchoReply> AnswerEcho(uint32_t address, DWORD) {
    const Host* host = FindHost(address);
    platform::EchoReply reply = {};
    reply.address = address;
    reply.roundTripTime = host != nullptr ? host->roundTripMs : 0;
    reply.timeToLive = 64;
    return host != nullptr ? std::optional(reply) : std::nullopt;
}

void GetClientArea(uint64_t window, int32_t* area) {
    const bool isItem = player->trace.NameOf(window) == "item";
    const bool hiRes = std::max(player->screenWidth, player->screenHeight) > 320;
    area[0] = area[1] = 0;
    area[2] = static_cast<int32_t>(player->screenWidth);
    area[3] = static_cast<int32_t>(!isItem ? player->screenHeight : hiRes ? 40 : 24);
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

// A closed port answers with an error, which the exceptional set would tell.
const char* AskedName() {
    const Host* host = FindHost(player->askedHost);
    return host != nullptr ? host->name : nullptr;
}

int SendTo(uint64_t, const void*, int bytes, int, const uint8_t* address) {
    memcpy(&player->askedHost, address + 4, sizeof(player->askedHost));
    return bytes;
}

size_t ReceiveFrom(uint64_t, uint8_t* buffer) {
    const std::vector<uint8_t> reply = NodeStatusReply({AskedName()});
    std::copy(reply.begin(), reply.end(), buffer);
    return reply.size();
}

}  // namespace

Player::Player() {
    scripted::Reset();
    scripted::Platform& system = scripted::system;
    system.adapters = {kAdapters[0]};
    for (const Host& host : kHosts) {
        if (host.isInArpTable) {
            system.arp.push_back({AddressOf(host), {2, 0, 0, 0, 7, host.lastByte}});
        }
    }
    system.echo = AnswerEcho;
    for (const wchar_t* server : {L"ip1.quorvane.net", L"ip2.quorvane.net"}) {
        system.internet.answers[server].pieces = {kEchoBody};
    }
    UseWireless();
    system.wireless.values = {
        {OID_802_11_BSSID, {2, 0, 0, 0, 0, 1}},
        {OID_802_11_SSID, SsidValue("Office & Lab", 12)},
        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
        {OID_802_11_AUTHENTICATION_MODE, NdisFields({4})},
        {OID_802_11_BSSID_LIST_SCAN, {}},
        {OID_802_11_WEP_STATUS, NdisFields({0})},
        {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
        {OID_802_11_CONFIGURATION, NdisFields({32, 100, 10, 2437000, 0, 0, 0, 0})},
        {OID_802_11_BSSID_LIST,
         AccessPointListBuilder().Add("Office & Lab", 1, -52, 1).Add("guest", 2, -81, 0, 2462000).Value()},
    };
    system.wireless.present = false;
}

StandInTable ScriptedStandIns() {
    return {
        {"DrawTextW", DrawOrMeasure},
        {"EndDialog", [](uint64_t dialog, uint64_t) { player->ended = dialog; }},
        {"GetClientRect", GetClientArea},
        {"GetLocalTime", [](SYSTEMTIME* time) { *time = player->time; }},
        {"GetPixel", [] { return 0; }},
        {"GetTextFaceW", [](uint64_t, int, char16_t* face) { return memcpy(face, u"Tahoma", 14), 7; }},
        {"GetTickCount", [] { return player->tickCount; }},
        {"GetTimeZoneInformation", [](uint8_t* zone) { return memset(zone, 0, 172), 0; }},  // UTC, no daylight saving
        {"MessageBoxW", [] { return std::exchange(player->answer, kOk); }},
        {"PostMessageW",
         [](uint64_t window, uint32_t message, uint64_t wParam) {
             player->posted.push_back({window, message, wParam});
         }},
        {"SetTimer", [](uint64_t, uint32_t timer) { return timer; }},
        {"SHGetSpecialFolderPathW", GetSpecialFolder},
        {"Sleep", [] {}},
        // Peers that are asked for their names, one at a time.
        {"gethostbyname", [] { return 0; }},
        {"socket", [] { return 0x50C; }},
        {"closesocket", [] { return 0; }},
        {"ioctlsocket", [] { return 0; }},
        {"sendto", SendTo},
        {"select", [] { return 1; }},
        {"__WSAFDIsSet", [] { return AskedName() != nullptr; }},
        {"recvfrom", ReceiveFrom},
    };
}
