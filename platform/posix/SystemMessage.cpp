// SPDX-License-Identifier: MIT
#include "platform/detail/SystemMessage.h"

#include <system_error>

namespace dyadctx {

std::string SystemMessage(int code) {
    return std::system_category().message(code);
}

} // namespace dyadctx
