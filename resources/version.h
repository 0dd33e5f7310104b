// resources/version.h - the version that the library, the host, the About page and the packages show.
#pragma once

#define QUORVANE_VERSION "2.0"
#define QUORVANE_VERSION_NUMBERS 2, 0, 0, 0
#define QUORVANE_NAME_AND_VERSION "Quorvane v2.0"
