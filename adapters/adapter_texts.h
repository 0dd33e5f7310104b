// adapters/adapter_texts.h - the text forms of an adapter's properties that more than one view shows.
#pragma once

#include "platform/system.h"

#include <span>

inline constexpr size_t kHardwareAddressUnits = MAX_ADAPTER_ADDRESS_LENGTH * 3;  // "00:" each, the last with its end

// Name of an interface type (MIB_IFROW.dwType, the numbers of RFC 1213); empty for types that have none here.
const wchar_t* InterfaceTypeName(uint32_t type);

// "00:0A:1B:2C:3D:4E", for as many bytes as the adapter's address has. An address of length 0 leaves `text` as it is.
void WriteHardwareAddress(const IP_ADAPTER_INFO& adapter, std::span<wchar_t> text);
