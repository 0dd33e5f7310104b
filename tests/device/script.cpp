// What is done to the item.

#include "resources/resource_ids.h"
#include "tests/device/player.h"
#include "tests/support/wireless_values.h"

namespace {

// Taps of the strip's icons, normal pixels.
constexpr uint32_t kTapGraph = 20, kTapSignal = 58, kTapUsage = 77, kTapDhcp = 96, kTapPing = 115, kTapAdapter = 134,
                   kTapScanner = 153, kTapCard = 172, kTapDetector = 191, kTapApplet = 210;
// Numbers of messages and notifications, the same on every Windows.
constexpr uint32_t kSetText = 0x000C, kPaintMessage = 0x000F, kNotify = 0x004E, kSetCheck = 0x00F1, kKeyDown = 0x0100,
                   kCommand = 0x0111, kTimer = 0x0113, kChooseEntry = 0x014E, kDropDown = 0x014F, kButtonUp = 0x0202,
                   kClearCache = 0x0400 + 242, kQueryRefresh = 0x0400 + 243;
constexpr int32_t kPageLeft = -201, kPageApplied = -202, kRowTapped = -2, kDateChanged = -759;
constexpr uint32_t kOk = 1, kArrowDown = 0x28, kTickTimer = 11, kHighWord = 16;  // bits

// NMHDR has a window, its number and the code, each as long as a handle; `data` follow.
void Notify(uint64_t control, int32_t code, std::initializer_list<uint32_t> data = {}) {
    uint8_t* at = player.memory + kRecordBytes;
    for (const uint64_t field : {uint64_t{0}, control, static_cast<uint64_t>(code)}) {
        memcpy(at, &field, kPointerBytes);
        at += kPointerBytes;
    }
    std::copy(data.begin(), data.end(), reinterpret_cast<uint32_t*>(at));
    SendTo(player.top, kNotify, control, WordOf(player.memory + kRecordBytes));
}

// The library is loaded anew; files and registry stay.
Step Attach(uint32_t width, uint32_t height) {
    return [=] {
        player.screenWidth = width;
        player.screenHeight = height;
        player.item = 0;
        player.item = player.top = AttachItem();
    };
}

Step Clock(WORD year, WORD month, WORD day, WORD hour) {
    return [=] { player.time = {year, month, 0, day, hour, 30, 15, 0}; };
}

// The adapter's index, with counters at 0 (an index of 0: there is none), and the signal (0: no driver).
Step Network(uint32_t index, int dbm) {
    return [=] {
        // clang-format off
        scripted::system.adapters.assign(index != 0 ? 1 : 0,
            {.name = "WLAN1", .description = "Built-in wireless adapter", .index = index,
             .hardwareAddress = {0x02, 0x10, 0x20, 0x30, 0x40, 0x50}, .dhcpEnabled = true,
             .dhcpServer = "192.168.7.1", .leaseObtained = 1795255815, .leaseExpires = 1795342215, .haveWins = true,
             .primaryWins = "192.168.7.8", .secondaryWins = "192.168.7.9", .speed = 11000000});
        // clang-format on
        scripted::system.wireless.present = dbm != 0;
        scripted::system.wireless.values[OID_802_11_RSSI] = NdisFields({static_cast<uint32_t>(dbm)});
    };
}

Step Send(uint32_t message, uint32_t wParam, uint32_t lParam = 0) {
    return [=] { SendTo(player.top, message, wParam, lParam); };
}

Step Tap(uint32_t x, uint32_t y = 10) {
    return Send(kButtonUp, 0, x | y << kHighWord);
}

Step Command(uint32_t control) {
    return Send(kCommand, control);
}

Step Control(uint32_t number, uint32_t message, uint32_t wParam, const void* lParam = nullptr) {
    return [=] { SendToControl(number, message, wParam, lParam); };
}

Step TapRow(uint32_t list, uint32_t row) {
    return [=] { Notify(list, kRowTapped, {row, 0}); };
}

Step Date(uint32_t picker, uint32_t year, uint32_t month, uint32_t day) {
    return [=] { Notify(picker, kDateChanged, {0, year | month << kHighWord, day << kHighWord, 0, 0}); };
}

const Step kRefresh = [] { SendTo(player.item, kQueryRefresh, 0, WordOf(player.memory)); };
// The sheet's page is left and applied; the next one is shown.
const Step kApply = [] {
    Notify(0, kPageLeft);
    Notify(0, kPageApplied);
    player.ended = player.top;
};

}  // namespace

const Step kPaint = Send(kPaintMessage, 0);

