// Dialogs and pages with their real controls, made invisible and without a message loop: the script sends what a person
// would cause, and timers never run by themselves.

#include "tests/device/reference/hooks.h"

#include "resources/resource_ids.h"

#include <algorithm>
#include <cwctype>
#include <optional>

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

namespace {

struct Opening {
    std::string name;
    DLGPROC procedure;
};
Opening opening;

struct Sheet {
    std::vector<PROPSHEETPAGEW> pages;
    std::vector<HWND> windows;  // null until the page is shown
    HWND parent;
};
Sheet sheet;

// Between finding a template and opening its dialog a desktop measures fonts, which is not the product's drawing: the
// trace goes back to where it stood.
int templateNumber = 0;
std::optional<std::pair<size_t, size_t>> traceAtTemplate;
decltype(&FindResourceW) findResource = nullptr;
HRSRC WINAPI NoteTemplate(HMODULE module, const wchar_t* name, const wchar_t* type) {
    templateNumber = static_cast<int>(reinterpret_cast<intptr_t>(name));
    if (!traceAtTemplate) {
        traceAtTemplate = {player->trace.strip.size(), player->trace.dialogs.size()};
    }
    return findResource(module, name, type);
}

void ForgetMeasuring() {
    if (traceAtTemplate) {
        player->trace.strip.resize(traceAtTemplate->first);
        player->trace.dialogs.resize(traceAtTemplate->second);
        traceAtTemplate.reset();
    }
}

// Names window and controls before the product's procedure hears anything.
INT_PTR CALLBACK FirstProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    player->trace.names[Number(dialog)] = opening.name;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        player->trace.names[Number(control)] = opening.name + "/" + std::to_string(GetDlgCtrlID(control));
    }
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(opening.procedure));
    return opening.procedure(dialog, message, wParam, lParam);
}

HWND OpenWindow(const std::string& name, const DLGTEMPLATE* source, HWND parent, DLGPROC procedure) {
    constexpr size_t kLongest = 4096;  // the copy is longer than any template
    std::vector<uint8_t> copy(reinterpret_cast<const uint8_t*>(source),
                              reinterpret_cast<const uint8_t*>(source) + kLongest);
    reinterpret_cast<DLGTEMPLATE*>(copy.data())->style &= ~static_cast<DWORD>(WS_VISIBLE);
    opening = {name, procedure};
    player->trace.Open(name);
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<DLGTEMPLATE*>(copy.data()), parent,
                                      FirstProcedure, 0);
}

void EndWindow(HWND window) {
    DestroyWindow(window);
    player->trace.Close(Number(window));
}

INT_PTR WINAPI RunScriptedDialog(HINSTANCE, const DLGTEMPLATE* source, HWND owner, DLGPROC procedure, LPARAM) {
    ForgetMeasuring();
    HWND dialog = OpenWindow("dialog " + std::to_string(templateNumber), source, owner, procedure);
    player->RunDialog(Number(dialog));
    EndWindow(dialog);
    return IDOK;
}

BOOL WINAPI EndScriptedDialog(HWND dialog, INT_PTR result) {
    const uint64_t values[] = {Number(dialog), static_cast<uint64_t>(result)};
    player->trace.Note(ShapeOf("EndDialog"), values);
    player->ended = Number(dialog);
    return TRUE;
}

INT_PTR WINAPI RunScriptedSheet(const PROPSHEETHEADERW* header) {
    ForgetMeasuring();
    sheet = {{header->ppsp, header->ppsp + header->nPages}, std::vector<HWND>(header->nPages), header->hwndParent};
    player->RunSheet();
    for (HWND page : sheet.windows) {
        if (page != nullptr) {
            EndWindow(page);
        }
    }
    return 1;
}

int WINAPI AnswerBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT flags) {
    const uint64_t values[] = {Number(owner), Number(text), Number(caption), flags};
    player->trace.Note(ShapeOf("MessageBoxW"), values);
    return static_cast<int>(player->AnswerMessageBox());
}

BOOL WINAPI KeepMessage(HWND window, UINT message, WPARAM wParam, LPARAM) {
    player->posted.push_back({Number(window), message, wParam});
    return TRUE;
}

std::string NarrowText(const std::wstring& text) {
    return player->trace.TextAt(Number(text.c_str()));
}

