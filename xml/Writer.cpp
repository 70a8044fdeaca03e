#include "xml/detail/ContextWriter.h"
#include "xml/detail/VELDyadCtxXml.h"

VELResult VELDyadCtxXml::Stream(const VELUnicodeString& target, VELUnicodeString& /*message*/) {
    if (collector_ == nullptr)
        return E_FAIL;
    try {
        return dyadctx::ContextWriter(*collector_).Stream(target);
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELDyadCtxXml::StreamText(VELUnicodeString& text) {
    if (collector_ == nullptr)
        return E_FAIL;
    try {
        return dyadctx::ContextWriter(*collector_).StreamText(text);
    } catch (...) {
        return E_FAIL;
    }
}
