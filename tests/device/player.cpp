// Steps become the messages that a person, the host and the system cause.

#include "tests/device/player.h"
#include "tests/support/wireless_values.h"

using namespace device_script;
using namespace device_script::steps;

namespace {

// Numbers of messages and notifications, the same on every Windows.
constexpr uint32_t kSetText = 0x000C, kPaint = 0x000F, kNotify = 0x004E, kSetCheck = 0x00F1, kCommand = 0x0111,
                   kTimer = 0x0113, kChooseEntry = 0x014E, kDropDown = 0x014F, kButtonUp = 0x0202,
                   kClearCache = 0x0400 + 242, kQueryRefresh = 0x0400 + 243, kSetDate = 0x1000 + 2,
                   kSetRowState = 0x1000 + 43;
constexpr int32_t kPageLeft = -201, kPageApplied = -202, kRowTapped = -2, kDateChanged = -759;
constexpr uint32_t kChosen = 1, kTickTimer = 11, kHighWord = 16;  // CBN_SELCHANGE; the item's timer; bits

void SetClock(Player& p, const Step& s) {
    const auto word = [](uint32_t value) { return static_cast<WORD>(value); };
    p.time = {word(s.a), word(s.b), 0, word(s.c), word(s.d), 30, 15, 0};
}

void RunTicks(Player& p, const Step& s) {
    for (uint32_t i = 0; i < s.c; ++i) {
        for (scripted::Adapter& adapter : scripted::system.adapters) {
            adapter.received += s.a;
            adapter.transmitted += s.b;
        }
        p.tickCount += 2000;
        p.Send(p.item, kTimer, kTickTimer, 0);
    }
}

void ChooseEntry(Player& p, const Step& s) {
    p.SendToControl(s.a, kDropDown, 1);
    p.SendToControl(s.a, kChooseEntry, s.b);
    p.SendToTop(kCommand, s.a | kChosen << kHighWord, p.ControlOf(p.top, s.a));
    p.SendToControl(s.a, kDropDown, 0);
}

const std::map<Act, void (*)(Player& p, const Step& s)> kActs = {
    {Attach,
     [](Player& p, const Step& s) {
         p.screenWidth = s.a;
         p.screenHeight = s.b;
         p.trace.names.clear();
         p.item = p.top = p.Attach();
     }},
    {Detach, [](Player& p, const Step&) { p.Detach(); }},
    {Clock, SetClock},
    {Adapters,
     [](Player&, const Step& s) {
         scripted::system.adapters = {kAdapters, kAdapters + s.a};
         for (scripted::Adapter& adapter : scripted::system.adapters) {
             adapter.index += s.b;
         }
     }},
    {Radio,
     [](Player&, const Step& s) {
         scripted::system.wireless.present = s.a != 0;
         scripted::system.wireless.values[OID_802_11_RSSI] = NdisFields({s.b});
     }},
    {Tick, RunTicks},
    {Refresh, [](Player& p, const Step&) { p.Ask(kQueryRefresh); }},
    {Clear, [](Player& p, const Step&) { p.Ask(kClearCache); }},
    {Paint, [](Player& p, const Step&) { p.SendToTop(kPaint); }},
    {Tap, [](Player& p, const Step& s) { p.SendToTop(kButtonUp, 0, s.a | s.b << kHighWord); }},
    {Options, [](Player& p, const Step&) { p.OpenOptions(); }},
    {Command, [](Player& p, const Step& s) { p.SendToTop(kCommand, s.a | s.b << kHighWord, p.ControlOf(p.top, s.a)); }},
    {Timer, [](Player& p, const Step& s) { p.SendToTop(kTimer, s.a); }},
    {Text,
     [](Player& p, const Step& s) {
         std::copy_n(s.text, strlen(s.text) + 1, reinterpret_cast<char16_t*>(p.memory + kRecordBytes));
         p.SendToControl(s.a, kSetText, 0, WordOf(p.memory + kRecordBytes));
     }},
    {Choose, ChooseEntry},
    {Date,
     [](Player& p, const Step& s) {
         const uint32_t month = s.b | s.c << kHighWord, day = s.d << kHighWord, noon = 12;
         p.SendToControl(s.a, kSetDate, 0, p.Store({month, day, noon, 0}));
         p.Notify(s.a, kDateChanged, {0, month, day, noon, 0});
     }},
    {Check, [](Player& p, const Step& s) { p.SendToControl(s.a, kSetCheck, s.b); }},
    {Select,  // LVITEM
     [](Player& p, const Step& s) {
         p.SendToControl(s.a, kSetRowState, s.b, p.Store({0, 0, 0, 3, 3, 0}));
     }},
    {Row,
     [](Player& p, const Step& s) {
         p.Notify(s.a, kRowTapped, {s.b, 0});
     }},  // NMLISTVIEW
    {Answer, [](Player& p, const Step& s) { p.answer = s.a; }},
    {Apply,
     [](Player& p, const Step&) {
         p.Notify(0, kPageLeft);
         p.Notify(0, kPageApplied);
         p.ended = p.top;
     }},
};

}  // namespace

