// SPDX-License-Identifier: MIT
// Text of a context file on its way to a stream: elements and attributes, gathered in one buffer of
// fixed size, so that a file of any length needs the same memory.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace dyadctx::bench {

class ContextText {
public:
    // The stream must live as long as this object.
    explicit ContextText(std::ostream& out);
    // Writes what is still in the buffer.
    ~ContextText();
    ContextText(const ContextText&) = delete;
    ContextText& operator=(const ContextText&) = delete;

    // An element with the attributes that follow; then EndEmpty, or EndOpen and later Close.
    ContextText& Open(std::string_view tag);
    // The value is escaped.
    ContextText& Attribute(std::string_view name, std::string_view value);
    void EndEmpty();
    void EndOpen();
    void Close(std::string_view tag);

private:
    void StartLine();
    void AppendEscaped(std::string_view value);
    void FlushWhenFull();

    std::ostream& out_;
    std::string buffer_;
    std::size_t depth_ = 0;
};

} // namespace dyadctx::bench
