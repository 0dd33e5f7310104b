// Steps become the messages that a person, the host and the system cause.

#include "tests/device/player.h"

#include <algorithm>
#include <iterator>

using namespace device_script;

namespace {

// Numbers of messages and notifications, the same on every Windows.
constexpr uint32_t kSetText = 0x000C, kPaint = 0x000F, kErase = 0x0014, kNotify = 0x004E, kSetCheck = 0x00F1,
                   kCommand = 0x0111, kTimer = 0x0113, kColorStatic = 0x0138, kChooseEntry = 0x014E, kDropDown = 0x014F,
                   kButtonUp = 0x0202, kClearCache = 0x0400 + 242, kQueryRefresh = 0x0400 + 243, kSetDate = 0x1000 + 2,
                   kSetRowState = 0x1000 + 43;
constexpr int32_t kPageLeft = -201, kPageApplied = -202, kRowTapped = -2, kDateChanged = -759;
constexpr uint32_t kChosen = 1;      // CBN_SELCHANGE
constexpr uint32_t kTickTimer = 11;  // the item's
constexpr uint32_t kLoWords = 16;

void SetClock(Player& player, const Step& step) {
    const auto word = [](uint32_t value) { return static_cast<uint16_t>(value); };
    player.world.time = {word(step.a), word(step.b), 0, word(step.c), word(step.d), kMinute, kSecond, 0};
    player.system.OnWorldChanged(player.world);
}

void SetCounters(Player& player, const Step& step) {
    player.world.adapters[step.a].received = step.b;
    player.world.adapters[step.a].transmitted = step.c;
    player.system.OnWorldChanged(player.world);
}

void SetAdapter(Player& player, const Step& step) {
    player.world.adapters[step.a].up = step.b != 0;
    player.world.adapters[step.a].index = step.c;
    player.system.OnWorldChanged(player.world);
}

void SetRadio(Player& player, const Step& step) {
    player.world.radio = step.a != 0;
    player.world.dbm = step.b;
    player.world.associated = step.c != 0;
    player.system.OnWorldChanged(player.world);
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

void Refresh(Player& player, uint32_t message) {
    const int64_t result = player.system.Send(player.item, message, 0, player.system.Record());
    player.trace.Add("  result " + std::to_string(result) + " height " +
                     std::to_string(player.system.RecordedHeight()));
}

void Attach(Player& player, const Step& step) {
    player.world.screenWidth = step.a;
    player.world.screenHeight = step.b;
    player.system.OnWorldChanged(player.world);
    player.item = player.top = player.system.Attach();
}

void Detach(Player& player, const Step&) {
    Refresh(player, kClearCache);
    player.trace.selected.clear();
    player.system.Detach();
    player.item = player.top = 0;
    std::erase_if(player.trace.names, [](const auto& name) { return name.second == "item"; });
    player.trace.Add("left over:\n" + player.trace.Leftovers());
}

// NMHDR has the control, its number and the code, each as long as a handle; `data` follow.
void Notify(Player& player, uint64_t window, uint32_t control, int32_t code, std::span<const uint32_t> data = {}) {
    std::vector<uint32_t> notice;
    for (const uint64_t field :
         {player.system.Control(window, control), uint64_t{control}, static_cast<uint64_t>(code)}) {
        for (uint32_t word = 0; word < player.system.WordsOfHandle(); ++word) {
            notice.push_back(static_cast<uint32_t>(field >> 32 * word));
        }
    }
    notice.insert(notice.end(), data.begin(), data.end());
    player.system.SendData(window, kNotify, control, notice);
}

uint64_t ControlOf(Player& player, const Step& step) {
    return player.system.Control(player.top, step.a);
}

void SetControlText(Player& player, const Step& step) {
    std::vector<uint32_t> units(64);
    for (size_t i = 0; step.text[i] != 0; ++i) {
        units[i / 2] |= static_cast<uint32_t>(step.text[i]) << kLoWords * (i % 2);
    }
    player.system.SendData(ControlOf(player, step), kSetText, 0, units);
}

void Choose(Player& player, const Step& step) {
    const uint64_t control = ControlOf(player, step);
    player.system.Send(control, kDropDown, 1, 0);
    player.system.Send(control, kChooseEntry, step.b, 0);
    player.system.Send(player.top, kCommand, step.a | kChosen << kLoWords, control);
    player.system.Send(control, kDropDown, 0, 0);
}

void SetDate(Player& player, const Step& step) {
    const uint32_t date[] = {0, step.b | step.c << kLoWords, step.d << kLoWords, 12, 0, 0};
    player.system.SendData(ControlOf(player, step), kSetDate, 0, std::span(date).subspan(1));
    Notify(player, player.top, step.a, kDateChanged, date);
}

void Select(Player& player, const Step& step) {
    const std::array<uint32_t, 20> item = {0, 0, 0, 3, 3};  // LVITEM
    player.system.SendData(ControlOf(player, step), kSetRowState, step.b, item);
}

void TapRow(Player& player, const Step& step) {
    const std::array<uint32_t, 10> row = {step.b};  // NMLISTVIEW
    Notify(player, player.top, step.a, kRowTapped, row);
}

uint64_t HostsContext(Player& player) {
    const uint64_t context = player.system.Context(player.top);
    player.trace.names[context] = "the host's";
    return context;
}

void AskColor(Player& player, const Step& step) {
    const int64_t brush = player.system.Send(player.top, kColorStatic, HostsContext(player), ControlOf(player, step));
    player.trace.Add("  " + player.trace.NameOf(static_cast<uint64_t>(brush)));
}

void ShowPage(Player& player, uint32_t number) {
    uint64_t& page = player.pages.at(number);
    page = page != 0 ? page : player.system.OpenPage(number);
    player.top = page;
}

void TurnPage(Player& player, const Step& step) {
    Notify(player, player.top, 0, kPageLeft);
    ShowPage(player, step.a);
}

void Apply(Player& player, const Step&) {
    Notify(player, player.top, 0, kPageLeft);
    for (const uint64_t page : player.pages) {
        if (page != 0) {
            Notify(player, page, 0, kPageApplied);
        }
    }
    player.sheetEnded = true;
}

// What a dialog's procedure returns is not what the system returns, so that only the item's results count.
void SendAndNote(Player& player, uint32_t message, uint64_t wParam, uint64_t lParam) {
    const uint64_t window = player.top;
    const int64_t result = player.system.Send(window, message, wParam, lParam);
    if (window == player.item) {
        player.trace.Add("  result " + std::to_string(result));
    }
}

void SendCommand(Player& player, const Step& step) {
    player.system.Send(player.top, kCommand, step.a | step.b << kLoWords, ControlOf(player, step));
}

// In the order of Act.
constexpr struct {
    const char* name;
    void (*perform)(Player& player, const Step& step);
} kActs[] = {
    {"Attach", Attach},
    {"Detach", Detach},
    {"Clock", SetClock},
    {"Counters", SetCounters},
    {"Adapter", SetAdapter},
    {"Radio", SetRadio},
    {"Tick", Tick},
    {"Refresh", [](Player& player, const Step&) { Refresh(player, kQueryRefresh); }},
    {"Clear", [](Player& player, const Step&) { Refresh(player, kClearCache); }},
    {"Erase", [](Player& player, const Step&) { SendAndNote(player, kErase, HostsContext(player), 0); }},
    {"Paint", [](Player& player, const Step&) { SendAndNote(player, kPaint, 0, 0); }},
    {"Tap", [](Player& player, const Step& s) { SendAndNote(player, kButtonUp, 0, s.a | s.b << kLoWords); }},
    {"Options", [](Player& player, const Step&) { player.system.OpenOptions(); }},
    {"Command", SendCommand},
    {"Timer", [](Player& player, const Step& step) { player.system.Send(player.top, kTimer, step.a, 0); }},
    {"Text", SetControlText},
    {"Choose", Choose},
    {"Date", SetDate},
    {"Check", [](Player& player, const Step& s) { player.system.Send(ControlOf(player, s), kSetCheck, s.b, 0); }},
    {"Select", Select},
    {"Row", TapRow},
    {"Answer", [](Player& player, const Step& step) { player.answers.push_back(step.a); }},
    {"Page", TurnPage},
    {"Color", AskColor},
    {"Apply", Apply},
};

void PerformNext(Player& player) {
    const size_t number = player.next++;
    const Step& step = player.steps[number];
    const auto& [name, perform] = kActs[static_cast<size_t>(step.act)];
    player.trace.Add("# " + std::to_string(number) + " " + name);
    perform(player, step);
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

void Close(Player& player, uint64_t window) {
    player.system.CloseWindow(window);
    player.trace.Close(window);
}

}  // namespace

uint32_t device_script::AddressOf(const Host& host) {
    return 0x0007A8C0 | static_cast<uint32_t>(host.lastByte) << 24;
}

const Host* device_script::FindHost(uint32_t address) {
    const auto* found = std::find_if(std::begin(kHosts), std::end(kHosts),
                                     [&](const Host& host) { return AddressOf(host) == address; });
    return found != std::end(kHosts) ? found : nullptr;
}

const Host* device_script::FindHostNamed(const std::string& name) {
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto* found = std::find_if(std::begin(kHosts), std::end(kHosts), [&](const Host& host) {
        return host.dnsName != nullptr && lower == host.dnsName;
    });
    return found != std::end(kHosts) ? found : nullptr;
}

uint32_t World::HeightOf(bool isItem) const {
    const bool hiRes = std::max(screenWidth, screenHeight) > 320;
    return !isItem ? screenHeight : hiRes ? 40 : 24;
}

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
    Close(*this, window);
}

void Player::RunSheet(size_t pageCount) {
    const uint64_t before = top;
    sheetEnded = false;
    pages.assign(pageCount, 0);
    ShowPage(*this, 0);
    trace.NoteControls(top, system.Controls(top));
    while (!sheetEnded && next < steps.size()) {
        PerformNext(*this);
    }
    top = before;
    for (const uint64_t page : pages) {
        if (page != 0) {
            Close(*this, page);
        }
    }
}

uint32_t Player::AnswerMessageBox() {
    const uint32_t answer = answers.empty() ? kOk : answers.front();
    answers.erase(answers.begin(), answers.begin() + (answers.empty() ? 0 : 1));
    return answer;
}
