// Any bytes as hosts.dat: reading ends, every entry is a text, and a host that was added is found there.

#include "tests/fakes/fakes.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/host_records.h"

namespace {

void UseList(std::span<const uint8_t> input) {
    WriteWholeFile(L"hosts.dat", Bytes(input.begin(), input.end()));
    const std::vector<std::wstring> before = ListedHosts();
    Demand(before.size() == (input.size() + kHostRecordBytes - 1) / kHostRecordBytes);
    for (const std::wstring& host : before) {
        Demand(host.size() <= kHostUnits);
    }
    const bool added = AddHost(nullptr, L"added.example");
    const size_t after = ListedHosts().size();
    Demand(added ? after > before.size() || input.size() % kHostRecordBytes != 0 : after == before.size());
    Demand(!AddHost(nullptr, L"ADDED.example") || input.size() % kHostRecordBytes != 0);
    fakes::AnswerMessagesWith(IDYES);
    fakes::shownMessages.clear();  // what grows from input to input would look like a leak
    Demand(DeleteHost(nullptr, L"added.example"));
    for (const std::wstring& host : ListedHosts()) {
        Demand(_wcsicmp(host.c_str(), L"added.example") != 0);
    }
}

std::vector<Bytes> Lists() {
    const Bytes unfinished = HostRecordOf(std::wstring(kHostUnits, L'x'));
    Bytes cut = HostRecordOf(L"Added.Example") + HostRecordOf(L"b");
    cut.resize(kHostRecordBytes + 3);
    return {HostRecordOf(L"a") + HostRecordOf(L"b.example"), unfinished, cut};
}

const RegisteredFuzzer kFuzzer(
    {"host_list", {"diagnostics/host_list.cpp", "diagnostics/record_file.cpp"}, UseList, Lists});

}  // namespace
