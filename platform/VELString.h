// SPDX-License-Identifier: MIT
// Narrow text for internal use: catalog names and message keys.
#pragma once

#include <string>
#include <string_view>

class VELString {
public:
    VELString() = default;
    // Null gives the empty text.
    VELString(const char* text) : text_(text != nullptr ? text : "") {}
    explicit VELString(std::string_view text) : text_(text) {}

    bool operator==(const VELString& other) const noexcept { return text_ == other.text_; }
    bool operator!=(const VELString& other) const noexcept { return !(*this == other); }

    VELString& Append(const VELString& tail) {
        text_ += tail.text_;
        return *this;
    }
    bool IsEmpty() const noexcept { return text_.empty(); }
    // Valid until this object changes or is destroyed.
    const char* ConvertToChar() const noexcept { return text_.c_str(); }
    std::string_view AsView() const noexcept { return text_; }

private:
    std::string text_;
};
