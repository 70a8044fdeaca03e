// SPDX-License-Identifier: MIT
// Text as a terminal shows it.
#pragma once

#include <string>
#include <string_view>

namespace dyadctx::tool {

// Whether passwords in URLs are shown. They are not until set.
void ShowSecrets(bool shown) noexcept;
// The text with *** instead of each password in a URL (//user:password@host), unless they are
// shown.
std::string Masked(std::string_view text);
// Whether the passwords in the URLs of both differ.
bool HaveOtherSecrets(std::string_view left, std::string_view right);

// The masked text with control characters, line separators, marks of direction and ill-formed bytes
// written out (\n, \x1b, \u2028), so that it stays on its line and cannot steer the terminal.
std::string Visible(std::string_view text);

// With a to z instead of A to Z.
std::string InSmallLetters(std::string_view text);

// The number of columns a visible text takes: wide characters take two, combining ones none.
int DisplayWidth(std::string_view text);

} // namespace dyadctx::tool
