// platform/desktop/wine.h - whether the system is Windows itself or Wine, for the few calls that differ.
#pragma once

namespace platform {

bool IsWine();

}  // namespace platform
