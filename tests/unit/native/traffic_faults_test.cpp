// Faults under the tick, the traffic log and its readers, the settings and the list of logs.

#include <gtest/gtest.h>

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "item/tick.h"
#include "options/general_settings.h"
#include "options/log_months.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"
#include "tests/support/traffic_logs.h"
#include "tests/unit/native/fault_walk.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "trafficlog/log_reader.h"

namespace {

// "hour:received" of each record of the 15th.
std::string Log() {
    std::string text = FileExists(L"200612.log") ? "log" : "no log";
    const Bytes log = ReadWholeFile(L"200612.log");
    for (size_t offset = 0; offset + 12 <= log.size(); offset += 12) {
        uint32_t received = 0;
        memcpy(&received, &log[offset + 4], sizeof(received));
        text += log[offset] == 15 ? " " + std::to_string(log[offset + 1]) + ":" + std::to_string(received) : "";
    }
    return text + " of " + std::to_string(ReadWholeFile(L"200612.log").size());
}

void UseThreeHours() {
    WriteLog(2006, 12, LogRecord(15, 9, 7, 0) + LogRecord(15, 10, 1000, 0) + LogRecord(15, 11, 9, 0));
}

void UseFullMonth() {
    WriteLog(2006, 12, FullMonth(2006, 12, 1, 1));
    fakes::SetLocalTime({2006, 12, 0, 31, 23, 0, 0, 0});
}

std::string LogOne() {
    LogTraffic(nullptr, 1, 0);
    return {};
}

std::string ReadDays() {
    TrafficSeries series;
    const int slots = ReadTrafficLog(UsageMode::Daily, {2006, 12, 5}, series);
    return std::to_string(slots) + ", " + std::to_string(static_cast<int>(series.received[1] + series.received[31]));
}

std::string Export() {
    return YesOrNo(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 30}, {2006, 12, 31}}));
}

std::string LastLineOfExport() {
    const Bytes csv = ReadWholeFile(L"out.csv");
    const std::string text(csv.begin(), csv.end());
    return text.substr(text.rfind('\n', text.size() - 2) + 1);
}

TEST(Faults, Of_the_traffic_log) {
    WalkFaults("log the first traffic of a month", {[] {}, LogOne, Log}, "log 10:1 of 12", {"no log of 0", "log of 0"},
               {"log 10:1 of 12", "log 10:2 of 12"});
    WalkFaults("log into the record of the hour", {UseThreeHours, LogOne, Log}, "log 9:7 10:1001 11:9 of 36",
               {"log 9:7 10:1000 11:9 of 36"}, {"log 9:7 10:1001 11:9 of 36", "log 9:7 10:1002 11:9 of 36"});
    WalkFaults("read a month", {UseFullMonth, ReadDays}, "31, 48", {"31, 0", "31, 24"});
    // A tick in a full month costs a handful of calls.
    UseFullMonth();
    fakes::FailCall(0, fakes::Faults::Once);
    LogTraffic(nullptr, 1, 1);
    EXPECT_LE(fakes::EndFaults(), 10);
    WalkFaults("export a month", {UseThreeHours, Export, LastLineOfExport},
               "yes | \"Total for Dec 2006\",\"0\",\"0.99KB\",\"0.99KB\"\n",
               {"no", "yes", "yes | \"Total for Dec 2006\",\"0\",\"0\",\"0\"\n"});
}

std::string Settings() {
    wchar_t adapter[32] = {};
    ReadStringSetting(L"Adapter", adapter);
    std::string text = Narrow(adapter);
    for (const wchar_t* name : {L"XLocation", L"TIcon", L"TFormat"}) {
        uint32_t number = 0;
        text += ReadNumberSetting(name, &number) ? " " + std::to_string(number) : " none";
    }
    return text;
}

std::string LoadDisplay() {
    LoadDisplaySettings();
    return std::to_string(itemState.xLocation) + " " + YesOrNo(itemState.showTaskbarIcon) + " " +
           YesOrNo(itemState.amPmFormat);
}

std::string LoadFolders() {
    LoadFolderSettings();
    return Narrow(itemState.adapterName) + " in " + Narrow(itemState.dataFolder);
}

