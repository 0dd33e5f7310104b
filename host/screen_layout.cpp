// The proportions of a handheld's Today screen.

#include "host/screen_layout.h"

namespace {

constexpr int kTaskbarHeight = 26;
constexpr int kDateHeight = 24;
constexpr int kBarHeight = 26;
constexpr int kKeyboardHeight = 80;
constexpr int kLargestNormalSide = 320;

}  // namespace

ScreenLayout ArrangeScreen(SIZE screen, int stripHeight) {
    ScreenLayout layout = {};
    layout.scale = screen.cx > kLargestNormalSide || screen.cy > kLargestNormalSide ? 2 : 1;
    const LONG width = screen.cx;
    const LONG dateTop = kTaskbarHeight * layout.scale;
    const LONG stripTop = dateTop + kDateHeight * layout.scale;
    const LONG barTop = screen.cy - kBarHeight * layout.scale;
    layout.taskbar = {0, 0, width, dateTop};
    layout.date = {0, dateTop, width, stripTop};
    layout.strip = {0, stripTop, width, stripTop + stripHeight};
    layout.bar = {0, barTop, width, screen.cy};
    layout.leftKey = {0, barTop, width / 2, screen.cy};
    layout.rightKey = {width / 2, barTop, width, screen.cy};
    layout.keyboard = {0, barTop - kKeyboardHeight * layout.scale, width, barTop};
    return layout;
}
