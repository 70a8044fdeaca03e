// SPDX-License-Identifier: MIT
// Context files of a test, and the collectors made from them.
#pragma once

#include "collector/VELDyadCtxCollector.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::test {

// The DB context environment is on, or off, until the end of a scope; then off.
class DbEnvironment {
public:
    explicit DbEnvironment(bool active);
    ~DbEnvironment();
    DbEnvironment(const DbEnvironment&) = delete;
    DbEnvironment& operator=(const DbEnvironment&) = delete;
};

// What the factory answered: the collector or null, and the message text.
struct Creation {
    std::unique_ptr<VELDyadCtxCollector> collector;
    std::string message;
};

// A whole document round the given content of CtxData.
std::string DocumentWith(std::string_view contexts);
// Creates a collector from a file through CreateExchangeChannelCollector.
Creation CreateFromFile(const std::string& path, const std::string& message = "");
// The same from the text of a document.
Creation CreateFromText(std::string_view document, const std::string& message = "");
// The same from the content of CtxData.
Creation CreateFromContexts(std::string_view contexts, const std::string& message = "");

std::string Text(const VELUnicodeString& text);
std::vector<std::string> Texts(const VELListValVELUnicodeString& list);
VELListValVELUnicodeString ListOf(const std::vector<std::string>& texts);
std::vector<std::string> NamesOf(const VELListPtrVELDyadContext& contexts);
// The names of the contexts of the current view.
std::vector<std::string> ViewOf(VELDyadCtxCollector& collector);
std::vector<std::string> FriendsOf(const VELDyadContext& context);

} // namespace dyadctx::test
