// platform/scoped_gdi.h - small owners of drawing objects, for the files that paint.
#pragma once

#include "platform/system.h"

namespace platform {

// A memory device context compatible with `like`; null on failure.
struct ScopedMemoryContext {
    HDC context;

    explicit ScopedMemoryContext(HDC like) : context(CreateCompatibleDC(like)) {}
    ScopedMemoryContext(const ScopedMemoryContext&) = delete;
    ScopedMemoryContext& operator=(const ScopedMemoryContext&) = delete;
    ~ScopedMemoryContext() {
        if (context != nullptr) {
            DeleteDC(context);
        }
    }
};

// A bitmap, pen, brush or font that is deleted at the end; may be null.
struct ScopedObject {
    HGDIOBJ object;

    explicit ScopedObject(HGDIOBJ owned) : object(owned) {}
    ScopedObject(const ScopedObject&) = delete;
    ScopedObject& operator=(const ScopedObject&) = delete;
    ~ScopedObject() {
        if (object != nullptr) {
            DeleteObject(object);
        }
    }
};

// Selects an object for as long as the guard lives; declare it after the object's owner. Does nothing with a null.
struct ScopedSelection {
    HDC context;
    HGDIOBJ previous;

    ScopedSelection(HDC into, HGDIOBJ object)
        : context(into), previous(into != nullptr && object != nullptr ? SelectObject(into, object) : nullptr) {}
    ScopedSelection(const ScopedSelection&) = delete;
    ScopedSelection& operator=(const ScopedSelection&) = delete;
    ~ScopedSelection() {
        if (previous != nullptr) {
            SelectObject(context, previous);
        }
    }
};

// GetDC and ReleaseDC of a window.
struct ScopedWindowContext {
    HWND window;
    HDC context;

    explicit ScopedWindowContext(HWND of) : window(of), context(GetDC(of)) {}
    ScopedWindowContext(const ScopedWindowContext&) = delete;
    ScopedWindowContext& operator=(const ScopedWindowContext&) = delete;
    ~ScopedWindowContext() {
        if (context != nullptr) {
            ReleaseDC(window, context);
        }
    }
};

}  // namespace platform
