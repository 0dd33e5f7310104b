// The screen of native tests has a size and nothing to draw on.

#include "platform/screen.h"

#include "tests/fakes/scripted_platform.h"

namespace platform {

SIZE ScreenSize() {
    return scripted::system.screen;
}

}  // namespace platform
