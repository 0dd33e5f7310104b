// tests/support/data_folder.h - an empty data folder per test and whole files by one call, on the fakes and on Windows.
#pragma once

#include "platform/system.h"

#include <string>
#include <vector>

// The system as a test wants to find it, and with it the whole state of a fresh start, which runs before every test.
void ResetSystemForTest();
void ResetForTest();

// Makes a new empty folder the item's data folder.
void UseEmptyDataFolder();

using Bytes = std::vector<uint8_t>;
inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Name is relative to the data folder, without a leading separator.
bool FileExists(const std::wstring& name);
void WriteWholeFile(const std::wstring& name, const Bytes& content);
std::wstring DataPath(const std::wstring& name);
Bytes ReadWholeFile(const std::wstring& name);
