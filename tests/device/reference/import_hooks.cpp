// Finds imports in the loaded program, and the hooks that write calls down: one template instance a function.

#include "tests/device/reference/hooks.h"

#include <algorithm>
#include <type_traits>

namespace {

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(uint8_t* base) {
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    return reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
}

template <size_t Size>
struct FunctionName {
    char text[Size];
    consteval FunctionName(const char (&name)[Size]) { std::copy_n(name, Size, text); }  // NOLINT: implicit on purpose
};

template <FunctionName name, class Function>
struct Recorded;

template <FunctionName name, class Result, class... Values>
struct Recorded<name, Result(WINAPI*)(Values...)> {
    using Function = Result(WINAPI*)(Values...);
    static inline Result(WINAPI* original)(Values...) = nullptr;

    static Result WINAPI Call(Values... values) {
        static const CallShape& shape = ShapeOf(name.text);
        const uint64_t arguments[] = {(uint64_t)values...};
        const std::string made = player->trace.Note(shape, arguments);
        const Result result = original(values...);
        if (!made.empty()) {
            player->trace.names[(uint64_t)result] = made;
        }
        if constexpr (std::is_same_v<Function, decltype(&SelectObject)>) {
            player->trace.Select(arguments[0], arguments[1], (uint64_t)result);
        }
        if constexpr (std::is_same_v<Function, decltype(&LoadImageW)>) {
            if ((arguments[5] & LR_SHARED) != 0) {
                player->trace.kept.insert((uint64_t)result);
            }
        }
        return result;
    }
    static void Install() {
        original = reinterpret_cast<decltype(original)>(ReplaceImport(name.text, reinterpret_cast<void*>(&Call)));
    }
};

// Measuring is not drawing; every character is as wide as the script says, so that no font decides.
int WINAPI DrawOrMeasure(HDC context, const wchar_t* text, int count, RECT* area, UINT format) {
    if ((format & DT_CALCRECT) == 0) {
        return Recorded<"DrawTextW", decltype(&DrawTextW)>::Call(context, text, count, area, format);
    }
    area->right = area->left + device_script::kCharacterWidth * static_cast<LONG>(wcslen(text));
    area->bottom = area->top + 12;
    return 12;
}

#define RECORDED(function) Recorded<#function, decltype(&function)>::Install

}  // namespace

void* ReplaceImport(const char* function, void* replacement) {
    auto* base = reinterpret_cast<uint8_t*>(GetModuleHandleW(nullptr));
    void* before = nullptr;
    for (const auto* library = FirstImport(base); library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + library->OriginalFirstThunk);
        auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (!IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal) && strcmp(entry->Name, function) == 0) {
                DWORD rights = 0;
                VirtualProtect(addresses, sizeof(*addresses), PAGE_READWRITE, &rights);
                before = reinterpret_cast<void*>(addresses->u1.Function);
                addresses->u1.Function = reinterpret_cast<ULONGLONG>(replacement);
            }
        }
    }
    return before;
}

void RecordCalls() {
    constexpr void (*kInstall[])() = {RECORDED(BeginPaint),
                                      RECORDED(BitBlt),
                                      RECORDED(CreateCompatibleBitmap),
                                      RECORDED(CreateCompatibleDC),
                                      RECORDED(CreateFontIndirectW),
                                      RECORDED(CreatePen),
                                      RECORDED(DeleteDC),
                                      RECORDED(DeleteObject),
                                      RECORDED(DestroyIcon),
                                      RECORDED(DrawIconEx),
                                      RECORDED(DrawTextW),
                                      RECORDED(EndPaint),
                                      RECORDED(FillRect),
                                      RECORDED(GetDC),
                                      RECORDED(GetStockObject),
                                      RECORDED(ImageList_Create),
                                      RECORDED(ImageList_Destroy),
                                      RECORDED(ImageList_ReplaceIcon),
                                      RECORDED(InvalidateRect),
                                      RECORDED(LoadBitmapW),
                                      RECORDED(LoadImageW),
                                      RECORDED(Polyline),
                                      RECORDED(ReleaseDC),
                                      RECORDED(SelectObject),
                                      RECORDED(SetBkColor),
                                      RECORDED(SetBkMode),
                                      RECORDED(SetPixel),
                                      RECORDED(SetTextColor),
                                      RECORDED(StretchBlt)};
    for (void (*install)() : kInstall) {
        install();
    }
    ReplaceImport("DrawTextW", reinterpret_cast<void*>(DrawOrMeasure));
}
