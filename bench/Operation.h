// SPDX-License-Identifier: MIT
// One thing that is measured, on one context file. A repetition is Prepare, Run, Finish; only Run
// is timed. An operation keeps what may be shared by its repetitions.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace dyadctx::bench {

class Operation {
public:
    virtual ~Operation() = default;
    virtual void Prepare() {}
    // Gives how many things it did: contexts read, names looked up. Throws std::runtime_error when
    // it cannot do its work, so that no failure is taken for a fast run.
    virtual std::size_t Run() = 0;
    virtual void Finish() {}
};

// The files an operation works on.
struct Workplace {
    std::string file;
    // What a writing operation writes; empty when there is nothing to write to.
    std::string target;
};

struct OperationEntry {
    const char* name;
    const char* meaning;
    std::unique_ptr<Operation> (*make)(const Workplace& place);
};

using OperationList = std::vector<OperationEntry>;

// Makes an operation of a class that is constructed from a workplace.
template<class Kind>
std::unique_ptr<Operation> Make(const Workplace& place) {
    return std::make_unique<Kind>(place);
}

} // namespace dyadctx::bench
