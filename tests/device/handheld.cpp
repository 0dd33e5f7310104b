// The host's side of the item, windows, dialogs and property sheets. A window of the guest's class hears messages in
// its procedure, a dialog in its dialog procedure. A control's handle is its number.

#include "tests/device/handheld.h"

#include "resources/resource_ids.h"
#include "tests/fakes/fakes.h"

#include <cstdlib>

Handheld handheld;
const size_t kPointerBytes = sizeof(Address);

namespace {

constexpr Address kMemory = 0x20000000;
constexpr uint32_t kProcessDetach = 0, kProcessAttach = 1;

void OpenDialog(uint32_t number, Address procedure) {
    constexpr uint32_t kInitDialog = 0x0110;
    const uint32_t dialog = NewHandle();
    handheld.procedures[dialog] = procedure;
    Add("open dialog " + std::to_string(number));
    SendTo(dialog, kInitDialog, 0, 0);
    RunDialog(dialog);
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
void RunSheet(const std::array<uint32_t, 10>* header) {
    constexpr uint32_t kGetVersion = 3, kVersion = 524;
    const auto [size, flags, owner, module, icon, caption, pages, start, records, callback] = *header;
    if (size != sizeof(*header) || CallGuest(callback, {0, kGetVersion, 0}) != kVersion) {
        AddFault("a sheet of another version");
    }
    for (const auto& page : std::span(At<std::array<uint32_t, 10>>(records), pages)) {
        OpenDialog(page[3], page[6]);
    }
}

// What the desktop's control answered, which is the trace's next line there: result, and a text or the fields that were
// asked for. Without such a trace every control answers alike.
int32_t Answer(char16_t* text, int32_t* fields) {
    const std::string answer = player.reference.empty() ? "= 1 \"192.168.7.20\"" : player.reference.front();
    int32_t result = 1, other = 0;
    sscanf(answer.c_str(), "= %d ( null %d %d", &result, fields != nullptr ? fields : &other,
           fields != nullptr ? fields + 1 : &other);
    if (const size_t quote = answer.find('"'); text != nullptr && quote < answer.size()) {
        *std::copy(answer.begin() + quote + 1, answer.end() - (answer.ends_with(")") ? 3 : 1), text) = 0;
    }
    return result;
}

// LVITEMW has text, image and data from its sixth word on.
int32_t AnswerMessage(uint32_t message, uint32_t* item) {
    constexpr uint32_t kGetItem = 0x104B, kGetCell = 0x1073;
    return Answer(message == kGetCell ? At<char16_t>(item[5]) : nullptr,
                  message == kGetItem ? reinterpret_cast<int32_t*>(item + 7) : nullptr);
}

StandInTable WindowStandIns() {
    return {
        {"BeginPaint", [](uint64_t, uint32_t* paint) { return *paint = NewHandle(); }},
        {"CreateWindowExW",
         [] {
             const uint32_t window = NewHandle();
             handheld.procedures[window] = handheld.itemProcedure;
             return window;
         }},
        {"DialogBoxIndirectParamW",
         [](uint64_t, uint32_t number, uint64_t, Address procedure) { OpenDialog(number, procedure); }},
        {"FindResourceW", [](uint64_t, uint32_t number) { return number; }},
        {"GetDlgItem", [](uint64_t, uint32_t number) { return number; }},
        {"GetDlgItemTextW", [](uint64_t, uint32_t, char16_t* text) { return Answer(text, nullptr); }},
        {"GetSystemMetrics", [](uint32_t which) { return which == 0 ? player.screenWidth : player.screenHeight; }},
        {"LoadResource", [](uint64_t, uint32_t number) { return number; }},
        {"PropertySheetW", RunSheet},
        // WNDCLASSW, whose procedure is its second word.
        {"RegisterClassW", [](const uint32_t* record) { handheld.itemProcedure = record[1]; }},
        {"SendDlgItemMessageW",
         [](uint64_t, uint64_t, uint32_t message, uint64_t, uint32_t* item) { return AnswerMessage(message, item); }},
        {"SendMessageW",
         [](uint64_t, uint32_t message, uint64_t, uint32_t* item) { return AnswerMessage(message, item); }},
    };
}

// What nobody released before the library went.
void AddLeftovers() {
    for (const auto& [what, left] : std::map<std::string, int>{{"blocks of memory", bed->blocks.size()},
                                                               {"handles", fakes::OpenResources()},
                                                               {"counts of the library", handheld.libraryUses - 1}}) {
        handheld.faults += left != 0 ? std::to_string(left) + " " + what + " left over\n" : "";
    }
}

}  // namespace

void ResetHandheld() {
    ResetPlayer();
    fakes::ResetSystem();
    handheld = {};
}

void RunThreads() {
    while (!handheld.waitingThreads.empty()) {
        const auto [function, argument] = handheld.waitingThreads.front();
        handheld.waitingThreads.pop_front();
        CallGuestThread(function, argument);
    }
}

uint64_t AttachItem() {
    OpenBed(handheld.core);
    MapRegion(kMemory, kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    player.memory = At<uint8_t>(kMemory);
    player.memory[kRecordEnabled] = 1;
    for (const auto& table : {WindowStandIns(), SystemStandIns(), NetworkStandIns(), ScriptedStandIns()}) {
        for (const StandInRow& row : table) {
            bed->standIns[row.name] = [&state = handheld.failing[row.name], call = row.call](const uint64_t* words) {
                const int nth = ++state.calls - state.first;
                return nth >= 0 && nth < state.count ? 0 : call(words);
            };
        }
    }
    LoadLibraryIntoBed(std::getenv("QUORVANE_DEVICE_LIBRARY"), handheld.base);
    CallGuest(bed->exports[0], {bed->imageBase, kProcessAttach, 0});
    return CallGuest(bed->exports[240], {kMemory, NewHandle()});
}

void DetachItem() {
    CallGuest(bed->exports[0], {bed->imageBase, kProcessDetach, 0});
    handheld.deepestStack = std::max(handheld.deepestStack, bed->deepestStack);
    handheld.faults += bed->faults;
    AddLeftovers();
}

void OpenOptions() {
    OpenDialog(IDD_TODAY_OPTIONS, bed->exports[241]);
}

void CloseWindow(uint64_t window) {
    handheld.procedures.erase(window);
}

int64_t SendTo(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) {
    const auto found = handheld.procedures.find(window);
    return found == handheld.procedures.end()
               ? 0
               : CallGuest(found->second, {static_cast<uint32_t>(window), message, static_cast<uint32_t>(wParam),
                                           static_cast<uint32_t>(lParam)});
}

void SendToControl(uint32_t, uint32_t, uint64_t, const void*) {}

int NumberOf(uint64_t window) {
    constexpr uint64_t kMostControls = 0x10000;  // where other handles begin
    return window < kMostControls ? static_cast<int>(window) : 0;
}
