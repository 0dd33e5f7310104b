// tests/device/script.h - what is done to the item, once as ARM code in the processor's model and once by the desktop
// build under Wine. Plain tables without system headers; numbers of controls and templates are the resources' own.
//
// The steps go to the topmost window: the item, or the dialog (page) opened last. A step that opens a dialog makes the
// following ones that dialog's, until one of them ends it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "resources/resource_ids.h"

namespace device_script {

enum class Act : uint8_t {
    Attach,    // the library is loaded anew with a screen of a x b pixels; files and registry stay
    Detach,    // cache cleared, window destroyed, library unloaded
    Clock,     // local time: a year, b month, c day, d hour; always minute 30, second 15
    Counters,  // of adapter a: b octets received, c transmitted
    Adapter,   // adapter a is b (1 up, 0 down and gone from every list) and has interface index c
    Radio,     // a 1: the driver is there; b dBm (two's complement); c 1: associated
    Tick,      // d times: b received and c transmitted are added to adapter a's counters, then the item's timer
    Refresh,   // the host's refresh query
    Clear,     // the host's clear-cache message
    Erase,     // background
    Paint,     // of the topmost window
    Tap,       // pen up at (a, b) of the topmost window
    Options,   // the host opens template 500 with ordinal 241
    // The rest is for dialogs; a is the control's number.
    Command,  // WM_COMMAND with notification code b
    Timer,    // timer number a
    Text,     // the control's text becomes `text`
    Choose,   // entry b of a drop-down list is chosen while it is dropped down, with CBN_SELCHANGE
    Date,     // the date picker's date becomes b-c-d, with DTN_DATETIMECHANGE
    Check,    // b is the new check state
    Select,   // row b of a list view is selected
    Row,      // row b of a list view is tapped (NM_CLICK)
    Answer,   // the next message box is answered with button a
    Page,     // page a of the sheet is shown, the one before it left (PSN_KILLACTIVE)
    Color,    // WM_CTLCOLORSTATIC of the control
    Apply,    // the sheet is closed: PSN_KILLACTIVE of the page shown, then PSN_APPLY of all that were shown
};

struct Step {
    Act act;
    uint32_t a = 0;
    uint32_t b = 0;
    uint32_t c = 0;
    uint32_t d = 0;
    const char* text = "";  // ASCII
};

inline constexpr uint32_t kMinute = 30;
inline constexpr uint32_t kSecond = 15;
inline constexpr uint32_t kFirstTickCount =
    1000000;  // GetTickCount at the start, ms; every tick adds the item's period
inline constexpr uint32_t kTickMs = 2000;
inline constexpr char kProgramFiles[] = "\\Program Files";  // CSIDL_PROGRAM_FILES
inline constexpr char kDocuments[] = "\\My Documents";      // CSIDL_PERSONAL; exists from the start
inline constexpr char kDataFolder[] = "\\Program Files\\Ostrik\\Quorvane";
inline constexpr int kCharacterWidth = 5;  // of every text measured, pixels; 12 high
inline constexpr uint32_t kStripWidth = 240;

// The network. Adapter 0 is up from the start, adapter 1 is not.
struct Adapter {
    const char* name;
    const char* description;
    uint32_t index;
    uint8_t mac[6];
    const char* address;
    const char* mask;
    const char* gateway;
    const char* dns[2];
    const char* dhcpServer;  // null: DHCP is off
    uint32_t leaseObtained;  // seconds since 1970, UTC; the time zone is UTC
    uint32_t leaseExpires;
    const char* wins[2];  // null: none
    uint32_t speed;       // bit/s
};
inline constexpr uint32_t kInterfaceType = 6;  // Ethernet
inline constexpr Adapter kAdapters[] = {
    {"WLAN1",
     "Built-in wireless adapter",
     3,
     {0x02, 0x10, 0x20, 0x30, 0x40, 0x50},
     "192.168.7.33",
     "255.255.255.0",
     "192.168.7.1",
     {"192.168.7.1", "192.168.7.2"},
     "192.168.7.1",
     1795255815,
     1795342215,
     {"192.168.7.8", "192.168.7.9"},
     11000000},
    {"ETHCRADLE1",
     "Cradle",
     9,
     {0x02, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE},
     "10.1.2.3",
     "255.255.0.0",
     "10.1.0.1",
     {"10.1.0.1", nullptr},
     nullptr,
     0,
     0,
     {nullptr, nullptr},
     100000000},
};

// Who answers an echo in 192.168.7.0/24 (time to live 64); the rows of the ARP table are those with a hardware address.
struct Host {
    uint8_t lastByte;
    uint32_t roundTripMs;
    const uint8_t* mac;   // 6 bytes, or null: not in the ARP table
    const char* name;     // of its NetBIOS node status (one name, suffix 0), or null: its port is closed
    const char* dnsName;  // gethostbyname knows it by this name, or null
};
inline constexpr uint8_t kHostMacs[3][6] = {{0x02, 0, 0, 0, 7, 1}, {0x02, 0, 0, 0, 7, 0x14}, {0x02, 0, 0, 0, 7, 0xFA}};
inline constexpr Host kHosts[] = {
    {1, 2, kHostMacs[0], nullptr, "router"},
    {20, 14, kHostMacs[1], "PRINTER", nullptr},
    {33, 0, nullptr, "HANDHELD", nullptr},
    {250, 120, kHostMacs[2], nullptr, nullptr},
};
inline constexpr char kEchoBody[] = "203.0.113.77\n";  // every HTTP answer, in one piece

// The driver's values; those of RSSI and BSSID follow the steps. An identifier without a value fails; sets succeed.
struct OidValue {
    uint32_t oid;
    const char* bytes;
    size_t size;
};
inline constexpr uint32_t kOidRssi = 0x0D010206;
inline constexpr uint32_t kOidBssid = 0x0D010101;
inline constexpr char kAssociatedBssid[] = "\x02\x00\x00\x00\x09\x01";
inline constexpr char kBinding[] = "WLAN1";

inline constexpr size_t kPointBytes = 104;
struct PointList {
    char bytes[4 + 2 * kPointBytes];

