// SPDX-License-Identifier: MIT
// A broken rule or format fault, as rules, linking and reader report it: the key of its message,
// the message's parameters, and the contexts concerned.
#pragma once

#include "platform/VELUnicodeString.h"

#include <array>

class VELDyadContext;

namespace dyadctx {

struct Fault {
    static constexpr int MaxParameters = 3;

    // The operation that reports it, as the trace names it.
    const char* method = nullptr;
    const char* key = nullptr;
    std::array<VELUnicodeString, MaxParameters> parameters;
    int parameterCount = 0;
    // The context at fault; null where there is none.
    const VELDyadContext* context = nullptr;
    // The other party: the later context of the same name or database, the friend, the associated
    // context. Null for a fault of the context alone.
    const VELDyadContext* other = nullptr;
    // The position of `other` among the friends of `context`; 0 where it is none of them.
    int friendPosition = 0;
    // How many times the rule is broken, each with its own message.
    int times = 1;
};

// Receives faults in the order they are found. An exception it throws ends the run.
class FaultReporter {
public:
    virtual void Report(const Fault& fault) = 0;

protected:
    ~FaultReporter() = default;
};

// Adds each fault to a message text, as the collector does for its clients.
class MessageReporter final : public FaultReporter {
public:
    explicit MessageReporter(VELUnicodeString& message) noexcept : message_(message) {}
    void Report(const Fault& fault) override;

private:
    VELUnicodeString& message_;
};

// Adds a line with the catalog's text for `key` to `message` (without line feed when `newLine` is
// 0) and traces the whole message under the name of `method`. A parameter may be `message` itself.
// Always 0, so that a check can return it.
unsigned char LogCollectorError(const char* method, const char* key, VELUnicodeString& message,
                                const VELUnicodeString* parameters, int count, int newLine);

} // namespace dyadctx
