// platform/desktop/helper_connection.h - the connection to the Linux helper and one exchange over it. Its users call
// the operations of linux_helper.h.
#pragma once

#include "platform/desktop/linux_helper.h"

namespace platform {

// Short for queries, Long for what a person asked for: the longer bound, and no heed of the pause after a failure.
enum class HelperPatience { Short, Long };

// Sends the request and waits for its answer. True when the result is 0; `rest` is then what follows it and lasts until
// the next exchange. Otherwise `result` is the helper's, or ERROR_NOT_SUPPORTED without a helper, ERROR_TIMEOUT for a
// silent one, ERROR_GEN_FAILURE for one that is gone or that is being left alone after a failure.
bool ExchangeWithHelper(const helper_protocol::Request& request, HelperPatience patience, DWORD& result,
                        std::span<const uint8_t>& rest);

}  // namespace platform