    constexpr void Put(size_t at, uint32_t value) {
        for (size_t i = 0; i < 4; ++i) {
            bytes[at + i] = static_cast<char>(value >> 8 * i & 0xFF);
        }
    }
    constexpr void Add(size_t entry, const char* ssid, char bssid, int32_t rssi, uint32_t privacy, uint32_t frequency) {
        const size_t at = 4 + entry * kPointBytes;
        Put(0, static_cast<uint32_t>(entry + 1));
        Put(at, kPointBytes);
        bytes[at + 4] = 2;
        bytes[at + 8] = 9;
        bytes[at + 9] = bssid;
        size_t length = 0;
        for (; ssid[length] != 0; ++length) {
            bytes[at + 16 + length] = ssid[length];
        }
        Put(at + 12, static_cast<uint32_t>(length));
        Put(at + 48, privacy);
        Put(at + 52, static_cast<uint32_t>(rssi));
        Put(at + 56, 3);
        Put(at + 72, frequency);
        Put(at + 92, 1);
        Put(at + 96, 0x968B8482);
    }
};
inline constexpr PointList kPoints = [] {
    PointList list = {};
    list.Add(0, "Office & Lab", 1, -52, 1, 2437000);
    list.Add(1, "guest", 2, -81, 0, 2462000);
    return list;
}();
inline constexpr OidValue kOids[] = {
    {0x0D010102, "\x0C\0\0\0Office & Lab\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 36},                // SSID
    {0x0D010108, "\1\0\0\0", 4},                                                                       // mode
    {0x0D010118, "\4\0\0\0", 4},                                                                       // authentication
    {0x0D01011A, "", 0},                                                                               // scan
    {0x0D01011B, "\0\0\0\0", 4},                                                                       // WEP
    {0x0D010204, "\1\0\0\0", 4},                                                                       // network type
    {0x0D010211, "\x20\0\0\0\x64\0\0\0\x0A\0\0\0\x88\x2F\x25\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 32},  // configuration
    {0x0D010217, kPoints.bytes, sizeof(kPoints.bytes)},                                                // list
};

// Taps of the strip's icons, normal pixels.
inline constexpr uint32_t kIconTop = 10;
inline constexpr uint32_t kTapSignal = 58, kTapUsage = 77, kTapDhcp = 96, kTapPing = 115, kTapAdapter = 134,
                          kTapScanner = 153, kTapCard = 172, kTapDetector = 191, kTapFirstApplet = 210,
                          kTapSecondApplet = 229, kTapGraph = 20;
inline constexpr uint32_t kOk = 1, kCancel = 2, kYes = 6, kNo = 7;

// clang-format off
inline constexpr Step kScript[] = {
    // A day of traffic on a screen of 240 x 320.
    {Act::Clock, 2026, 1, 31, 22}, {Act::Radio, 1, 0xFFFFFFC4, 1},  // -60 dBm
    {Act::Counters, 0, 5000, 3000}, {Act::Attach, 240, 320}, {Act::Refresh}, {Act::Refresh}, {Act::Erase},
    {Act::Paint}, {Act::Tick, 0, 0, 0, 1}, {Act::Paint}, {Act::Tick, 0, 1500, 700, 1}, {Act::Paint}, {Act::Refresh},
    {Act::Tick, 0, 40000, 9000, 3}, {Act::Tick, 0, 0, 0, 2}, {Act::Radio, 1, 0xFFFFFFAB, 1},  // -85 dBm
    {Act::Tick, 0, 900000, 250000, 2}, {Act::Refresh}, {Act::Paint}, {Act::Clock, 2026, 1, 31, 23},
    {Act::Tick, 0, 3000000, 20000, 16}, {Act::Paint}, {Act::Clock, 2026, 2, 1, 0},  // hour, day and month at once
    {Act::Tick, 0, 700, 600, 3}, {Act::Counters, 0, 0xFFFFFF00, 0xFFFFFFF0},  // a jump of more than 2^31 counts nothing
    {Act::Tick, 0, 0, 0, 1}, {Act::Tick, 0, 0x200, 0x20, 2},  // the counters wrap
    {Act::Counters, 0, 10, 10},  // and fall
    {Act::Tick, 0, 0, 0, 1}, {Act::Adapter, 0, 0, 3},  // no adapter at all
    {Act::Radio, 0}, {Act::Tick, 0, 0, 0, 2}, {Act::Refresh}, {Act::Adapter, 0, 1, 7},  // back under another index
    {Act::Counters, 0, 100000, 50000}, {Act::Radio, 1, 0xFFFFFFBA, 0},  // heard, not associated
    {Act::Tick, 0, 1024, 2048, 3}, {Act::Adapter, 1, 1, 9},  // a second one changes nothing
    {Act::Tick, 0, 5, 0, 2}, {Act::Radio, 1, 0xFFFFFFC9, 1}, {Act::Clock, 2026, 2, 28, 13},
    {Act::Tick, 0, 120000, 80000, 4}, {Act::Paint},
    // The tools.
    {Act::Tap, kTapSignal, kIconTop}, {Act::Paint}, {Act::Timer, 13}, {Act::Command, kOk},
    {Act::Tap, kTapUsage, kIconTop}, {Act::Paint}, {Act::Date, IDC_USAGE_DATE, 2026, 1, 31}, {Act::Paint},
    {Act::Choose, IDC_USAGE_MODE, 1}, {Act::Paint}, {Act::Tap, 40, 50},  // table
    {Act::Paint}, {Act::Tap, 85, 50},  // chart
    {Act::Tap, 170, 50},  // export
    {Act::Date, IDC_EXPORT_FROM, 2026, 3, 1}, {Act::Command, kOk},  // ends before it begins
    {Act::Date, IDC_EXPORT_FROM, 2026, 1, 5}, {Act::Date, IDC_EXPORT_TO, 2026, 2, 28},
    {Act::Command, IDC_EXPORT_KEYBOARD}, {Act::Command, kOk}, {Act::Command, kOk}, {Act::Tap, kTapDhcp, kIconTop},
    {Act::Command, IDC_DHCP_DETECT}, {Act::Command, IDC_DHCP_RELEASE}, {Act::Command, IDC_DHCP_RENEW},
    {Act::Command, kOk}, {Act::Tap, kTapPing, kIconTop}, {Act::Command, IDC_PING_PING},  // empty
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"}, {Act::Command, IDC_PING_PING}, {Act::Timer, 10},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Act::Command, IDC_PING_PING}, {Act::Timer, 10},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "nowhere.example"}, {Act::Command, IDC_PING_PING}, {Act::Timer, 10},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "Router"}, {Act::Command, IDC_PING_PING}, {Act::Timer, 10},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Act::Answer, kNo}, {Act::Command, IDC_PING_DELETE},
    {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Act::Answer, kYes}, {Act::Command, IDC_PING_DELETE},
    {Act::Command, IDC_PING_KEYBOARD}, {Act::Command, kCancel}, {Act::Tap, kTapAdapter, kIconTop}, {Act::Command, kOk},
    {Act::Tap, kTapScanner, kIconTop}, {Act::Select, IDC_SCANNER_LIST, 1}, {Act::Row, IDC_SCANNER_LIST, 1},
    {Act::Timer, 7}, {Act::Command, kOk}, {Act::Tap, kTapCard, kIconTop}, {Act::Command, kOk},
    {Act::Tap, kTapDetector, kIconTop}, {Act::Command, IDC_DETECTOR_DETECT}, {Act::Timer, 14}, {Act::Answer, kYes},
    {Act::Row, IDC_DETECTOR_HOSTS, 0},  // safe
    {Act::Answer, kYes}, {Act::Row, IDC_DETECTOR_HOSTS, 1}, {Act::Row, IDC_DETECTOR_HOSTS, 2},  // the device itself
    {Act::Command, IDC_DETECTOR_EXPORT}, {Act::Answer, kYes}, {Act::Row, IDC_DETECTOR_HOSTS, 1},  // no longer safe
    {Act::Command, IDC_DETECTOR_EXPORT}, {Act::Command, kOk}, {Act::Tap, kTapFirstApplet, kIconTop},
    {Act::Tap, kTapSecondApplet, kIconTop}, {Act::Tap, kTapGraph, kIconTop}, {Act::Paint}, {Act::Timer, 12},
    {Act::Command, kOk}, {Act::Options}, {Act::Paint}, {Act::Color, IDC_PAGE_HEADER}, {Act::Page, 1}, {Act::Paint},
    {Act::Color, IDC_PAGE_HEADER}, {Act::Text, IDC_OPTIONS_X_LOCATION, 0, 0, 0, "130"},
    {Act::Check, IDC_OPTIONS_SHOW_ICON, 0}, {Act::Check, IDC_OPTIONS_AM_PM, 0}, {Act::Check, IDC_OPTIONS_MILITARY, 1},
    {Act::Select, IDC_OPTIONS_LOGS, 0}, {Act::Answer, kCancel}, {Act::Command, IDC_OPTIONS_DELETE}, {Act::Page, 2},
    {Act::Paint}, {Act::Apply}, {Act::Tick, 0, 2000, 1000, 1}, {Act::Paint}, {Act::Clear}, {Act::Detach},
    // The same at double scale, and then held sideways.
    {Act::Attach, 480, 640}, {Act::Refresh}, {Act::Refresh}, {Act::Paint}, {Act::Tick, 0, 60000, 350000, 24},
    {Act::Refresh}, {Act::Paint},
    // A month with two pages of days.
    {Act::Clock, 2026, 3, 2, 9}, {Act::Tick, 0, 11200, 124, 1}, {Act::Clock, 2026, 3, 3, 9},
    {Act::Tick, 0, 56700, 279, 1}, {Act::Clock, 2026, 3, 4, 9}, {Act::Tick, 0, 179200, 496, 1},
    {Act::Clock, 2026, 3, 5, 9}, {Act::Tick, 0, 437500, 775, 1}, {Act::Clock, 2026, 3, 6, 9},
    {Act::Tick, 0, 907200, 1116, 1}, {Act::Clock, 2026, 3, 7, 9}, {Act::Tick, 0, 1680700, 1519, 1},
    {Act::Clock, 2026, 3, 8, 9}, {Act::Tick, 0, 2867200, 1984, 1}, {Act::Clock, 2026, 3, 9, 9},
    {Act::Tick, 0, 4592700, 2511, 1}, {Act::Clock, 2026, 3, 10, 9}, {Act::Tick, 0, 7000000, 3100, 1},
    {Act::Clock, 2026, 3, 11, 9}, {Act::Tick, 0, 10248700, 3751, 1}, {Act::Tap, 2 * kTapUsage, kIconTop}, {Act::Paint},
    {Act::Tap, 80, 100}, {Act::Paint}, {Act::Tap, 320, 420}, {Act::Paint}, {Act::Tap, 370, 420}, {Act::Paint},
    {Act::Tap, 340, 100}, {Act::Command, kCancel}, {Act::Command, kOk},
    // Without adapter and radio.
    {Act::Adapter, 0, 0, 3}, {Act::Radio, 0}, {Act::Tick, 0, 0, 0, 1}, {Act::Tap, 2 * kTapDhcp, kIconTop},
    {Act::Command, IDC_DHCP_RELEASE}, {Act::Command, IDC_DHCP_RENEW}, {Act::Command, kCancel},
    {Act::Tap, 2 * kTapAdapter, kIconTop}, {Act::Command, kOk}, {Act::Tap, 2 * kTapScanner, kIconTop}, {Act::Timer, 7},
    {Act::Command, kCancel}, {Act::Tap, 2 * kTapCard, kIconTop}, {Act::Command, kOk},
    {Act::Tap, 2 * kTapDetector, kIconTop}, {Act::Command, IDC_DETECTOR_DETECT}, {Act::Command, kCancel},
    {Act::Tap, 2 * kTapPing, kIconTop}, {Act::Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.250"},
    {Act::Command, IDC_PING_PING}, {Act::Timer, 10}, {Act::Command, kOk}, {Act::Adapter, 0, 1, 3},
    {Act::Radio, 1, 0xFFFFFFC9, 1}, {Act::Tick, 0, 0, 0, 2}, {Act::Tap, 2 * kTapGraph, kIconTop}, {Act::Paint},
    {Act::Command, kOk}, {Act::Tap, 2 * kTapSignal, kIconTop}, {Act::Command, kOk}, {Act::Options}, {Act::Page, 1},
    {Act::Paint}, {Act::Command, IDC_OPTIONS_DELETE}, {Act::Answer, kCancel}, {Act::Command, IDC_OPTIONS_DELETE_ALL},
    {Act::Check, IDC_OPTIONS_SHOW_ICON, 1}, {Act::Apply}, {Act::Tick, 0, 1, 1, 2}, {Act::Detach},
    {Act::Attach, 320, 240}, {Act::Refresh}, {Act::Refresh}, {Act::Paint}, {Act::Clock, 2026, 3, 1, 8},
    {Act::Tick, 0, 10, 10, 2}, {Act::Tap, kTapUsage, kIconTop}, {Act::Paint}, {Act::Tap, 40, 50}, {Act::Paint},
    {Act::Command, kOk}, {Act::Tap, kTapPing, kIconTop}, {Act::Command, kOk}, {Act::Tap, kTapAdapter, kIconTop},
    {Act::Command, kOk}, {Act::Tap, kTapScanner, kIconTop}, {Act::Command, kOk}, {Act::Options}, {Act::Page, 1},
    {Act::Paint}, {Act::Answer, kOk}, {Act::Select, IDC_OPTIONS_LOGS, 2}, {Act::Command, IDC_OPTIONS_DELETE},
    {Act::Apply}, {Act::Clear}, {Act::Detach},
};
// clang-format on

}  // namespace device_script
