// item/settings.h - the item's values in the registry and their defaults.
#pragma once

#include "platform/system.h"

#include <span>

// All values live under this key of HKEY_LOCAL_MACHINE. Each helper opens and closes it; true means success, and a
// failed read leaves its output untouched.
inline constexpr wchar_t kItemKey[] = L"Software\\Microsoft\\Today\\Items\\Quorvane";

inline constexpr uint32_t kLargestXLocation = 639;

bool ReadStringSetting(const wchar_t* name, std::span<wchar_t> value);
bool ReadNumberSetting(const wchar_t* name, uint32_t* value);
// `characters` is the length to store, with or without the terminator: each caller has its own custom.
bool WriteStringSetting(const wchar_t* name, const wchar_t* value, size_t characters);
bool WriteNumberSetting(const wchar_t* name, uint32_t value);

// Adapter name and data folder, then (after the pens exist) icon place, icon switch and hour format. Absent values get
// their defaults; those of XLocation, TIcon, TFormat and the name of an adapter that had to be chosen are written back.
// A value that is there but cannot be read keeps its place, and its default holds until the next start.
void LoadFolderSettings();
void LoadDisplaySettings();
