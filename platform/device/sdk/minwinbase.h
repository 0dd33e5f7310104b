// platform/device/sdk/minwinbase.h - stands before the desktop's header: the record of a found file as a handheld fills
// it.
#pragma once

#define _WIN32_FIND_DATAW DesktopFindData
#define WIN32_FIND_DATAW DesktopFindDataRecord
#define PWIN32_FIND_DATAW DesktopFindDataPointer
#define LPWIN32_FIND_DATAW DesktopFindDataLongPointer
#include_next <minwinbase.h>
#undef _WIN32_FIND_DATAW
#undef WIN32_FIND_DATAW
#undef PWIN32_FIND_DATAW
#undef LPWIN32_FIND_DATAW

// No short name and no reserved words, but the file's object number; on a desktop the name is at offset 44.
typedef struct _WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwOID;
    WCHAR cFileName[MAX_PATH];
} WIN32_FIND_DATAW, *PWIN32_FIND_DATAW, *LPWIN32_FIND_DATAW;

static_assert(sizeof(WIN32_FIND_DATAW) == 560);
