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

INT_PTR WINAPI RunScriptedDialog(HINSTANCE, const DLGTEMPLATE* source, HWND owner, DLGPROC procedure, LPARAM) {
    ForgetMeasuring();
    player->RunDialog(Number(OpenWindow("dialog " + std::to_string(templateNumber), source, owner, procedure)));
    return IDOK;
}

BOOL WINAPI EndScriptedDialog(HWND dialog, INT_PTR result) {
    NoteCall("EndDialog", dialog, result);
    player->ended = Number(dialog);
    return TRUE;
}

INT_PTR WINAPI RunScriptedSheet(const PROPSHEETHEADERW* header) {
    ForgetMeasuring();
    sheet = {{header->ppsp, header->ppsp + header->nPages}, header->hwndParent};
    player->RunSheet(header->nPages);
    return 1;
}

int WINAPI AnswerBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT flags) {
    NoteCall("MessageBoxW", owner, text, caption, flags);
    return static_cast<int>(player->AnswerMessageBox());
}

BOOL WINAPI KeepMessage(HWND window, UINT message, WPARAM wParam, LPARAM) {
    player->posted.push_back({Number(window), message, wParam});
    return TRUE;
}

using Text = std::array<wchar_t, 256>;

template <class Data>
int Ask(HWND window, UINT message, int64_t wParam, Data* data) {
    return static_cast<int>(SendMessageW(window, message, static_cast<WPARAM>(wParam), reinterpret_cast<LPARAM>(data)));
}

int Ask(HWND window, UINT message, int64_t wParam = 0) {
    return Ask<void>(window, message, wParam, nullptr);
}

std::string Cell(HWND list, int row, int column) {
    Text text = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = text.size();
    Ask(list, LVM_GETITEMTEXTW, row, &item);
    return TextOf(text.data());
}

void DescribeList(HWND list, ControlState& state) {
    Text text = {};
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = text.data();
    column.cchTextMax = text.size();
    int columns = 0;
    for (; Ask(list, LVM_GETCOLUMNW, columns, &column) != 0; ++columns) {
        state.items.push_back(TextOf(text.data()) + " " + std::to_string(column.cx));
    }
    for (int row = 0; row < Ask(list, LVM_GETITEMCOUNT); ++row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        Ask(list, LVM_GETITEMW, 0, &item);
        state.items.push_back(std::to_string(item.iImage));
        for (int cell = 0; cell < columns; ++cell) {
            state.items.back() += "|" + Cell(list, row, cell);
        }
    }
    state.selected = Ask(list, LVM_GETNEXTITEM, -1, reinterpret_cast<void*>(LVNI_SELECTED));
}

void DescribeCombo(HWND combo, ControlState& state) {
    for (int i = 0; i < Ask(combo, CB_GETCOUNT); ++i) {
        Text text = {};
        Ask(combo, CB_GETLBTEXT, i, text.data());
        state.items.push_back(TextOf(text.data()));
    }
    state.selected = Ask(combo, CB_GETCURSEL);
}

std::string KindOf(HWND control) {
    Text kind = {};
    GetClassNameW(control, kind.data(), kind.size());
    std::transform(kind.begin(), kind.end(), kind.begin(), towlower);
    return TextOf(kind.data());
}

ControlState Describe(HWND control) {
    Text text = {};
    GetWindowTextW(control, text.data(), text.size());
    ControlState state = {GetDlgCtrlID(control), KindOf(control), TextOf(text.data()), IsWindowEnabled(control) != 0};
    if (state.kind == "button") {
        state.check = Ask(control, BM_GETCHECK);
    } else if (state.kind == "combobox") {
        DescribeCombo(control, state);
    } else if (state.kind == "syslistview32") {
        DescribeList(control, state);
    } else if (state.kind == "msctls_progress32") {
        state.text = std::to_string(Ask(control, PBM_GETPOS));
    } else if (state.kind == "sysdatetimepick32") {
        std::array<uint16_t, 8> date = {};
        Ask(control, DTM_GETSYSTEMTIME, 0, date.data());
        state.text = DateText(date);
    }
    return state;
}

}  // namespace

std::vector<ControlState> ControlsOf(HWND dialog) {
    std::vector<ControlState> controls;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        if (KindOf(control) != "#32770") {  // a sheet's page
            controls.push_back(Describe(control));
        }
    }
    return controls;
}

uint64_t OpenPageOfSheet(uint32_t page) {
    const PROPSHEETPAGEW& record = sheet.pages.at(page);
    return Number(OpenWindow("page " + std::to_string(page), record.pResource, sheet.parent, record.pfnDlgProc));
}

void OpenOptionsDialog() {
    HINSTANCE module = GetModuleHandleW(nullptr);
    HRSRC resource = NoteTemplate(module, MAKEINTRESOURCEW(IDD_TODAY_OPTIONS), MAKEINTRESOURCEW(5));
    RunScriptedDialog(module, static_cast<DLGTEMPLATE*>(LoadResource(module, resource)), nullptr,
                      CustomItemOptionsDlgProc, 0);
}

void ScriptDialogs() {
    const std::pair<const char*, void*> rows[] = {{"DialogBoxIndirectParamW", Pointer(RunScriptedDialog)},
                                                  {"EndDialog", Pointer(EndScriptedDialog)},
                                                  {"PropertySheetW", Pointer(RunScriptedSheet)},
                                                  {"MessageBoxW", Pointer(AnswerBox)},
                                                  {"PostMessageW", Pointer(KeepMessage)}};
    for (const auto& [name, replacement] : rows) {
        ReplaceImport(name, replacement);
    }
    findResource = reinterpret_cast<decltype(findResource)>(ReplaceImport("FindResourceW", Pointer(NoteTemplate)));
}
