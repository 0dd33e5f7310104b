// diagnostics/record_file.h - files that are nothing but a sequence of records of one size.
#pragma once

#include "platform/system.h"

#include <span>

// Opens a list for reading, unshared with writers. A list that stands under its temporary name alone, because its
// replacement was cut short, gets its own name back first.
HANDLE OpenRecords(const wchar_t* list, const wchar_t* temporary);

// The same for the caller who opens the list otherwise; nothing happens when the list is there.
void TakeBackRecords(const wchar_t* list, const wchar_t* temporary);

// Moves behind the last record. False when the file stands anywhere else.
bool MoveToEnd(HANDLE file);

enum class RecordRead { Some, End, Failed };

// Reads the next record over `record`. Bytes that a cut tail does not supply stay as they were. A read that fails is
// tried again a number of times before it counts as failed.
RecordRead ReadRecord(HANDLE file, std::span<uint8_t> record);

struct RecordCopy {
    bool readAll;   // up to the end of the file
    bool wroteAll;  // every record that was kept
    bool dropped;   // at least one matched
};

using RecordMatch = bool (*)(std::span<const uint8_t> record, const void* wanted);

// Copies every record that does not match `wanted`, a cut tail as a whole one. `record` is the buffer to work with.
RecordCopy CopyOtherRecords(HANDLE from, HANDLE to, std::span<uint8_t> record, RecordMatch matches, const void* wanted);