std::wstring Text(HWND window) {
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

std::string Cell(HWND list, int row, int column) {
    wchar_t text[256] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 256;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return NarrowText(text);
}

void DescribeList(HWND list, ControlState& state) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const auto columns = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int column = 0; column < columns; ++column) {
        wchar_t text[64] = {};
        LVCOLUMNW record = {};
        record.mask = LVCF_TEXT | LVCF_WIDTH;
        record.pszText = text;
        record.cchTextMax = 64;
        SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&record));
        state.items.push_back(NarrowText(text) + " " + std::to_string(record.cx));
    }
    const auto rows = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < rows; ++row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        std::string line = std::to_string(item.iImage);
        for (int column = 0; column < columns; ++column) {
            line += "|" + Cell(list, row, column);
        }
        state.items.push_back(line);
    }
    state.selected = SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
}

void DescribeCombo(HWND combo, ControlState& state) {
    const auto count = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        wchar_t text[256] = {};
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        state.items.push_back(NarrowText(text));
    }
    state.selected = SendMessageW(combo, CB_GETCURSEL, 0, 0);
}

ControlState Describe(HWND control) {
    wchar_t kind[64] = {};
    GetClassNameW(control, kind, 64);
    std::transform(std::begin(kind), std::end(kind), std::begin(kind), towlower);
    ControlState state = {GetDlgCtrlID(control),
                          NarrowText(kind),
                          NarrowText(Text(control)),
                          IsWindowEnabled(control) != FALSE,
                          0,
                          -1,
                          {}};
    if (state.kind == "button") {
        state.check = SendMessageW(control, BM_GETCHECK, 0, 0);
    } else if (state.kind == "combobox") {
        DescribeCombo(control, state);
    } else if (state.kind == "syslistview32") {
        DescribeList(control, state);
    } else if (state.kind == "msctls_progress32") {
        state.text = std::to_string(SendMessageW(control, PBM_GETPOS, 0, 0));
    } else if (state.kind == "sysdatetimepick32") {
        SYSTEMTIME date = {};
        SendMessageW(control, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date));
        state.text = std::to_string(date.wYear) + "-" + std::to_string(date.wMonth) + "-" + std::to_string(date.wDay);
    }
    return state;
}

}  // namespace

std::vector<ControlState> ControlsOf(HWND dialog) {
    std::vector<ControlState> controls;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        wchar_t kind[16] = {};
        GetClassNameW(control, kind, 16);
        if (wcscmp(kind, L"#32770") != 0) {  // a sheet's page
            controls.push_back(Describe(control));
        }
    }
    return controls;
}

uint64_t ShowPageOfSheet(uint32_t page) {
    HWND& window = sheet.windows.at(page);
    if (window == nullptr) {
        const PROPSHEETPAGEW& record = sheet.pages[page];
        window = OpenWindow("page " + std::to_string(page), record.pResource, sheet.parent, record.pfnDlgProc);
    }
    return Number(window);
}

std::vector<uint64_t> PagesOfSheet() {
    std::vector<uint64_t> shown;
    for (HWND page : sheet.windows) {
        if (page != nullptr) {
            shown.push_back(Number(page));
        }
    }
    return shown;
}

void OpenOptionsDialog() {
    HINSTANCE module = GetModuleHandleW(nullptr);
    HRSRC resource = NoteTemplate(module, MAKEINTRESOURCEW(IDD_TODAY_OPTIONS), MAKEINTRESOURCEW(5));
    RunScriptedDialog(module, static_cast<DLGTEMPLATE*>(LoadResource(module, resource)), nullptr,
                      CustomItemOptionsDlgProc, 0);
}

void ScriptDialogs() {
    ReplaceImport("DialogBoxIndirectParamW", reinterpret_cast<void*>(RunScriptedDialog));
    ReplaceImport("EndDialog", reinterpret_cast<void*>(EndScriptedDialog));
    ReplaceImport("PropertySheetW", reinterpret_cast<void*>(RunScriptedSheet));
    ReplaceImport("MessageBoxW", reinterpret_cast<void*>(AnswerBox));
    ReplaceImport("PostMessageW", reinterpret_cast<void*>(KeepMessage));
    findResource =
        reinterpret_cast<decltype(findResource)>(ReplaceImport("FindResourceW", reinterpret_cast<void*>(NoteTemplate)));
}
