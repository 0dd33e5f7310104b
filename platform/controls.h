// platform/controls.h - the system's dialogs and common controls, for the files that show something.
#pragma once

#include "platform/system.h"

#include <commctrl.h>
#include <prsht.h>
