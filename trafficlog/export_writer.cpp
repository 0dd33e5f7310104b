// Goes through the months of the range one by one; lines are gathered in a buffer, as a write call costs more than the
// line it would carry.

#include "trafficlog/export_writer.h"

#include "platform/format_text.h"
#include "platform/scoped.h"
#include "trafficlog/byte_count.h"
#include "trafficlog/log_reader.h"

namespace {

constexpr size_t kRecordsPerRead = 192;  // 2,304 bytes of stack: a handheld's frame stays below a page
constexpr size_t kLongestLine = 128;
constexpr int kMonthsPerYear = 12;

struct CsvFile {
    HANDLE file;
    size_t used;
    char text[2048];
};

struct MonthTraffic {
    Series transmitted;
    Series received;
    double totalTransmitted;
    double totalReceived;
};

// What decides whether a record of the month at hand counts.
struct DayFilter {
    int firstDay;
    int lastDay;
    bool isLastMonth;
    bool* nothingRead;  // until the export has read its first record
};

void Flush(CsvFile& csv) {
    DWORD written = 0;
    WriteFile(csv.file, csv.text, static_cast<DWORD>(csv.used), &written, nullptr);
    csv.used = 0;
}

std::span<char> RoomForLine(CsvFile& csv) {
    if (csv.used + kLongestLine > sizeof(csv.text)) {
        Flush(csv);
    }
    return std::span(csv.text).subspan(csv.used);
}

void WriteHeader(CsvFile& csv) {
    csv.used += FormatText(RoomForLine(csv), "\"Date\",\"Xmit\",\"Rcv\",\"Total\"\n");
}

void WriteRow(CsvFile& csv, const wchar_t* date, double transmitted, double received) {
    wchar_t counts[3][kByteCountUnits];
    FormatByteCount(transmitted, counts[0]);
    FormatByteCount(received, counts[1]);
    FormatByteCount(transmitted + received, counts[2]);
    csv.used += FormatText(RoomForLine(csv), "\"%S\",\"%S\",\"%S\",\"%S\"\n", date, counts[0], counts[1], counts[2]);
}

bool Passes(int day, const DayFilter& filter) {
    const bool inTime = !filter.isLastMonth || day <= filter.lastDay;
    if (*filter.nothingRead) {
        *filter.nothingRead = false;
        return inTime && day >= filter.firstDay;
    }
    return inTime;
}

void AddRecord(const TrafficLogRecord& record, MonthTraffic& month) {
    const int day = SeriesSlot(record.day);
    if (day < 0) {
        return;
    }
    month.transmitted[day] += record.transmitted;
    month.totalTransmitted += record.transmitted;
    month.received[day] += record.received;
    month.totalReceived += record.received;
}

// Kept out of its caller, whose frame holds the gathered lines already.
[[gnu::noinline]] void ReadMonth(int year, int month, const DayFilter& filter, MonthTraffic& traffic) {
    const platform::ScopedHandle file(OpenTrafficLog(year, month));
    if (!file.IsOpen()) {
        return;
    }
    TrafficLogRecord records[kRecordsPerRead];
    size_t bytes = 0;
    while (ReadLogRecordsPatiently(file.handle, records, &bytes) && bytes != 0) {
        for (const TrafficLogRecord& record : std::span(records, CountRecords(bytes))) {
            if (Passes(record.day, filter)) {
                AddRecord(record, traffic);
            }
        }
    }
}

// All days of the longest month, whatever this one's length: a damaged log may hold them.
void WriteMonth(CsvFile& csv, int year, int month, const MonthTraffic& traffic) {
    wchar_t date[32];
    for (int day = 1; day < kSeriesSlots; ++day) {
        if (traffic.transmitted[day] > 0 || traffic.received[day] > 0) {
            FormatText(date, L"%s %02d, %04d", MonthAbbrev(month), day, year);
            WriteRow(csv, date, traffic.transmitted[day], traffic.received[day]);
        }
    }
    FormatText(date, L"Total for %s %04d", MonthAbbrev(month), year);
    WriteRow(csv, date, traffic.totalTransmitted, traffic.totalReceived);
}

// Months since the year 0.
int MonthIndex(const CalendarDate& date) {
    return date.year * kMonthsPerYear + date.month - 1;
}

}  // namespace

bool IsValidRange(const ExportRange& range) {
    const int from = MonthIndex(range.from);
    const int to = MonthIndex(range.to);
    return from < to || (from == to && range.from.day <= range.to.day);
}

bool ExportTraffic(const wchar_t* path, const ExportRange& range) {
    const platform::ScopedHandle file(
        CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) {
        return false;
    }
    CsvFile csv = {file.handle, 0, {}};
    WriteHeader(csv);
    bool nothingRead = true;
    for (int index = MonthIndex(range.from); index <= MonthIndex(range.to); ++index) {
        const int year = index / kMonthsPerYear;
        const int month = index % kMonthsPerYear + 1;
        MonthTraffic traffic = {};
        ReadMonth(year, month, {range.from.day, range.to.day, index == MonthIndex(range.to), &nothingRead}, traffic);
        WriteMonth(csv, year, month, traffic);
    }
    Flush(csv);
    return true;
}