Step Tick(uint32_t received, uint32_t transmitted, int times) {
    return [=] {
        for (int i = 0; i < times; ++i) {
            for (scripted::Adapter& adapter : scripted::system.adapters) {
                adapter.received += received;
                adapter.transmitted += transmitted;
            }
            player.tickCount += 2000;
            SendTo(player.item, kTimer, kTickTimer, 0);
        }
    };
}

// clang-format off
const Script kBegin = {
    Clock(2026, 1, 31, 22), Network(3, -60), Attach(240, 320), kRefresh, kRefresh, kPaint, Tick(0, 0)};

const Script kTraffic = {
    Clock(2026, 1, 30, 9), Tick(1 << 20, 1 << 19), Clock(2026, 1, 31, 22), kPaint, Tick(1500, 700),  // 1 MB at once
    Tick(900000, 250000, 5), kRefresh, kPaint, Clock(2026, 1, 31, 23), Tick(3000000, 20000, 16),
    kPaint, Clock(2026, 2, 1, 0),  // hour, day and month at once
    Tick(700, 600, 3), Tick(0U - 50000000, 0U - 50000000),  // a fall, below 0, counts nothing
    Tick(100000, 50000000),  // the counters wrap
    Network(0, 0), Tick(0, 0, 2), kPaint, Network(7, -85), Tick(1024, 2048, 4), kPaint, AddFiles};

const Script kTools = {
    Tick(10, 1), Tap(kTapSignal), kPaint, Command(kOk), Tap(kTapDhcp), Command(IDC_DHCP_DETECT),
    Command(IDC_DHCP_RELEASE), Command(IDC_DHCP_RENEW), Command(kOk), Tap(kTapPing),
    Control(IDC_PING_HOST, kSetText, 0, u"192.168.7.20"), Command(IDC_PING_PING), Send(kTimer, 10),
    Control(IDC_PING_HOST, kSetText, 0, u"Router"), Command(IDC_PING_PING), Send(kTimer, 10),
    Command(IDC_PING_DELETE), Command(kOk), Tap(kTapAdapter), Command(kOk), Tap(kTapScanner),
    Control(IDC_SCANNER_LIST, kKeyDown, kArrowDown), TapRow(IDC_SCANNER_LIST, 0), Command(kOk), Tap(kTapCard),
    Command(kOk), Tap(kTapApplet), Tap(kTapGraph), kPaint, Command(kOk), Tap(kTapUsage), kPaint,
    Date(IDC_USAGE_DATE, 2026, 1, 31), kPaint, Control(IDC_USAGE_MODE, kDropDown, 1),
    Control(IDC_USAGE_MODE, kChooseEntry, 1), Command(IDC_USAGE_MODE), kPaint, Tap(40, 50), kPaint,  // table
    Tap(170, 50), Date(IDC_EXPORT_FROM, 2026, 1, 5), Date(IDC_EXPORT_TO, 2026, 2, 28), Command(kOk), Command(kOk)};

const Script kDetector = {
    Tap(kTapDetector), Command(IDC_DETECTOR_DETECT), Send(kTimer, 14), TapRow(IDC_DETECTOR_HOSTS, 0),
    TapRow(IDC_DETECTOR_HOSTS, 1), TapRow(IDC_DETECTOR_HOSTS, 1),  // safe, and no longer
    Command(IDC_DETECTOR_EXPORT), Command(kOk)};

const Script kOptions = {
    OpenOptions, kPaint, kApply, kPaint, Control(IDC_OPTIONS_X_LOCATION, kSetText, 0, u"130"),
    Control(IDC_OPTIONS_AM_PM, kSetCheck, 0), Control(IDC_OPTIONS_LOGS, kKeyDown, kArrowDown),
    Command(IDC_OPTIONS_DELETE), kApply, kPaint, kApply, Command(kOk), Tick(2000, 1000), kPaint};

// The same at double scale. Then without adapter and radio.
const Script kHighResolution = {
    Attach(480, 640), kRefresh, kRefresh, kPaint, Tick(60000, 350000, 24), kPaint, Tap(2 * kTapUsage, 20), kPaint,
    Command(kOk), Tap(2 * kTapGraph, 20), kPaint, Command(kOk), Network(0, 0), Tick(0, 0), Tap(2 * kTapDhcp, 20),
    Command(kOk), OpenOptions, kApply, Command(IDC_OPTIONS_DELETE_ALL), kApply, kApply, Command(kOk)};

const Script kEnd = {Send(kClearCache, 0), AddFiles, DetachItem};
// clang-format on
