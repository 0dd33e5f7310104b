// Dialogs and pages with their real controls, made invisible and without a message loop: the script sends what a person
// would cause, and timers never run by themselves.

#include "tests/device/reference/hooks.h"

#include "platform/controls.h"

#include <array>

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

namespace {

std::string openingName;
DLGPROC openingProcedure;
std::vector<PROPSHEETPAGEW> sheetPages;
HWND sheetParent;

// Between finding a template and opening its dialog a desktop measures fonts, which is not the product's drawing.
int templateNumber = 0;
HRSRC NoteTemplate(HMODULE module, const wchar_t* name, const wchar_t* type) {
    templateNumber = static_cast<int>(reinterpret_cast<intptr_t>(name));
    player->trace.isSilent = true;
    return reinterpret_cast<decltype(&FindResourceW)>(Original("FindResourceW"))(module, name, type);
}

// A date picker's is the day of the run.
std::string TitleOf(HWND control) {
    std::array<wchar_t, 256> text = {};
    GetClassNameW(control, text.data(), text.size());
    if (wcscmp(text.data(), DATETIMEPICK_CLASSW) == 0) {
        return "";
    }
    GetWindowTextW(control, text.data(), text.size());
    return Narrow(reinterpret_cast<const char16_t*>(text.data()));
}

// Names window and controls before the product's procedure hears anything.
INT_PTR CALLBACK FirstProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    player->trace.Open(Number(dialog), openingName, "");
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        player->trace.Open(Number(control), openingName + "/" + std::to_string(GetDlgCtrlID(control)),
                           TitleOf(control));
    }
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(openingProcedure));
    return openingProcedure(dialog, message, wParam, lParam);
}

HWND OpenWindow(const std::string& name, const DLGTEMPLATE* source, HWND parent, DLGPROC procedure) {
    constexpr size_t kLongest = 4096;  // the copy is longer than any template
    std::vector<uint8_t> copy(reinterpret_cast<const uint8_t*>(source),
                              reinterpret_cast<const uint8_t*>(source) + kLongest);
    reinterpret_cast<DLGTEMPLATE*>(copy.data())->style &= ~static_cast<DWORD>(WS_VISIBLE);
    openingName = name;
    openingProcedure = procedure;
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<DLGTEMPLATE*>(copy.data()), parent,
                                      FirstProcedure, 0);
}

int RunDialog(HINSTANCE, const DLGTEMPLATE* source, HWND owner, DLGPROC procedure) {
    player->trace.isSilent = false;
    player->RunDialog(Number(OpenWindow("dialog " + std::to_string(templateNumber), source, owner, procedure)));
    return IDOK;
}

void RunSheet(const PROPSHEETHEADERW* header) {
    player->trace.isSilent = false;
    sheetPages = {header->ppsp, header->ppsp + header->nPages};
    sheetParent = header->hwndParent;
    player->RunSheet(header->nPages);
}

}  // namespace

uint64_t OpenPageOfSheet(uint32_t page) {
    const PROPSHEETPAGEW& record = sheetPages.at(page);
    return Number(OpenWindow("page " + std::to_string(page), record.pResource, sheetParent, record.pfnDlgProc));
}

void OpenOptionsDialog() {
    HINSTANCE module = GetModuleHandleW(nullptr);
    HRSRC resource = NoteTemplate(module, MAKEINTRESOURCEW(IDD_TODAY_OPTIONS), MAKEINTRESOURCEW(5));
    RunDialog(module, static_cast<DLGTEMPLATE*>(LoadResource(module, resource)), nullptr, CustomItemOptionsDlgProc);
}

void HookDialogs() {
    for (const StandInRow& row : StandInTable{
             {"DialogBoxIndirectParamW", RunDialog}, {"PropertySheetW", RunSheet}, {"FindResourceW", NoteTemplate}}) {
        Hook(row.name, row.call);
    }
}
