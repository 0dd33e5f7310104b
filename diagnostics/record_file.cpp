// Patient reading and filtered copying of record files.

#include "diagnostics/record_file.h"

RecordRead ReadRecord(HANDLE file, std::span<uint8_t> record) {
    constexpr int kAttempts = 16;  // a medium that never recovers must not hang the screen
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        DWORD count = 0;
        if (ReadFile(file, record.data(), static_cast<DWORD>(record.size()), &count, nullptr)) {
            return count != 0 ? RecordRead::Some : RecordRead::End;
        }
    }
    return RecordRead::Failed;
}

RecordCopy CopyOtherRecords(HANDLE from, HANDLE to, std::span<uint8_t> record, RecordMatch matches,
                            const void* wanted) {
    RecordCopy copy = {false, true, false};
    RecordRead read = RecordRead::Some;
    while ((read = ReadRecord(from, record)) == RecordRead::Some) {
        if (matches(record, wanted)) {
            copy.dropped = true;
            continue;
        }
        DWORD written = 0;
        if (!WriteFile(to, record.data(), static_cast<DWORD>(record.size()), &written, nullptr) ||
            written != record.size()) {
            copy.wroteAll = false;
        }
    }
    copy.readAll = read == RecordRead::End;
    return copy;
}