Player* player = nullptr;

void Player::Run(std::span<const Step> toPerform) {
    player = this;
    steps = toPerform;
    next = 0;
    PerformUntilEnd(0);
}

// What is still posted when the dialog ends is lost with it.
void Player::PerformUntilEnd(uint64_t window) {
    for (;;) {
        while (!posted.empty() && posted.front()[0] == window && ended != window) {
            const auto [to, message, wParam] = posted.front();
            posted.pop_front();
            Send(to, static_cast<uint32_t>(message), wParam, 0);
        }
        if (next == steps.size() || (window != 0 && ended == window)) {
            break;
        }
        const Step& step = steps[next++];
        trace.Add("# " + std::to_string(next));
        kActs.at(step.act)(*this, step);
    }
    ended = 0;
    std::erase_if(posted, [&](const auto& message) { return message[0] == window; });
}

void Player::RunDialog(uint64_t window) {
    const uint64_t before = std::exchange(top, window);
    PerformUntilEnd(window);
    top = before;
    CloseWindow(window);
    const std::string name = trace.NameOf(window) + "/";
    std::erase_if(trace.names, [&](const auto& entry) { return (entry.second + "/").starts_with(name); });
}

uint64_t Player::Store(std::initializer_list<uint32_t> words) {
    std::copy(words.begin(), words.end(), reinterpret_cast<uint32_t*>(memory + kRecordBytes));
    return WordOf(memory + kRecordBytes);
}

void Player::Ask(uint32_t message) {
    const int64_t result = Send(item, message, 0, WordOf(memory));
    uint32_t height = 0;
    memcpy(&height, memory + kRecordHeight, sizeof(height));
    trace.Add("  result " + std::to_string(result) + " height " + std::to_string(height));
}

// What a dialog's procedure returns is not what the system returns, so that only the item's results count.
void Player::SendToTop(uint32_t message, uint64_t wParam, uint64_t lParam) {
    const uint64_t window = top;
    const int64_t result = Send(window, message, wParam, lParam);
    if (window == item) {
        trace.Add("  result " + std::to_string(result));
    }
}

void Player::SendToControl(uint32_t number, uint32_t message, uint64_t wParam, uint64_t lParam) {
    Send(ControlOf(top, number), message, wParam, lParam);
}

// NMHDR has the control, its number and the code, each as long as a handle; `data` follow.
void Player::Notify(uint32_t control, int32_t code, std::initializer_list<uint32_t> data) {
    uint8_t* at = memory + kRecordBytes;
    for (const uint64_t field : {ControlOf(top, control), uint64_t{control}, static_cast<uint64_t>(code)}) {
        memcpy(at, &field, trace.pointerBytes);
        at += trace.pointerBytes;
    }
    std::copy(data.begin(), data.end(), reinterpret_cast<uint32_t*>(at));
    SendToTop(kNotify, control, WordOf(memory + kRecordBytes));
}
