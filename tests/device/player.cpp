// Performs scripts; and what of the system the script answers by itself, alike on both: time, the network's peers, a
// person's answers.

#include "tests/device/player.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"

Player player;

namespace {

// In 192.168.7.0/24 three hosts answer; the last byte of their address tells the rest.
std::optional<platform::EchoReply> AnswerEcho(uint32_t address, DWORD) {
    platform::EchoReply reply = {};
    reply.address = address;
    reply.roundTripTime = address >> 24;
    reply.timeToLive = 64;
    const bool answers = reply.roundTripTime == 1 || reply.roundTripTime == 20 || reply.roundTripTime == 250;
    return answers ? std::optional(reply) : std::nullopt;
}

bool GetClientArea(uint64_t window, int32_t* area) {
    area[0] = area[1] = 0;
    area[2] = static_cast<int32_t>(player.screenWidth);
    area[3] = static_cast<int32_t>(window == player.item ? 24 : player.screenHeight);
    return true;
}

bool GetSpecialFolder(uint64_t, char16_t* path, int folder) {
    const std::u16string_view name = folder == CSIDL_PERSONAL ? u"\\My Documents" : u"\\Program Files";
    path[name.copy(path, name.size())] = 0;
    return true;
}

// No font decides how wide a text is.
int DrawOrMeasure(uint64_t, const char16_t* text, int, int32_t* area, int flags) {
    constexpr int kMeasure = 0x400, kHeight = 12, kCharacterWidth = 5;  // DT_CALCRECT
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
    system.arp = {{0x0107A8C0, {2, 0, 0, 0, 7, 1}}, {0x1407A8C0, {2, 0, 0, 0, 7, 20}}};
    system.echo = AnswerEcho;
    system.internet.answers[L"ip1.quorvane.net"] = {"203.0.113.77\n"};
    UseWireless();
    system.wireless.values = {
        {OID_802_11_BSSID, {2, 0, 0, 0, 0, 1}},
        {OID_802_11_SSID, SsidValue("Office & Lab", 12)},
        {OID_802_11_BSSID_LIST_SCAN, {}},
        {OID_802_11_CONFIGURATION, NdisFields({32, 100, 10, 2437000, 0, 0, 0, 0})},
        {OID_802_11_BSSID_LIST, AccessPointListBuilder().Add("Office & Lab", 1, -52, 1).Add("guest", 2, -81).Value()},
    };
}

void Perform(const Script& script) {
    player.script = &script;
    player.next = 0;
    RunDialog(player.item);
}

void PerformWholeScript() {
    for (const Script* script : {&kBegin, &kTraffic, &kTools, &kDetector, &kOptions, &kEnd, &kHighResolution, &kEnd}) {
        Perform(*script);
    }
}

void RunDialog(uint64_t window) {
    const uint64_t before = std::exchange(player.top, window);
    while (player.next < player.script->size() && player.ended != window) {
        const Step& step = (*player.script)[player.next++];
        Add("# " + std::to_string(player.next));
        step();
    }
    player.ended = 1;
    player.top = before;
}

StandInTable ScriptedStandIns() {
    return {
        {"CreateProcessW", [] { return false; }},
        {"DrawTextW", DrawOrMeasure},
        {"EndDialog", [](uint64_t dialog) { return player.ended = dialog; }},
        {"GetClientRect", GetClientArea},
        {"GetLocalTime", [](SYSTEMTIME* time) { return *time = player.time, true; }},
        {"GetPixel", [] { return 0; }},
        {"GetSystemMetrics", [](uint32_t which) { return which == 0 ? player.screenWidth : player.screenHeight; }},
        {"GetTickCount", [] { return player.tickCount; }},
        {"GetTimeZoneInformation", [](uint8_t* zone) { return memset(zone, 0, 172), 0; }},  // UTC, no daylight saving
        // Yes or OK.
        {"MessageBoxW", [](uint64_t, uint64_t, uint64_t, uint32_t flags) { return (flags & 7) == 4 ? 6 : 1; }},
        {"PostMessageW", [] { return true; }},
        {"SetTimer", [](uint64_t, uint32_t timer) { return timer; }},
        {"SHGetSpecialFolderPathW", GetSpecialFolder},
        {"Sleep", [] { return 0; }},
        // No peer tells its name.
        {"gethostbyname", [] { return 0; }},
        {"socket", [] { return -1; }},
    };
}