std::string SaveDisplay() {
    SaveXLocation(30);
    SaveShowTaskbarIcon(true);
    SaveHourFormat(true);
    itemState.showTaskbarIcon = itemState.amPmFormat = false;
    return {};
}

void UseAdapter() {
    scripted::system.adapters = {{.name = "eth", .index = 7, .received = 100}};
}

void UseStored() {
    UseAdapter();
    WriteStringSetting(L"Adapter", L"stored", 6);
    WriteStringSetting(L"InstallDir", L"\\data", 5);
    WriteNumberSetting(L"XLocation", 20);
    WriteNumberSetting(L"TIcon", 0);
    WriteNumberSetting(L"TFormat", 0);
}

// What is stored stays, though it could not be read; only what is absent is written.
TEST(Faults, Of_the_settings) {
    const std::string program = " in \\Program Files\\Ostrik\\Quorvane | ";
    WalkFaults("load the display settings", {UseStored, LoadDisplay, Settings}, "20 no no | stored 20 0 0",
               {"75 no no | stored 20 0 0", "20 yes no | stored 20 0 0", "20 no yes | stored 20 0 0",
                "75 yes yes | stored 20 0 0", "20 yes yes | stored 20 0 0"});
    WalkFaults("load the display settings for the first time", {[] {}, LoadDisplay, Settings}, "75 yes yes |  75 1 1",
               {"75 yes yes |  none 1 1", "75 yes yes |  75 none 1", "75 yes yes |  75 1 none",
                "75 yes yes |  none none none", "75 yes yes |  75 none none"});
    WalkFaults("load adapter and folder", {UseStored, LoadFolders, Settings}, "stored in \\data | stored 20 0 0",
               {"eth in \\data | stored 20 0 0", "stored" + program + "stored 20 0 0", program + "stored 20 0 0"});
    WalkFaults("load adapter and folder for the first time", {UseAdapter, LoadFolders, Settings},
               "eth" + program + "eth none none none",
               {"eth" + program + " none none none", program + " none none none"});
    WalkFaults("change the display settings", {UseStored, SaveDisplay, Settings}, "stored 30 1 1",
               {"stored 20 1 1", "stored 30 0 1", "stored 30 1 0", "stored 20 0 0", "stored 30 0 0"});
}

std::string Months() {
    std::string text;
    LogSearch search;
    while (const wchar_t* name = NextLogFile(search)) {
        LogMonth month;
        text += ParseLogName(name, month) ? std::to_string(month.Number()) + " " : "? ";
    }
    return text;
}

void UseMonths() {
    for (const int month : {1, 2, 3}) {
        WriteLog(2006, month, {});
    }
}

std::string DeleteMonths() {
    DeleteAllLogs();
    return {};
}

std::string ChosenAdapter() {
    return Narrow(itemState.adapterName) + (itemState.interfaceIndex == 7 ? " by its index" : "");
}

void UseFirstTick() {
    UseAdapter();
    RunTick(nullptr);
    scripted::system.adapters[0].received = 150;
}

std::string Tick() {
    RunTick(nullptr);
    return std::to_string(itemState.inDeltas[0]) + " to " + std::to_string(itemState.lastInOctets);
}

TEST(Faults, Of_the_tick_and_the_list_of_logs) {
    WalkFaults("list the logs", {UseMonths, Months}, "200601 200602 200603 ", {"", "200601 ", "200601 200602 "});
    WalkFaults("delete the logs", {UseMonths, DeleteMonths, Months}, "",
               {"200601 200602 200603 ", "200601 ", "200602 200603 ", "200602 ", "200603 "});
    WalkFaults("choose the adapter", {UseAdapter, [] { return YesOrNo(ChooseAdapter()); }, ChosenAdapter},
               "yes | eth by its index", {"no", "yes", "yes | eth"});
    // An adapter that was away for a tick comes back with all it ever counted.
    WalkFaults("tick", {UseFirstTick, Tick, Log}, "50 to 150 | log 10:50 of 12",
               {"50 to 150 | no log of 0", "50 to 150 | log of 0", "0 to 0 | no log of 0"},
               {"50 to 150 | log 10:50 of 12", "50 to 150 | no log of 0", "50 to 150 | log of 0",
                "0 to 150 | log 10:150 of 12"});
}

}  // namespace
