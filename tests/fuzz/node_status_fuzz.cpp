// Any bytes as a node-status reply: the name ends within its 16 bytes and never has trailing blanks behind a character.

#include "diagnostics/node_status.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/node_status_reply.h"

namespace {

void ParseReply(std::span<const uint8_t> input) {
    char name[kNodeNameBytes + 1];
    memset(name, '?', sizeof(name));
    const bool taken = ParseNodeStatus(input, name);
    const size_t length = strnlen(name, sizeof(name));
    Demand(taken == (name[kNodeNameBytes] == 0));
    Demand(!taken || (input.size() >= 75 && length < sizeof(name)));
    Demand(!taken || length <= 1 || length != kNodeNameBytes || name[length - 1] != ' ');
}

std::vector<Bytes> Replies() {
    return {NodeStatusReply({"PRINTER"}), NodeStatusReply({"FIFTEEN LETTERS", ""}),
            WithCount(Longer(NodeStatusReply({""}), 100), 3)};
}

const RegisteredFuzzer kFuzzer({"node_status", {"diagnostics/node_status.cpp"}, ParseReply, Replies});

}  // namespace
