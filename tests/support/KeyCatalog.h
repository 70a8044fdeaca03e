// SPDX-License-Identifier: MIT
// A message catalog whose texts show key and parameters, so that a test sees what was asked for.
#pragma once

#include "platform/VELMsgCatalog.h"

#include <string>

namespace dyadctx::test {

// From construction to destruction a message reads "KEY(parameter|parameter)".
class KeyCatalog : private VELMsgCatalogSource {
public:
    KeyCatalog();
    ~KeyCatalog() override;
    KeyCatalog(const KeyCatalog&) = delete;
    KeyCatalog& operator=(const KeyCatalog&) = delete;

    // This key is from now on missing from the catalog.
    void Forget(const std::string& key) { forgotten_ = key; }

private:
    VELResult Build(const VELString& catalog, const VELString& key,
                    const VELUnicodeString* parameters, int count, VELUnicodeString& text) override;

    VELMsgCatalogSource* former_;
    std::string forgotten_;
};

} // namespace dyadctx::test
