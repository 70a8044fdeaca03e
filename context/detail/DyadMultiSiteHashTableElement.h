// SPDX-License-Identifier: MIT
// One record of a context's table of sites: a server and its provider.
//
// Every operation but the last writes a line to the console trace.
#pragma once

#include "platform/VELIDyadDbProvider.h"
#include "platform/VELUnicodeString.h"

class DyadMultiSiteHashTableElement {
public:
    // A probe for look-ups; the only operation without a line.
    DyadMultiSiteHashTableElement() noexcept = default;
    DyadMultiSiteHashTableElement(const VELUnicodeString& serverDetails,
                                  const VELIDyadDbProvider_var& provider);
    DyadMultiSiteHashTableElement(const DyadMultiSiteHashTableElement&) = delete;
    DyadMultiSiteHashTableElement& operator=(const DyadMultiSiteHashTableElement&) = delete;
    ~DyadMultiSiteHashTableElement();

    void GetServerDetails(VELUnicodeString& out) const;
    void SetServerDetails(const VELUnicodeString& in);
    // 1 when the record has no provider, else 0.
    int GetDyadDBProvider(VELIDyadDbProvider_var& out) const;

    // The functions of the table. Compare returns 1 for equal server details, 0 for different ones,
    // -1 for a null record.
    static unsigned int GetHashKey(void* record);
    static int Compare(void* first, void* second);

    // Whether it is the record of that server and has a provider.
    bool HasProviderOf(const VELUnicodeString& serverDetails) const noexcept {
        return serverDetails_ == serverDetails && !provider_.IsNull();
    }

private:
    VELIDyadDbProvider_var provider_;
    VELUnicodeString serverDetails_;
};
