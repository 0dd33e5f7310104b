// Scripts become the messages that a person, the host and the system cause.

#include "tests/device/player.h"

Player player;

namespace {

// What is still posted when the dialog ends is lost with it.
void PerformUntilEnd(uint64_t window) {
    const auto ends = [=] { return window != 0 && player.ended == window; };
    while (!ends()) {
        if (!player.posted.empty() && player.posted.front()[0] == window) {
            const auto [to, message, wParam] = player.posted.front();
            player.posted.pop_front();
            SendTo(to, static_cast<uint32_t>(message), wParam, 0);
        } else if (player.next < player.script->size()) {
            const Step& step = (*player.script)[player.next++];
            Add("# " + std::to_string(player.next));
            step();
        } else {
            break;
        }
    }
    player.ended = 0;
    std::erase_if(player.posted, [&](const auto& message) { return message[0] == window; });
}

}  // namespace

void Perform(const Script& script) {
    player.script = &script;
    player.next = 0;
    PerformUntilEnd(0);
}

void PerformWholeScript() {
    for (const Script* script : {&kBegin, &kTraffic, &kTools, &kDetector, &kOptions, &kEnd, &kHighResolution, &kEnd}) {
        Perform(*script);
    }
}

void RunDialog(uint64_t window) {
    const uint64_t before = std::exchange(player.top, window);
    PerformUntilEnd(window);
    player.top = before;
    CloseWindow(window);
}
