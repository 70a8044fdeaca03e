// SPDX-License-Identifier: MIT
#include "bench/generator/ContextText.h"

namespace dyadctx::bench {

namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 20;
// No single element comes near this.
constexpr std::size_t Reserve = std::size_t{1} << 16;
constexpr std::size_t Indentation = 2;

} // namespace

ContextText::ContextText(std::ostream& out) : out_(out) {
    buffer_.reserve(BufferSize + Reserve);
    buffer_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
}

ContextText::~ContextText() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    out_.flush();
}

ContextText& ContextText::Open(std::string_view tag) {
    StartLine();
    buffer_ += '<';
    buffer_ += tag;
    return *this;
}

ContextText& ContextText::Attribute(std::string_view name, std::string_view value) {
    buffer_ += ' ';
    buffer_ += name;
    buffer_ += "=\"";
    AppendEscaped(value);
    buffer_ += '"';
    return *this;
}

void ContextText::EndEmpty() {
    buffer_ += "/>\n";
    FlushWhenFull();
}

void ContextText::EndOpen() {
    buffer_ += ">\n";
    ++depth_;
    FlushWhenFull();
}

void ContextText::Close(std::string_view tag) {
    --depth_;
    StartLine();
    buffer_ += "</";
    buffer_ += tag;
    buffer_ += ">\n";
    FlushWhenFull();
}

void ContextText::StartLine() {
    buffer_.append(depth_ * Indentation, ' ');
}

void ContextText::AppendEscaped(std::string_view value) {
    for (const char c : value) {
        if (c == '&')
            buffer_ += "&amp;";
        else if (c == '<')
            buffer_ += "&lt;";
        else if (c == '"')
            buffer_ += "&quot;";
        else
            buffer_ += c;
    }
}

void ContextText::FlushWhenFull() {
    if (buffer_.size() < BufferSize)
        return;
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

} // namespace dyadctx::bench
