// options/adapter_properties.h - the monitored adapter's properties as rows of a table.
#pragma once

#include "platform/system.h"

#include <span>

struct AdapterProperty {
    const wchar_t* item;
    wchar_t value[MAX_ADAPTER_DESCRIPTION_LENGTH + 4];
};
inline constexpr size_t kMostAdapterProperties = 6;

// The first Ethernet adapter becomes the monitored one (adapterName of itemState) and is described; empty values are
// left out. Returns the number of rows, or -1 when there is no such adapter or a call fails.
int ReadAdapterProperties(std::span<AdapterProperty, kMostAdapterProperties> rows);
