// Steps become the messages that a person, the host and the system cause.

#include "tests/device/player.h"

using namespace device_script;

namespace {

// Numbers of messages and notifications, the same on every Windows.
enum Message : uint32_t {
    kSetText = 0x000C,
    kPaint = 0x000F,
    kErase = 0x0014,
    kNotify = 0x004E,
    kCommand = 0x0111,
    kTimer = 0x0113,
    kButtonUp = 0x0202,
    kColorStatic = 0x0138,
    kSetCheck = 0x00F1,
    kChooseEntry = 0x014E,
    kDropDown = 0x014F,
    kSetRowState = 0x1000 + 43,
    kSetDate = 0x1000 + 2,
    kClearCache = 0x0400 + 242,
    kQueryRefresh = 0x0400 + 243,
};
constexpr int32_t kPageLeft = -201, kPageApplied = -202, kRowTapped = -2, kDateChanged = -759;
constexpr uint32_t kChosen = 1;      // CBN_SELCHANGE
constexpr uint32_t kTickTimer = 11;  // the item's
constexpr uint32_t kLoWords = 16;

constexpr const char* kNames[] = {"Attach",  "Detach", "Clock",  "Counters", "Adapter", "Radio",   "Tick",
                                  "Refresh", "Clear",  "Erase",  "Paint",    "Tap",     "Options", "Command",
                                  "Timer",   "Text",   "Choose", "Date",     "Check",   "Select",  "Row",
                                  "Answer",  "Page",   "Color",  "Apply"};

// Steps that change the world only.
bool ChangeWorld(World& world, const Step& step) {
    switch (step.act) {
        case Act::Clock:
            world.year = step.a;
            world.month = step.b;
            world.day = step.c;
            world.hour = step.d;
            return true;
        case Act::Counters:
            world.adapters[step.a].received = step.b;
            world.adapters[step.a].transmitted = step.c;
            return true;
        case Act::Adapter:
            world.adapters[step.a].up = step.b != 0;
            world.adapters[step.a].index = step.c;
            return true;
        case Act::Radio:
            world.radio = step.a != 0;
            world.dbm = step.b;
            world.associated = step.c != 0;
            return true;
        default:
            return false;
    }
}

void Tick(Player& player, const Step& step) {
    for (uint32_t i = 0; i < step.d; ++i) {
        player.world.adapters[step.a].received += step.b;
        player.world.adapters[step.a].transmitted += step.c;
        player.world.tickCount += kTickMs;
        player.system.OnWorldChanged(player.world);
        player.system.Send(player.item, kTimer, kTickTimer, 0);
    }
}

void Attach(Player& player, const Step& step) {
    player.world.screenWidth = step.a;
    player.world.screenHeight = step.b;
    player.system.OnWorldChanged(player.world);
    player.item = player.top = player.system.Attach();
}

void Detach(Player& player) {
    player.system.Refresh(player.item, kClearCache);
    player.trace.selected.clear();
    player.system.Detach();
    player.item = player.top = 0;
    player.trace.Add("left over:\n" + player.trace.Leftovers());
}

void SetControlText(Player& player, uint64_t control, const char* text) {
    std::vector<uint32_t> units(64);
    for (size_t i = 0; text[i] != 0; ++i) {
        units[i / 2] |= static_cast<uint32_t>(text[i]) << kLoWords * (i % 2);
    }
    player.system.SendData(control, kSetText, 0, units);
}

void PerformOnControl(Player& player, const Step& step) {
    System& system = player.system;
    const uint64_t control = system.Control(player.top, step.a);
    switch (step.act) {
        case Act::Text:
            return SetControlText(player, control, step.text);
        case Act::Choose:
            system.Send(control, kDropDown, 1, 0);
            system.Send(control, kChooseEntry, step.b, 0);
            system.Send(player.top, kCommand, step.a | kChosen << kLoWords, control);
            system.Send(control, kDropDown, 0, 0);
            return;
        case Act::Date: {
            const uint32_t date[] = {0, step.b | step.c << kLoWords, step.d << kLoWords, 12, 0, 0};
            system.SendData(control, kSetDate, 0, std::span(date).subspan(1));
            system.Notify(player.top, step.a, kDateChanged, date);
            return;
        }
        case Act::Check:
            system.Send(control, kSetCheck, step.b, 0);
            return;
        case Act::Select: {
            const std::vector<uint32_t> item = {0, 0, 0, 3, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
            system.SendData(control, kSetRowState, step.b, item);
            return;
        }
        case Act::Row: {
            const uint32_t row[] = {step.b, 0, 0, 0, 0, 0, 0, 0, 0, 0};
            system.Notify(player.top, step.a, kRowTapped, row);
            return;
        }
        default:
            player.trace.Add("  " + player.trace.NameOf(static_cast<uint64_t>(
                                        system.Send(player.top, kColorStatic, system.Context(player.top), control))));
    }
}

void LeavePage(Player& player) {
    player.system.Notify(player.top, 0, kPageLeft, {});
}

void Apply(Player& player) {
    LeavePage(player);
    for (const uint64_t page : player.system.ShownPages()) {
        player.system.Notify(page, 0, kPageApplied, {});
    }
    player.sheetEnded = true;
}

// What a dialog's procedure returns is not what the system returns, so that only the item's results count.
void SendAndNote(Player& player, Message message, uint64_t wParam, uint64_t lParam) {
    const uint64_t window = player.top;
    const int64_t result = player.system.Send(window, message, wParam, lParam);
    if (window == player.item) {
        player.trace.Add("  result " + std::to_string(result));
    }
}

void Perform(Player& player, const Step& step) {
    System& system = player.system;
    switch (step.act) {
        case Act::Attach:
            return Attach(player, step);
        case Act::Detach:
            return Detach(player);
        case Act::Tick:
            return Tick(player, step);
        case Act::Refresh:
            return system.Refresh(player.item, kQueryRefresh);
        case Act::Clear:
            return system.Refresh(player.item, kClearCache);
        case Act::Erase:
            return SendAndNote(player, kErase, system.Context(player.top), 0);
        case Act::Paint:
            return SendAndNote(player, kPaint, 0, 0);
        case Act::Tap:
            return SendAndNote(player, kButtonUp, 0, step.a | step.b << kLoWords);
        case Act::Options:
            return system.OpenOptions();
        case Act::Command:
            system.Send(player.top, kCommand, step.a | step.b << kLoWords, system.Control(player.top, step.a));
            return;
        case Act::Timer:
            system.Send(player.top, kTimer, step.a, 0);
            return;
        case Act::Answer:
            player.answers.push_back(step.a);
            return;
        case Act::Page:
            LeavePage(player);
            player.top = system.ShowPage(step.a);
            return;
        case Act::Apply:
            return Apply(player);
        default:
            return PerformOnControl(player, step);
    }
}

void PerformNext(Player& player) {
    const size_t number = player.next++;
    const Step& step = player.steps[number];
    player.trace.Add("# " + std::to_string(number) + " " + kNames[static_cast<size_t>(step.act)]);
    if (ChangeWorld(player.world, step)) {
        player.system.OnWorldChanged(player.world);
    } else {
        Perform(player, step);
    }
    if (player.trace.dialogsOpen > 0 && player.top != 0) {
        player.trace.NoteControls(player.top, player.system.Controls(player.top));
    }
}

// What is still posted when the dialog ends is lost with it.
void DeliverPosted(Player& player, uint64_t window) {
    while (!player.posted.empty() && player.posted.front().window == window && player.ended != window) {
        const Player::Posted message = player.posted.front();
        player.posted.pop_front();
        player.system.Send(window, message.message, message.wParam, 0);
    }
}

}  // namespace

void Player::Run() {
    system.OnWorldChanged(world);
    while (next < steps.size()) {
        PerformNext(*this);
    }
}

void Player::RunDialog(uint64_t window) {
    const uint64_t before = top;
    top = window;
    trace.NoteControls(window, system.Controls(window));
    DeliverPosted(*this, window);
    while (ended != window && next < steps.size()) {
        PerformNext(*this);
        DeliverPosted(*this, window);
    }
    ended = 0;
    std::erase_if(posted, [&](const Posted& message) { return message.window == window; });
    top = before;
}

void Player::RunSheet() {
    const uint64_t before = top;
    sheetEnded = false;
    top = system.ShowPage(0);
    trace.NoteControls(top, system.Controls(top));
    while (!sheetEnded && next < steps.size()) {
        PerformNext(*this);
    }
    top = before;
}

uint32_t Player::AnswerMessageBox() {
    const uint32_t answer = answers.empty() ? kOk : answers.front();
    if (!answers.empty()) {
        answers.pop_front();
    }
    return answer;
}
