// Any bytes as the item's files and registry values: the two lists, a month's log (through everything that reads it and
// through the writer), a log's name, the settings.

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "diagnostics/safe_list.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "options/log_months.h"
#include "tests/fakes/fakes.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/host_records.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"

namespace {

void FeedHostList(Input input) {
    WriteWholeFile(L"hosts.dat", Bytes(input.begin(), input.end()));
    const size_t before = ListedHosts().size();
    const bool isCut = input.size() % kHostRecordBytes != 0;
    const bool added = AddHost(nullptr, L"added.example");
    Demand(isCut || ListedHosts().size() == before + (added ? 1 : 0));
    Demand(isCut || !AddHost(nullptr, L"ADDED.example"));
    fakes::AnswerMessagesWith(IDYES);
    fakes::shownMessages.clear();  // what grows from input to input would look like a leak
    Demand(DeleteHost(nullptr, L"added.example"));
    for (const std::wstring& host : ListedHosts()) {
        Demand(host.size() <= kHostUnits && _wcsicmp(host.c_str(), L"added.example") != 0);
    }
}

const Fuzzer kHostList("host_list", {"diagnostics/host_list.cpp", "diagnostics/record_file.cpp"}, FeedHostList,
                       {HostRecordOf(L"a") + HostRecordOf(L"b.example"), HostRecordOf(std::wstring(kHostUnits, L'x')),
                        HostRecordOf(L"Added.Example") + Bytes{'b', 0, 0}});

void FeedSafeList(Input input) {
    constexpr MacAddress kMac = {{1, 2, 3, 4, 5, 6}};
    const Bytes all(input.begin(), input.end());
    const Bytes whole(all.begin(), all.end() - static_cast<std::ptrdiff_t>(all.size() % 6));
    WriteWholeFile(L"slist.dat", whole);
    const bool there = SafeListContains(kMac);
    SafeListAdd(kMac);
    Demand(SafeListContains(kMac) && SafeListRemove(nullptr, kMac) && !SafeListContains(kMac));
    Demand(there || ReadWholeFile(L"slist.dat") == whole);
    WriteWholeFile(L"slist.dat", all);  // with a cut tail
    SafeListRemove(nullptr, kMac);
    Demand(!SafeListContains(kMac) && ReadWholeFile(L"slist.dat").size() % 6 == 0);
}

const Fuzzer kSafeList("safe_list", {"diagnostics/safe_list.cpp", "diagnostics/record_file.cpp"}, FeedSafeList,
                       {{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 7, 1, 2, 3}, {1, 2, 3, 4, 5, 7}});

// The first byte is the type, the rest every value.
void FeedSettings(Input input) {
    const DWORD type = input.empty() ? REG_SZ : input[0];
    Take(input, 1);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    for (const wchar_t* name : {L"Adapter", L"InstallDir", L"XLocation", L"TIcon", L"EchoHost"}) {
        RegSetValueExW(key, name, 0, type, input.data(), static_cast<DWORD>(input.size()));
    }
    RegCloseKey(key);
    LoadFolderSettings();
    LoadDisplaySettings();
    Demand(itemState.xLocation <= kLargestXLocation && wcsnlen(itemState.dataFolder, kPathUnits) < kPathUnits);
    wchar_t few[4] = L"?";
    Demand(!ReadStringSetting(L"EchoHost", few) || (type == REG_SZ && wcsnlen(few, 4) < 4));
}

const Fuzzer kSettings("settings", {"item/settings.cpp"}, FeedSettings,
                       {{REG_DWORD, 75, 0, 0, 0},
                        {REG_DWORD, 0x80, 2, 0, 0},
                        {REG_SZ, 'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0, 0, 0},
                        Bytes(1 + kPathUnits * sizeof(wchar_t), REG_SZ)});

void ReadAndArrange(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    ReadUsage(view);
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    for (int i = 0; i < chart.barCount; ++i) {
        const int height = chart.bars[i].foot - chart.bars[i].top;
        Demand(height > 0 && height <= 100 * ScreenScale());
    }
    for (view.page = 0; view.page < 5; ++view.page) {
        UsageTable table;
        ArrangeUsageTable(view, table);
    }
}

// A tick changes the two counts of one record, or appends one.
void AddTick(const Bytes& before) {
    LogTrafficAt({2006, 12, 0, 5, 10, 0, 0, 0}, 3, 4);
    const Bytes after = ReadWholeFile(L"200612.log");
    Demand(after.size() == before.size() || after.size() == before.size() + sizeof(TrafficLogRecord));
    ptrdiff_t changed = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        changed += before[i] != after[i];
    }
    Demand(changed <= 8 && after != before);
}

void FeedLog(Input input) {
    const Bytes log(input.begin(), input.end());
    WriteLog(2006, 12, log);
    ReadAndArrange(UsageMode::Daily);
    ReadAndArrange(UsageMode::Hourly);
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    Demand(!csv.empty() && csv.back() == '\n');
    AddTick(log);
}

const Fuzzer kLogReader("log_reader",
                        {"trafficlog/log_reader.cpp", "trafficlog/log_file.cpp", "trafficlog/export_writer.cpp",
                         "charts/usage_chart.cpp", "charts/usage_table.cpp"},
                        FeedLog,
                        {LogRecord(5, 9, 1000, 10) + LogRecord(5, 10, 0xFFFFFFFF, 0x80000000) + LogRecord(20, 23, 7, 9),
                         LogRecord(0, 0, 1, 1) + LogRecord(32, 24, 1, 1) + LogRecord(-128, -1, 1, 1) + Bytes(7, 5)});

void FeedLogName(Input input) {
    const std::wstring name(input.begin(), input.end());
    LogMonth month;
    if (ParseLogName(name.c_str(), month)) {
        Demand(month.Number() >= 0 && month.Number() <= 999999);
        Demand(name.starts_with(std::wstring(month.year) + month.month));
    }
}

const Fuzzer kLogNames("log_names", {"options/log_months.cpp"}, FeedLogName,
                       {BytesOf("200612.log"), BytesOf("200699.log"), BytesOf("20061.log")});

}  // namespace
