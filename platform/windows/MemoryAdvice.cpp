#include "platform/detail/MemoryAdvice.h"

namespace dyadctx {

void PrepareForWriting(void*, std::size_t) noexcept {}

} // namespace dyadctx
