// SPDX-License-Identifier: MIT
#include "context/detail/DyadMultiSiteHashTableElement.h"

#include "trace/VELDyadConsoleTrace.h"

DyadMultiSiteHashTableElement::DyadMultiSiteHashTableElement(const VELUnicodeString& serverDetails,
                                                             const VELIDyadDbProvider_var& provider)
    : provider_(provider), serverDetails_(serverDetails) {
    DYADCTXOUT("DyadMultiSiteHashTableElement : Costructor\n");
}

DyadMultiSiteHashTableElement::~DyadMultiSiteHashTableElement() {
    DYADCTXOUT("DyadMultiSiteHashTableElement : Destructor\n");
}

void DyadMultiSiteHashTableElement::GetServerDetails(VELUnicodeString& out) const {
    DYADCTXOUT("DyadMultiSiteHashTableElement : GetServerDetails\n");
    out = serverDetails_;
}

void DyadMultiSiteHashTableElement::SetServerDetails(const VELUnicodeString& in) {
    DYADCTXOUT("DyadMultiSiteHashTableElement : SetServerDetails\n");
    serverDetails_ = in;
}

int DyadMultiSiteHashTableElement::GetDyadDBProvider(VELIDyadDbProvider_var& out) const {
    DYADCTXOUT("DyadMultiSiteHashTableElement : GetDyadDBProvider\n");
    out = provider_;
    return out.IsNull() ? 1 : 0;
}

unsigned int DyadMultiSiteHashTableElement::GetHashKey(void* record) {
    DYADCTXOUT("DyadMultiSiteHashTableElement : GetHashKey\n");
    if (record == nullptr)
        return 0;
    return static_cast<DyadMultiSiteHashTableElement*>(record)->serverDetails_.ComputeHashKey();
}

int DyadMultiSiteHashTableElement::Compare(void* first, void* second) {
    DYADCTXOUT("DyadMultiSiteHashTableElement : Compare\n");
    if (first == nullptr || second == nullptr)
        return -1;
    const auto* one = static_cast<DyadMultiSiteHashTableElement*>(first);
    const auto* other = static_cast<DyadMultiSiteHashTableElement*>(second);
    return one->serverDetails_ == other->serverDetails_ ? 1 : 0;
}
