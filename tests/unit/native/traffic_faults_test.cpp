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
#include "tests/support/traffic_logs.h"
#include "tests/unit/native/fault_walk.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "trafficlog/log_reader.h"

namespace {

void UseThreeHours() {
    WriteLog(2006, 12, LogRecord(15, 9, 7, 0) + LogRecord(15, 10, 8, 0) + LogRecord(15, 11, 9, 0));
}

void UseFullMonth() {
    WriteLog(2006, 12, FullMonth(2006, 12, 1, 1));
    fakes::SetLocalTime({2006, 12, 0, 31, 23, 0, 0, 0});
}

std::string LogOne() {
    LogTraffic(nullptr, 1, 0);
    return "";
}

std::string ReadDays() {
    TrafficSeries series;
    const int slots = ReadTrafficLog(UsageMode::Daily, {2006, 12, 5}, series);
    return Told(slots, static_cast<int>(series.received[1] + series.received[31]));
}

std::string Export() {
    return Told(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 30}, {2006, 12, 31}}));
}

TEST(Faults, Of_the_traffic_log) {
    WalkFaults("log the first traffic of a month", UseNothing, LogOne, "200612.log: 15 10 1;", "(200612.log: ;)?",
               "200612.log: 15 10 2;");
    WalkFaults("log into the record of the hour", UseThreeHours, LogOne,
               "200612.log: 15 9 171 205 7 15 10 171 205 9 15 11 171 205 9;", "",
               "200612.log: 15 9 171 205 7 15 10 171 205 10 15 11 171 205 9;");
    WalkFaults("read a month", UseFullMonth, ReadDays, "31;48;", "31;(0|24);");
    // A tick in a full month costs a handful of calls.
    UseFullMonth();
    fakes::FailCall(0, fakes::Faults::Once);
    LogTraffic(nullptr, 1, 1);
    EXPECT_LE(fakes::EndFaults(), 10);
    const std::string csv = "yes;out.csv: \"Date\",\"Xmit\",\"Rcv\",\"Total\"\n";
    const std::string day = "\"Dec 15, 2006\",\"0\",\"0.02KB\",\"0.02KB\"\n\"Total for Dec 2006\",\"0\",";
    WalkFaults("export a month", UseThreeHours, Export, csv + day + "\"0.02KB\",\"0.02KB\"\n;",
               "no;|yes;out.csv: ;|" + csv + "\"Total for Dec 2006\",\"0\",\"0\",\"0\"\n;");
}

std::string LoadDisplay() {
    LoadDisplaySettings();
    return Told(itemState.xLocation, itemState.showTaskbarIcon, itemState.amPmFormat);
}

std::string LoadFolders() {
    LoadFolderSettings();
    return Told(itemState.adapterName, itemState.dataFolder);
}

std::string SaveDisplay() {
    SaveXLocation(30);
    SaveShowTaskbarIcon(true);
    SaveHourFormat(true);
    itemState.showTaskbarIcon = itemState.amPmFormat = false;
    return "";
}

void UseAdapter() {
    scripted::system.adapters = {{.name = "eth", .index = 7, .received = 1}};
}

void UseStored() {
    UseAdapter();
    WriteStringSetting(L"Adapter", L"stored", 6);
    WriteStringSetting(L"InstallDir", L"\\data", 5);
    for (const wchar_t* name : {L"XLocation", L"TIcon", L"TFormat"}) {
        WriteNumberSetting(name, 0);
    }
}

// What is stored stays, though it could not be read; only what is absent is written.
TEST(Faults, Of_the_settings) {
    WalkFaults("load the display settings", UseStored, LoadDisplay, "0;no;no;", "(0|75);(no|yes);(no|yes);");
    WalkFaults("load the display settings for the first time", UseNothing, LoadDisplay,
               "75;yes;yes;TFormat: 1;TIcon: 1;XLocation: 75;",
               "75;yes;yes;(TFormat: 1;)?(TIcon: 1;)?(XLocation: 75;)?");
    const std::string program = R"(\Program Files\Ostrik\Quorvane;)";
    const std::string inProgram = R"(\\Program Files\\Ostrik\\Quorvane;)";
    WalkFaults("load adapter and folder", UseStored, LoadFolders, R"(stored;\data;)",
               R"(eth;\\data;|(stored)?;)" + inProgram);
    WalkFaults("load adapter and folder for the first time", UseAdapter, LoadFolders,
               "eth;" + program + "Adapter: eth;", "(eth)?;" + inProgram);
    WalkFaults("change the display settings", UseStored, SaveDisplay, "TFormat: 1;TIcon: 1;XLocation: 30;",
               "(TFormat: 1;)?(TIcon: 1;)?(XLocation: 30;)?");
}

std::string Months() {
    std::string text;
    LogSearch search;
    while (const wchar_t* name = NextLogFile(search)) {
        text += Told(name);
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
    return "";
}

std::string Choose() {
    const bool chosen = ChooseAdapter();
    return Told(chosen, itemState.adapterName, itemState.interfaceIndex == 7);
}

void UseFirstTick() {
    UseAdapter();
    RunTick(nullptr);
    scripted::system.adapters[0].received = 8;
}

std::string Tick() {
    RunTick(nullptr);
    return Told(itemState.inDeltas[0], itemState.lastInOctets);
}

TEST(Faults, Of_the_tick_and_the_list_of_logs) {
    WalkFaults("list the logs", UseMonths, Months, "200601.log;200602.log;200603.log;", "(200601.log;(200602.log;)?)?");
    WalkFaults("delete the logs", UseMonths, DeleteMonths, "200601.log gone;200602.log gone;200603.log gone;",
               "(200601.log gone;)?(200602.log gone;)?(200603.log gone;)?");
    WalkFaults("choose the adapter", UseAdapter, Choose, "yes;eth;yes;", "(no;|yes;(eth)?);no;");
    // An adapter that was away for a tick comes back with all it ever counted.
    WalkFaults("tick", UseFirstTick, Tick, "7;8;200612.log: 15 10 7;", "7;8;(200612.log: ;)?|0;0;",
               "7;8;(200612.log: ;)?|0;8;200612.log: 15 10 8;");
}

}  // namespace
