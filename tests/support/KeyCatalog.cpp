// SPDX-License-Identifier: MIT
#include "support/KeyCatalog.h"

namespace dyadctx::test {

KeyCatalog::KeyCatalog() : former_(VELMsgCatalog::SetSource(this)) {}

KeyCatalog::~KeyCatalog() {
    VELMsgCatalog::SetSource(former_);
}

VELResult KeyCatalog::Build(const VELString& catalog, const VELString& key,
                            const VELUnicodeString* parameters, int count, VELUnicodeString& text) {
    if (catalog != VELString("VELDyadCtxDlgSelection") || key.AsView() == forgotten_)
        return E_FAIL;
    text = VELUnicodeString(key.AsView());
    text.Append("(");
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            text.Append("|");
        text.Append(parameters[i]);
    }
    text.Append(")");
    return S_OK;
}

} // namespace dyadctx::test
