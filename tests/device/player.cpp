// Steps become the messages that a person, the host and the system cause.

#include "tests/device/player.h"

#include <algorithm>
#include <array>

using namespace device_script;

namespace {

// Numbers of messages and notifications, the same on every Windows.
constexpr uint32_t kSetText = 0x000C, kPaint = 0x000F, kErase = 0x0014, kNotify = 0x004E, kSetCheck = 0x00F1,
                   kCommand = 0x0111, kTimer = 0x0113, kColorStatic = 0x0138, kChooseEntry = 0x014E, kDropDown = 0x014F,
                   kButtonUp = 0x0202, kClearCache = 0x0400 + 242, kQueryRefresh = 0x0400 + 243, kSetDate = 0x1000 + 2,
                   kSetRowState = 0x1000 + 43;
constexpr int32_t kPageLeft = -201, kPageApplied = -202, kRowTapped = -2, kDateChanged = -759;
constexpr uint32_t kChosen = 1, kTickTimer = 11, kHighWord = 16;  // CBN_SELCHANGE; the item's timer; bits

uint64_t ControlOf(Player& player, uint32_t number) {
    return player.trace.HandleOf(player.trace.NameOf(player.top) + "/" + std::to_string(number));
}

template <class Data>
void SendData(Player& player, uint64_t window, uint32_t message, uint64_t wParam, const Data& data) {
    uint8_t* memory = player.system.memory + kRecordBytes;
    memcpy(memory, std::data(data), std::size(data) * sizeof(data[0]));
    player.system.Send(window, message, wParam, (uint64_t)memory);
}

// NMHDR has the control, its number and the code, each as long as a handle; `data` follow.
void Notify(Player& player, uint32_t control, int32_t code, std::span<const uint32_t> data = {}) {
    std::vector<uint32_t> notice;
    for (const uint64_t field : {ControlOf(player, control), uint64_t{control}, static_cast<uint64_t>(code)}) {
        for (uint32_t bits = 0; bits < 8 * player.trace.pointerBytes; bits += 32) {
            notice.push_back(static_cast<uint32_t>(field >> bits));
        }
    }
    notice.insert(notice.end(), data.begin(), data.end());
    SendData(player, player.top, kNotify, control, notice);
}

void AskHostsQuestion(Player& player, uint32_t message) {
    const int64_t result = player.system.Send(player.item, message, 0, (uint64_t)player.system.memory);
    uint32_t height = 0;
    memcpy(&height, player.system.memory + kRecordHeight, sizeof(height));
    player.trace.Add("  result " + std::to_string(result) + " height " + std::to_string(height));
}

// What a dialog's procedure returns is not what the system returns, so that only the item's results count.
void SendToTop(Player& player, uint32_t message, uint64_t wParam, uint64_t lParam) {
    const uint64_t window = player.top;
    const int64_t result = player.system.Send(window, message, wParam, lParam);
    if (window == player.item) {
        player.trace.Add("  result " + std::to_string(result));
    }
}

uint64_t HostsContext(Player& player) {
    constexpr uint64_t kContext = 1;
    player.trace.names[kContext] = "the host's";
    return kContext;
}

void ShowPage(Player& player, uint32_t number) {
    uint64_t& page = player.pages.at(number);
    page = page != 0 ? page : player.system.OpenPage(number);
    player.top = page;
}

void PerformNext(Player& player) {
    const Step& step = player.steps[player.next++];
    player.trace.Add("# " + std::to_string(player.next));
    step.act(player, step);
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

namespace device_script::steps {

void Attach(Player& player, const Step& step) {
    player.screenWidth = step.a;
    player.screenHeight = step.b;
    player.item = player.top = player.system.Attach();
}

void Detach(Player& player, const Step&) {
    player.trace.selected.clear();
    player.system.Detach();
    player.trace.Close(player.item);
    player.item = player.top = 0;
}

void Clock(Player& player, const Step& step) {
    const auto word = [](uint32_t value) { return static_cast<WORD>(value); };
    player.time = {word(step.a), word(step.b), 0, word(step.c), word(step.d), 30, 15, 0};
}

void Counters(Player& player, const Step& step) {
    player.adapters[step.a].received = step.b;
    player.adapters[step.a].transmitted = step.c;
    Publish(player);
}

void Adapter(Player& player, const Step& step) {
    player.up[step.a] = step.b != 0;
    player.adapters[step.a].index = step.c;
    Publish(player);
}

void Radio(Player& player, const Step& step) {
    player.radio = step.a != 0;
    player.dbm = step.b;
    player.associated = step.c != 0;
    Publish(player);
}

void Tick(Player& player, const Step& step) {
    for (uint32_t i = 0; i < step.d; ++i) {
        player.adapters[step.a].received += step.b;
        player.adapters[step.a].transmitted += step.c;
        player.tickCount += 2000;
        Publish(player);
        player.system.Send(player.item, kTimer, kTickTimer, 0);
    }
}

void Refresh(Player& player, const Step&) {
    AskHostsQuestion(player, kQueryRefresh);
}

void Clear(Player& player, const Step&) {
    AskHostsQuestion(player, kClearCache);
}

void Erase(Player& player, const Step&) {
    SendToTop(player, kErase, HostsContext(player), 0);
}

void Paint(Player& player, const Step&) {
    SendToTop(player, kPaint, 0, 0);
}

void Tap(Player& player, const Step& step) {
    SendToTop(player, kButtonUp, 0, step.a | step.b << kHighWord);
}

void Options(Player& player, const Step&) {
    player.system.OpenOptions();
}

void Command(Player& player, const Step& step) {
    player.system.Send(player.top, kCommand, step.a | step.b << kHighWord, ControlOf(player, step.a));
}

void Timer(Player& player, const Step& step) {
    player.system.Send(player.top, kTimer, step.a, 0);
}

void Text(Player& player, const Step& step) {
    const std::string_view text = step.text;
    std::u16string wide(text.begin(), text.end());
    wide.push_back(0);
    SendData(player, ControlOf(player, step.a), kSetText, 0, wide);
}

void Choose(Player& player, const Step& step) {
    const uint64_t control = ControlOf(player, step.a);
    player.system.Send(control, kDropDown, 1, 0);
    player.system.Send(control, kChooseEntry, step.b, 0);
    player.system.Send(player.top, kCommand, step.a | kChosen << kHighWord, control);
    player.system.Send(control, kDropDown, 0, 0);
}

void Date(Player& player, const Step& step) {
    const std::array<uint32_t, 6> date = {0, step.b | step.c << kHighWord, step.d << kHighWord, 12};
    SendData(player, ControlOf(player, step.a), kSetDate, 0, std::span(date).subspan(1));
    Notify(player, step.a, kDateChanged, date);
}

void Check(Player& player, const Step& step) {
    player.system.Send(ControlOf(player, step.a), kSetCheck, step.b, 0);
}

void Select(Player& player, const Step& step) {
    const std::array<uint32_t, 20> item = {0, 0, 0, 3, 3};  // LVITEM
    SendData(player, ControlOf(player, step.a), kSetRowState, step.b, item);
}

void Row(Player& player, const Step& step) {
    const std::array<uint32_t, 10> row = {step.b};  // NMLISTVIEW
    Notify(player, step.a, kRowTapped, row);
}

void Answer(Player& player, const Step& step) {
    player.answers.push_back(step.a);
}

void Page(Player& player, const Step& step) {
    Notify(player, 0, kPageLeft);
    ShowPage(player, step.a);
}

void Color(Player& player, const Step& step) {
    const int64_t brush = player.system.Send(player.top, kColorStatic, HostsContext(player), ControlOf(player, step.a));
    player.trace.Add("  " + player.trace.NameOf(static_cast<uint64_t>(brush)));
}

void Apply(Player& player, const Step&) {
    Notify(player, 0, kPageLeft);
    for (const uint64_t page : player.pages) {
        if (page != 0) {
            player.top = page;
            Notify(player, 0, kPageApplied);
        }
    }
    player.sheetEnded = true;
}

}  // namespace device_script::steps

Player* player = nullptr;

void Player::Run(std::span<const Step> toPerform) {
    player = this;
    steps = toPerform;
    Publish(*this);
    for (next = 0; next < steps.size();) {
        PerformNext(*this);
    }
}

void Player::RunDialog(uint64_t window) {
    const uint64_t before = top;
    top = window;
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
