#include "platform/detail/MemoryAdvice.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace dyadctx {

void PrepareForWriting([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
    static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    // The pages at the ends may belong to neighbours.
    const std::size_t before = (page - reinterpret_cast<std::uintptr_t>(block) % page) % page;
    if (size < before + page)
        return;
    const int errorBefore = errno;
    madvise(static_cast<char*>(block) + before, (size - before) / page * page, MADV_POPULATE_WRITE);
    errno = errorBefore;
#endif
}

} // namespace dyadctx
