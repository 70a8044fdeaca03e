// Lets the n-th allocation of a scope fail, in programs that link AllocationFailure.cpp.
#pragma once

namespace dyadctx::test {

class AllocationFailure {
public:
    // The allocation of this thread after `allowed` further ones throws std::bad_alloc, and so does
    // every later one until the end of the scope.
    explicit AllocationFailure(int allowed);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;

    // Whether an allocation has failed in this scope.
    bool HasHappened() const;
};

} // namespace dyadctx::test
