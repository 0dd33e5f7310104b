// tests/support/host_records.h - the host list as a test writes and reads it.
#pragma once

#include "diagnostics/host_list.h"
#include "tests/support/data_folder.h"

// One record, zero behind the terminator.
inline Bytes HostRecordOf(const std::wstring& host) {
    const std::u16string units(host.begin(), host.end());
    Bytes record(200);
    memcpy(record.data(), units.data(), units.size() * sizeof(char16_t));
    return record;
}

inline std::vector<std::wstring> ListedHosts() {
    std::vector<std::wstring> hosts;
    HostListReader reader;
    while (reader.file.IsOpen() && NextHost(reader)) {
        hosts.emplace_back(reader.host);
    }
    return hosts;
}
