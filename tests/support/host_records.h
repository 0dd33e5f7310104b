// tests/support/host_records.h - the host list as a test writes and reads it.
#pragma once

#include "diagnostics/host_list.h"
#include "tests/support/data_folder.h"

// One record, zero behind the terminator.
inline Bytes HostRecordOf(const std::wstring& host) {
    Bytes record(200, 0);
    for (size_t i = 0; i < host.size(); ++i) {
        record[2 * i] = static_cast<uint8_t>(host[i]);
        record[2 * i + 1] = static_cast<uint8_t>(static_cast<uint32_t>(host[i]) >> 8);
    }
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
