// Opening, patient reading and filtered copying of record files.

#include "diagnostics/record_file.h"

#include "platform/scoped.h"

namespace {

HANDLE OpenForReading(const wchar_t* path) {
    return CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

HANDLE OpenRecords(const wchar_t* list, const wchar_t* temporary) {
    HANDLE file = OpenForReading(list);
    if (!platform::IsOpen(file) && MoveFileW(temporary, list)) {
        file = OpenForReading(list);
    }
    return file;
}

void TakeBackRecords(const wchar_t* list, const wchar_t* temporary) {
    MoveFileW(temporary, list);
}

bool MoveToEnd(HANDLE file) {
    return SetFilePointer(file, 0, nullptr, FILE_END) != INVALID_SET_FILE_POINTER;
}

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
