// tests/device/script.h - what is done to the item, once as ARM code in the processor's model and once by the desktop
// build under Wine.
//
// The steps go to the topmost window: the item, or the dialog (page) opened last. A step that opens a dialog makes the
// following ones that dialog's, until one of them ends it.
#pragma once

#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"

namespace device_script {

namespace steps {
enum Act {
    Attach,    // the library is loaded anew with a screen of a x b pixels; files and registry stay
    Detach,    // window destroyed, library unloaded
    Clock,     // local time: a year, b month, c day, d hour; always minute 30, second 15
    Adapters,  // the first a adapters are up, with counters at 0 and interface indices greater by b
    Radio,     // a 1: the driver is there; b dBm (two's complement)
    Tick,      // c times: a received and b transmitted are added to the counters, 2 s later the item's timer
    Refresh,   // the host's refresh query
    Clear,     // the host's clear-cache message
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
    Apply,    // the sheet's page is left and applied (PSN_KILLACTIVE, PSN_APPLY); the next one is shown
};
}  // namespace steps

struct Step {
    steps::Act act;
    uint32_t a = 0;
    uint32_t b = 0;
    uint32_t c = 0;
    uint32_t d = 0;
    const char* text = "";  // ASCII
};

// The network. The first adapter is up from the start.
// clang-format off
inline const scripted::Adapter kAdapters[] = {
    {.name = "WLAN1", .description = "Built-in wireless adapter", .index = 3,
     .hardwareAddress = {0x02, 0x10, 0x20, 0x30, 0x40, 0x50}, .dnsServers = {"192.168.7.1", "192.168.7.2"},
     .dhcpEnabled = true, .dhcpServer = "192.168.7.1", .leaseObtained = 1795255815, .leaseExpires = 1795342215,
     .haveWins = true, .primaryWins = "192.168.7.8", .secondaryWins = "192.168.7.9", .speed = 11000000},
    {.name = "ETHCRADLE1", .description = "Cradle", .index = 9,
     .hardwareAddress = {0x02, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE}, .address = "10.1.2.3", .mask = "255.255.0.0",
     .gateway = "10.1.0.1", .dnsServers = {"10.1.0.1"}},
};
// clang-format on

// Who answers an echo in 192.168.7.0/24 (time to live 64).
struct Host {
    uint8_t lastByte;  // of the address, and of the hardware address
    uint32_t roundTripMs;
    bool isInArpTable;
    const char* name = nullptr;  // of its NetBIOS node status (one name, suffix 0); null: its port is closed
};
inline constexpr Host kHosts[] = {
    {1, 2, true},
    {20, 14, true, "PRINTER"},
    {33, 0, false, "HANDHELD"},
    {250, 120, true},
};
inline constexpr char kEchoBody[] = "203.0.113.77\n";  // every HTTP answer, in one piece

// Taps of the strip's icons, normal pixels.
inline constexpr uint32_t kIconTop = 10;
inline constexpr uint32_t kTapSignal = 58, kTapUsage = 77, kTapDhcp = 96, kTapPing = 115, kTapAdapter = 134,
                          kTapScanner = 153, kTapCard = 172, kTapDetector = 191, kTapFirstApplet = 210,
                          kTapSecondApplet = 229, kTapGraph = 20;
inline constexpr uint32_t kOk = 1, kCancel = 2, kYes = 6, kNo = 7;

namespace steps {
// clang-format off
inline const Step kScript[] = {
    // A day of traffic on a screen of 240 x 320.
    {Clock, 2026, 1, 31, 22}, {Radio, 1, 0xFFFFFFC4},  // -60 dBm
    {Tick, 5000, 3000, 1}, {Attach, 240, 320}, {Refresh}, {Refresh}, {Paint}, {Tick, 0, 0, 1},
    {Paint}, {Tick, 1500, 700, 1}, {Paint}, {Refresh}, {Tick, 40000, 9000, 3}, {Tick, 0, 0, 2},
    {Radio, 1, 0xFFFFFFAB},  // -85 dBm
    {Tick, 900000, 250000, 2}, {Refresh}, {Paint}, {Clock, 2026, 1, 31, 23}, {Tick, 3000000, 20000, 16},
    {Paint}, {Clock, 2026, 2, 1, 0},  // hour, day and month at once
    {Tick, 700, 600, 3}, {Tick, 0U - 50000000, 0U - 50000000, 1},  // a fall, below 0, counts nothing
    {Tick, 100000, 50000000, 1},  // the counters wrap
    {Adapters, 0},  // no adapter at all
    {Radio, 0}, {Tick, 0, 0, 2}, {Refresh}, {Adapters, 1, 4},  // back under another index
    {Radio, 1, 0xFFFFFFBA},
    {Tick, 1024, 2048, 3}, {Adapters, 2, 4},  // a second one changes nothing
    {Tick, 5, 0, 2}, {Radio, 1, 0xFFFFFFC9}, {Clock, 2026, 2, 28, 13}, {Tick, 120000, 80000, 4}, {Paint},
    // The tools.
    {Tap, kTapSignal, kIconTop}, {Paint}, {Timer, 13}, {Command, kOk}, {Tap, kTapUsage, kIconTop}, {Paint},
    {Date, IDC_USAGE_DATE, 2026, 1, 31}, {Paint}, {Choose, IDC_USAGE_MODE, 1}, {Paint}, {Tap, 40, 50},  // table
    {Paint}, {Tap, 85, 50},  // chart
    {Tap, 170, 50},  // export
    {Date, IDC_EXPORT_FROM, 2026, 3, 1}, {Command, kOk},  // ends before it begins
    {Date, IDC_EXPORT_FROM, 2026, 1, 5}, {Date, IDC_EXPORT_TO, 2026, 2, 28}, {Command, IDC_EXPORT_KEYBOARD},
    {Command, kOk}, {Command, kOk}, {Tap, kTapDhcp, kIconTop}, {Command, IDC_DHCP_DETECT},
    {Command, IDC_DHCP_RELEASE}, {Command, IDC_DHCP_RENEW}, {Command, kOk}, {Tap, kTapPing, kIconTop},
    {Command, IDC_PING_PING},  // empty
    {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.20"}, {Command, IDC_PING_PING}, {Timer, 10},
    {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Command, IDC_PING_PING}, {Timer, 10},
    {Text, IDC_PING_HOST, 0, 0, 0, "nowhere.example"}, {Command, IDC_PING_PING}, {Timer, 10},
    {Text, IDC_PING_HOST, 0, 0, 0, "Router"}, {Command, IDC_PING_PING}, {Timer, 10},
    {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Answer, kNo}, {Command, IDC_PING_DELETE},
    {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.77"}, {Answer, kYes}, {Command, IDC_PING_DELETE},
    {Command, kCancel}, {Tap, kTapAdapter, kIconTop}, {Command, kOk},
    {Tap, kTapScanner, kIconTop}, {Select, IDC_SCANNER_LIST, 1}, {Row, IDC_SCANNER_LIST, 1}, {Timer, 7},
    {Command, kOk}, {Tap, kTapCard, kIconTop}, {Command, kOk}, {Tap, kTapDetector, kIconTop},
    {Command, IDC_DETECTOR_DETECT}, {Timer, 14}, {Answer, kYes}, {Row, IDC_DETECTOR_HOSTS, 0},  // safe
    {Answer, kYes}, {Row, IDC_DETECTOR_HOSTS, 1}, {Row, IDC_DETECTOR_HOSTS, 2},  // the device itself
    {Command, IDC_DETECTOR_EXPORT}, {Answer, kYes}, {Row, IDC_DETECTOR_HOSTS, 1},  // no longer safe
    {Command, IDC_DETECTOR_EXPORT}, {Command, kOk}, {Tap, kTapFirstApplet, kIconTop},
    {Tap, kTapSecondApplet, kIconTop}, {Tap, kTapGraph, kIconTop}, {Paint}, {Timer, 12}, {Command, kOk}, {Options},
    {Paint}, {Apply}, {Paint},
    {Text, IDC_OPTIONS_X_LOCATION, 0, 0, 0, "130"}, {Check, IDC_OPTIONS_SHOW_ICON, 0}, {Check, IDC_OPTIONS_AM_PM, 0},
    {Check, IDC_OPTIONS_MILITARY, 1}, {Select, IDC_OPTIONS_LOGS, 0}, {Answer, kCancel}, {Command, IDC_OPTIONS_DELETE},
    {Apply}, {Paint}, {Apply}, {Tick, 2000, 1000, 1}, {Paint}, {Clear}, {Detach},
    // The same at double scale.
    {Attach, 480, 640}, {Refresh}, {Refresh}, {Paint}, {Tick, 60000, 350000, 24}, {Refresh}, {Paint},
    {Tap, 2 * kTapUsage, kIconTop}, {Paint}, {Tap, 80, 100}, {Paint}, {Tap, 340, 100}, {Command, kCancel}, {Command, kOk},
    // Without adapter and radio.
    {Adapters, 0}, {Radio, 0}, {Tick, 0, 0, 1}, {Tap, 2 * kTapDhcp, kIconTop}, {Command, IDC_DHCP_RELEASE},
    {Command, IDC_DHCP_RENEW}, {Command, kCancel}, {Tap, 2 * kTapAdapter, kIconTop}, {Command, kOk},
    {Tap, 2 * kTapScanner, kIconTop}, {Timer, 7}, {Command, kCancel}, {Tap, 2 * kTapCard, kIconTop}, {Command, kOk},
    {Tap, 2 * kTapDetector, kIconTop}, {Command, IDC_DETECTOR_DETECT}, {Command, kCancel},
    {Tap, 2 * kTapPing, kIconTop}, {Text, IDC_PING_HOST, 0, 0, 0, "192.168.7.250"}, {Command, IDC_PING_PING},
    {Timer, 10}, {Command, kOk}, {Adapters, 1}, {Radio, 1, 0xFFFFFFC9}, {Tick, 0, 0, 2},
    {Tap, 2 * kTapGraph, kIconTop}, {Paint}, {Command, kOk}, {Tap, 2 * kTapSignal, kIconTop}, {Command, kOk},
    {Options}, {Apply}, {Paint}, {Command, IDC_OPTIONS_DELETE}, {Answer, kCancel},
    {Command, IDC_OPTIONS_DELETE_ALL}, {Check, IDC_OPTIONS_SHOW_ICON, 1}, {Apply}, {Apply}, {Tick, 1, 1, 2}, {Clear},
    {Detach},
};
// clang-format on
}  // namespace steps
using steps::kScript;

}  // namespace device_script
