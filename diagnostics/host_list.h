// diagnostics/host_list.h - "hosts.dat": the hosts that were ever pinged, in the order in which they were added.
//
// A plain sequence of 200-byte records, each a UTF-16LE text of at most 99 characters with its terminator; what follows
// the terminator means nothing. No two entries are equal without regard to case.
#pragma once

#include "platform/scoped.h"
#include "platform/system.h"

#include <array>

inline constexpr size_t kHostUnits = 100;  // with the terminator
inline constexpr size_t kHostRecordBytes = 200;

// Walks the list. While it is open nobody can write to it. A list that was left under its temporary name is found.
struct HostListReader {
    platform::ScopedHandle file;
    std::array<uint8_t, kHostRecordBytes> record;
    wchar_t
        host[kHostUnits + 1];  // the entry that NextHost found; a record without terminator ends after its last unit

    HostListReader();  // opens the file; file.IsOpen() is false when there is none
};

// False at the end of the list or when it cannot be read on.
bool NextHost(HostListReader& reader);

// Appends `host`, creating folders and file as needed, unless an equal entry is there. True only when a record was
// written.
bool AddHost(HWND owner, const wchar_t* host);

// Asks, then rewrites the list without the entries equal to `host`; without the last one the file goes. True when the
// shown list is worth reading again, which includes the answer No and a file that could not be replaced (the user is
// told of that). A list that cannot be copied whole stays as it was.
bool DeleteHost(HWND owner, const wchar_t* host);
