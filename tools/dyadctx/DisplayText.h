// Text as a terminal shows it.
#pragma once

#include <string>
#include <string_view>

namespace dyadctx::tool {

// The text with control characters and ill-formed bytes written out (\n, \x1b, \u009b), so that it
// stays on its line and cannot steer the terminal.
std::string Visible(std::string_view text);

// The number of columns a visible text takes: wide characters take two, combining ones none.
int DisplayWidth(std::string_view text);

// The text with each of its lines made visible and ended by a line feed; blank lines are left out.
std::string VisibleLines(std::string_view text);

} // namespace dyadctx::tool
