// Any bytes as the item's files and registry values: the two lists, the settings, a month's log through everything that
// reads it and through the writer, and a log's name.

#include <numeric>

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
    Demand(isCut || (ListedHosts().size() == before + (added ? 1 : 0) && !AddHost(nullptr, L"ADDED.example")));
    fakes::AnswerMessagesWith(IDYES);
    fakes::shownMessages.clear();  // what grows from input to input would look like a leak
    Demand(DeleteHost(nullptr, L"added.example"));
    for (const std::wstring& host : ListedHosts()) {
        Demand(host.size() <= kHostUnits && _wcsicmp(host.c_str(), L"added.example") != 0);
    }
}

const Fuzzer kHostList("host_list", {"diagnostics/host_list.cpp", "diagnostics/record_file.cpp"},
                       {HostRecordOf(L"a") + HostRecordOf(L"b.example"), HostRecordOf(std::wstring(kHostUnits, L'x')),
                        HostRecordOf(L"Added.Example") + Bytes{'b', 0, 0}},
                       FeedHostList);

void FeedSafeList(Input input) {
    constexpr MacAddress kMac = {{1, 2, 3, 4, 5, 6}};
    const Bytes before(input.begin(), input.end());
    WriteWholeFile(L"slist.dat", before);
    const bool there = SafeListContains(kMac) || before.size() % sizeof(kMac) != 0;
    SafeListAdd(kMac);
    Demand(there || SafeListContains(kMac));
    SafeListRemove(nullptr, kMac);
    const Bytes after = ReadWholeFile(L"slist.dat");
    Demand(!SafeListContains(kMac) && after.size() % sizeof(kMac) == 0 && (there || after == before));
}

const Fuzzer kSafeList("safe_list", {"diagnostics/safe_list.cpp", "diagnostics/record_file.cpp"},
                       {{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 7, 1, 2, 3}, {1, 2, 3, 4, 5, 7}}, FeedSafeList);

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

const Fuzzer kSettings("settings", {"item/settings.cpp"},
                       {{REG_DWORD, 75, 0, 0, 0},
                        {REG_DWORD, 0x80, 2, 0, 0},
                        {REG_SZ, 'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0, 0, 0},
                        Bytes(1 + kPathUnits * sizeof(wchar_t), REG_SZ)},
                       FeedSettings);

void FeedLog(Input input) {
    const Bytes log(input.begin(), input.end());
    WriteLog(2006, 12, log);
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    for (const UsageMode mode : {UsageMode::Daily, UsageMode::Hourly}) {
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
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    Demand(ReadWholeFile(L"out.csv").back() == '\n');
    // A tick changes the two counts of one record, or appends one.
    LogTrafficAt({2006, 12, 0, 5, 10, 0, 0, 0}, 3, 4);
    const Bytes after = ReadWholeFile(L"200612.log");
    Demand(after.size() == log.size() || after.size() == log.size() + sizeof(TrafficLogRecord));
    Demand(after != log &&
           std::inner_product(log.begin(), log.end(), after.begin(), 0, std::plus(), std::not_equal_to()) <= 8);
}

const Fuzzer kLogReader("log_reader",
                        {"trafficlog/log_reader.cpp", "trafficlog/log_file.cpp", "trafficlog/export_writer.cpp",
                         "charts/usage_chart.cpp", "charts/usage_table.cpp"},
                        {LogRecord(5, 9, 1000, 10) + LogRecord(5, 10, 0xFFFFFFFF, 0x80000000) + LogRecord(20, 23, 7, 9),
                         LogRecord(0, 0, 1, 1) + LogRecord(32, 24, 1, 1) + LogRecord(-128, -1, 1, 1) + Bytes(7, 5)},
                        FeedLog);

const Fuzzer kLogNames("log_names", {"options/log_months.cpp"},
                       {BytesOf("200612.log"), BytesOf("200699.log"), BytesOf("20061.log")}, [](Input input) {
                           const std::wstring name(input.begin(), input.end());
                           LogMonth month;
                           Demand(!ParseLogName(name.c_str(), month) ||
                                  name.starts_with(std::wstring(month.year) + month.month));
                       });

}  // namespace
