// Signed divisions truncate: a dialog larger than the screen hangs out on both sides.

#include "item/dialog_placement.h"

#include "item/item_state.h"

#include <algorithm>

DialogPlace ArrangeDialog(Placement placement, int width, int height, int taskbarHeight) {
    constexpr int kLift = 26;
    DialogPlace place = {0, 0, width + 1, height + 1};
    place.x = (itemState.screenWidth - place.width) / 2;
    place.y = (itemState.screenHeight - place.height) / 2;
    const bool landscape = itemState.screenWidth >= itemState.screenHeight;
    if (placement == Placement::Lifted) {
        place.y -= kLift;
    } else if (placement == Placement::BelowTaskbar || (placement == Placement::LandscapeBelowTaskbar && landscape)) {
        place.y = std::max(place.y, taskbarHeight);
    }
    return place;
}
