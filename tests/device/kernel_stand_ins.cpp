// Memory, time, modules and threads of the system. Time stands still between calls but for Sleep.

#include "tests/device/stand_in_state.h"

#include <ctime>

namespace {

struct Module : Object {};
struct Thread : KernelObject {};

uint32_t LocalAlloc(Bed& bed, const Arguments& a) {
    constexpr uint32_t kZeroed = 0x40;
    constexpr uint8_t kUnset = 0xCD;
    Memory& memory = Part<Memory>(bed);
    if (++memory.allocations == memory.failingAllocation) {
        return 0;
    }
    const Address block = Allocate(bed, a[1]);
    if (block != 0 && (a[0] & kZeroed) == 0) {
        WriteBytes(bed, block, std::vector<uint8_t>(a[1], kUnset).data(), a[1]);
    }
    return block;
}

uint32_t LocalFree(Bed& bed, const Arguments& a) {
    return a[0] == 0 || Free(bed, a[0]) ? 0 : a[0];
}

uint32_t FileTimeToSystemTime(Bed& bed, const Arguments& a) {
    constexpr uint64_t kSecondsFrom1601To1970 = 11644473600;
    const auto seconds = static_cast<time_t>(ReadGuest<uint64_t>(bed, a[0]) / 10000000 - kSecondsFrom1601To1970);
    tm utc = {};
    gmtime_r(&seconds, &utc);
    const int fields[] = {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_wday, utc.tm_mday,
                          utc.tm_hour,        utc.tm_min,     utc.tm_sec,  0};
    for (uint32_t i = 0; i < std::size(fields); ++i) {
        WriteGuest(bed, a[1] + i * 2, static_cast<uint16_t>(fields[i]));
    }
    return 1;
}

// The library itself stands in the Windows folder.
uint32_t LoadLibraryW(Bed& bed, const Arguments& a) {
    const std::string name = Narrow(ReadText(bed, a[0]));
    if (name == "\\Windows\\quorvane.dll") {
        ++Part<Modules>(bed).libraryUses;
        return bed.imageBase;
    }
    return name == "cellcore.dll" || name == "wininet.dll" ? AddObject(bed, std::make_unique<Module>()) : 0;
}

uint32_t FreeLibrary(Bed& bed, const Arguments& a) {
    if (a[0] != bed.imageBase) {
        return RemoveObject<Module>(bed, a[0]);
    }
    if (--Part<Modules>(bed).libraryUses == 0) {
        AddFault(bed, "unloads itself while it runs");
    }
    return 1;
}

uint32_t FreeLibraryAndExitThread(Bed& bed, const Arguments& a) {
    EndGuestThread(bed);
    return FreeLibrary(bed, a);
}

uint32_t GetModuleFileNameW(Bed& bed, const Arguments& a) {
    constexpr std::u16string_view kPath = u"\\Windows\\quorvane.dll";
    if (a[0] != bed.imageBase || a[2] <= kPath.size()) {
        return 0;
    }
    WriteText(bed, a[1], kPath);
    return static_cast<uint32_t>(kPath.size());
}

uint32_t GetProcAddressW(Bed& bed, const Arguments& a) {
    const std::string name = Narrow(ReadText(bed, a[1]));
    return FindObject<Module>(bed, a[0]) != nullptr && bed.standIns.count(name) != 0 ? StandInAddress(bed, name) : 0;
}

uint32_t CreateThread(Bed& bed, const Arguments& a) {
    Threads& threads = Part<Threads>(bed);
    if (threads.failing > 0) {
        --threads.failing;
        return 0;
    }
    threads.waiting.push_back({a[2], a[3]});
    if (!threads.wait) {
        RunThreads(bed);
    }
    return AddObject(bed, std::make_unique<Thread>());
}

uint32_t AddTo(Bed& bed, Address value, int step) {
    const uint32_t result = ReadGuest<uint32_t>(bed, value) + static_cast<uint32_t>(step);
    WriteGuest(bed, value, result);
    return result;
}

constexpr StandInRow kRows[] = {
    {"LocalAlloc", LocalAlloc},
    {"LocalFree", LocalFree},
    {"GetLastError", [](Bed& bed, const Arguments&) { return bed.lastError; }},
    {"CloseHandle", [](Bed& bed, const Arguments& a) -> uint32_t { return RemoveObject<KernelObject>(bed, a[0]); }},
    {"WaitForSingleObject",
     [](Bed& bed, const Arguments& a) { return FindObject<KernelObject>(bed, a[0]) != nullptr ? 0 : 0xFFFFFFFF; }},
    {"GetTickCount", [](Bed& bed, const Arguments&) { return bed.tickCount; }},
    {"Sleep", [](Bed& bed, const Arguments& a) { return bed.tickCount += a[0]; }},
    {"GetLocalTime",
     [](Bed& bed, const Arguments& a) {
         WriteGuest(bed, a[0], bed.localTime);
         return a[0];
     }},
    {"GetTimeZoneInformation",
     [](Bed& bed, const Arguments& a) {
         WriteGuest(bed, a[0], std::array<uint8_t, 172>{});  // UTC, no daylight saving
         return 0U;
     }},
    {"FileTimeToSystemTime", FileTimeToSystemTime},
    {"LoadLibraryW", LoadLibraryW},
    {"FreeLibrary", FreeLibrary},
    {"FreeLibraryAndExitThread", FreeLibraryAndExitThread},
    {"GetModuleHandleW",
     [](Bed& bed, const Arguments& a) { return ReadText(bed, a[0]) == u"quorvane.dll" ? bed.imageBase : 0; }},
    {"GetModuleFileNameW", GetModuleFileNameW},
    {"GetProcAddressW", GetProcAddressW},
    {"CreateThread", CreateThread},
    {"InterlockedIncrement", [](Bed& bed, const Arguments& a) { return AddTo(bed, a[0], 1); }},
    {"InterlockedDecrement", [](Bed& bed, const Arguments& a) { return AddTo(bed, a[0], -1); }},
    {"InterlockedExchange",
     [](Bed& bed, const Arguments& a) {
         const auto before = ReadGuest<uint32_t>(bed, a[0]);
         WriteGuest(bed, a[0], a[1]);
         return before;
     }},
};

}  // namespace

std::span<const StandInRow> KernelStandIns() {
    return kRows;
}

void RunThreads(Bed& bed) {
    Threads& threads = Part<Threads>(bed);
    while (!threads.waiting.empty()) {
        const Threads::Start start = threads.waiting.front();
        threads.waiting.pop_front();
        CallGuestThread(bed, start.function, start.argument);
    }
}
