// The host's side of the item, windows, dialogs and property sheets. A window of the guest's class hears messages in
// its procedure, a dialog in its dialog procedure. The handle of a control or a resource is its number.

#include "tests/device/handheld.h"

#include "resources/resource_ids.h"
#include "tests/fakes/fakes.h"

#include <cstdlib>

std::unique_ptr<Handheld> handheld;
const size_t kPointerBytes = sizeof(Address);

namespace {

constexpr Address kMemory = 0x20000000;

bool OpenDialog(uint32_t number, Address procedure) {
    constexpr uint32_t kInitDialog = 0x0110;
    const uint32_t dialog = NewHandle();
    handheld->procedures[dialog] = procedure;
    Add("open dialog " + std::to_string(number));
    SendTo(dialog, kInitDialog, 0, 0);
    RunDialog(dialog);
    return true;
}

// PROPSHEETHEADER and PROPSHEETPAGE of the first common controls, 40 bytes each.
bool RunSheet(const std::array<uint32_t, 10>* header) {
    constexpr uint32_t kGetVersion = 3, kVersion = 524;
    const auto [size, flags, owner, module, icon, caption, pages, start, records, callback] = *header;
    if (size != sizeof(*header) || CallGuest(callback, {0, kGetVersion, 0}) != kVersion) {
        handheld->faults += "a sheet of another version\n";
    }
    for (const auto& page : std::span(At<std::array<uint32_t, 10>>(records), pages)) {
        OpenDialog(page[3], page[6]);
    }
    return true;
}

// What the desktop's control answered, which is the trace's next line there: result, and a text or the fields that were
// asked for. Without such a trace every control answers alike.
int32_t Answer(char16_t* text, size_t room, int32_t* fields = nullptr) {
    const std::string answer = player.reference.empty() ? "= 1 \"192.168.7.20\"" : player.reference.front();
    int32_t result = 1, others[2];
    fields = fields != nullptr ? fields : others;
    sscanf(answer.c_str(), "= %d ( null %d %d", &result, fields, fields + 1);
    if (const size_t quote = answer.find('"'); text != nullptr && quote < answer.size()) {
        *std::copy_n(answer.begin() + quote + 1, std::min(answer.rfind('"') - quote, room) - 1, text) = 0;
    }
    return result;
}

// LVITEMW has text, image and data from its sixth word on.
int32_t AnswerMessage(uint32_t message, int32_t* item) {
    constexpr uint32_t kGetItem = 0x104B, kGetCell = 0x1073;
    return message == kGetCell ? Answer(At<char16_t>(item[5]), item[6])
                               : Answer(nullptr, 0, message == kGetItem ? item + 7 : nullptr);
}

StandInTable WindowStandIns() {
    const auto secondArgument = [](uint64_t, uint32_t number) { return number; };
    return {
        {"CreateWindowExW",
         [] { return handheld->procedures[NewHandle()] = handheld->itemProcedure, handheld->nextHandle; }},
        {"DialogBoxIndirectParamW",
         [](uint64_t, uint32_t number, uint64_t, Address procedure) { return OpenDialog(number, procedure); }},
        {"FindResourceW", secondArgument},
        {"GetDlgItem", secondArgument},
        {"GetDlgItemTextW", [](uint64_t, uint32_t, char16_t* text, uint32_t room) { return Answer(text, room); }},
        {"LoadResource", secondArgument},
        {"PropertySheetW", RunSheet},
        // WNDCLASSW, whose procedure is its second word.
        {"RegisterClassW", [](const uint32_t* record) { return handheld->itemProcedure = record[1]; }},
        {"SendDlgItemMessageW",
         [](uint64_t, uint64_t, uint32_t message, uint64_t, int32_t* item) { return AnswerMessage(message, item); }},
        {"SendMessageW",
         [](uint64_t, uint32_t message, uint64_t, int32_t* item) { return AnswerMessage(message, item); }},
    };
}

}  // namespace

void ResetHandheld() {
    ResetPlayer();
    fakes::ResetSystem();
    handheld = std::make_unique<Handheld>();
}

void RunThreads() {
    while (!handheld->waitingThreads.empty()) {
        const auto [function, argument] = handheld->waitingThreads.front();
        handheld->waitingThreads.pop_front();
        CallGuest(function, {argument}, kWorkerStack);
        handheld->threadEnds = false;
    }
}

uint64_t AttachItem() {
    OpenProcessor();
    MapRegion(kMemory, kPageBytes, UC_PROT_READ | UC_PROT_WRITE);
    player.memory = At<uint8_t>(kMemory);
    player.memory[kRecordEnabled] = 1;
    player.root = fakes::Root();
    for (const auto& table : {WindowStandIns(), SystemStandIns(), NetworkStandIns(), ScriptedStandIns()}) {
        for (const StandInRow& row : table) {
            handheld->standIns[row.name] = [&left = handheld->failing[row.name], call = row.call](
                                               const uint64_t* words) { return --left == 0 ? 0 : call(words); };
        }
    }
    LoadLibraryIntoMemory(std::getenv("QUORVANE_DEVICE_LIBRARY"));
    CallGuest(handheld->entry, {handheld->base, 1, 0});
    return CallGuest(handheld->base + handheld->exports[0], {kMemory, NewHandle()});
}

void DetachItem() {
    CallGuest(handheld->entry, {handheld->base, 0, 0});
    const int left = static_cast<int>(handheld->blocks.size()) + fakes::OpenResources() + handheld->libraryUses - 1;
    handheld->faults += left != 0 ? "memory, handles or counts of the library left over\n" : "";
}

void OpenOptions() {
    OpenDialog(IDD_TODAY_OPTIONS, handheld->base + handheld->exports[1]);
}

int64_t SendTo(uint64_t window, uint32_t message, uint64_t wParam, uint64_t lParam) {
    const Address procedure = handheld->procedures[window];
    return procedure != 0 ? CallGuest(procedure, {window, message, wParam, lParam}) : 0;
}

void SendToControl(uint32_t, uint32_t, uint64_t, const void*) {}

int NumberOf(uint64_t window) {
    return window < 0x10000 ? static_cast<int>(window) : 0;  // where other handles begin
}
