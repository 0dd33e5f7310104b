// Any bytes as a node-status reply: the name ends within its 16 bytes and never has trailing blanks behind a character.

#include <cstdlib>

#include "diagnostics/node_status.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    char name[kNodeNameBytes + 1];
    memset(name, '?', sizeof(name));
    const bool taken = ParseNodeStatus({data, size}, name);
    const size_t length = strnlen(name, sizeof(name));
    if (taken != (name[kNodeNameBytes] == 0) || (taken && (size < 75 || length == sizeof(name))) ||
        (taken && length > 1 && length == kNodeNameBytes && name[length - 1] == ' ')) {
        abort();
    }
    return 0;
}
