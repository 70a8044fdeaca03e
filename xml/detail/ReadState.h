// SPDX-License-Identifier: MIT
// What the parts of the reader share while reading one file: the state, the levels of nesting, how
// faults are reported and how elements are looked at.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/FormatNames.h"
#include "xml/detail/ReadObserver.h"

#include <cstdint>

namespace dyadctx {

struct ReadState {
    VELDyadCtxCollector& collector;
    // The caller's text, to which every message is added.
    VELUnicodeString& message;
    // Null unless every fault is wanted.
    ReadObserver* observer = nullptr;
    // The bytes of the collector's file; null to read the file itself.
    const VELUnicodeString* text = nullptr;
    // Set once there is a document.
    const FormatIds* ids = nullptr;
    // How many contexts may be made. While the DB context environment is on, contexts directly in
    // contexts are read twice per level, so a small file could make any number.
    std::uint64_t contextLimit = 0;

    // Whether reading continues after a fault.
    bool ContinuesAfterFault() const noexcept { return observer != nullptr; }
};

// Whether a message's trace line contains the texts before it.
enum class LogText { Whole, Alone };

// Adds a message and a line feed to the caller's text and traces it under the name of `method`;
// with an observer, calls that instead. `where` is the element at fault and may be null.
void LogReaderError(const ReadState& state, const char* method, const char* key,
                    const VELIDOMNode& where, const VELUnicodeString* parameters = nullptr,
                    int count = 0, LogText text = LogText::Whole);

// The value of an attribute, by its number in FormatIds or its name. False for a missing attribute;
// `value` is then unchanged. Throws std::bad_alloc.
bool ReadAttribute(const VELIDOMElement& element, std::uint32_t name, VELUnicodeString& value);
bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value);
// The same; empty for a missing attribute.
VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, std::uint32_t name);
// The tag of an element as its number in FormatIds. False, and `tag` unchanged, for other nodes.
bool ReadTag(const VELIDOMNode& node, std::uint32_t& tag);

// How deep an element is nested in friends and in associated contexts; both 0 for a declared
// context.
struct ContextLevels {
    int friendLevel = 0;
    int associatedLevel = 0;
};

// Required values that an element lacks.
enum MissingValue : unsigned int {
    MissingName = 1,
    MissingParameter = 2,
    MissingParameterType = 4,
    MissingConnector = 8
};

// All children of the container: `parent` itself, or for the outermost pass its only descendant
// named `tag`. For an inner container that holds neither a Context nor `tag`: no nodes, and
// success.
VELResult GetNodeListByTagName(const VELIDOMElement& parent, const VELUnicodeString& tag,
                               ContextLevels levels, VELIDOMNodeList& nodes, int& count,
                               const ReadState& state);

// Which walks below a Context element find something to read.
struct WalksBelow {
    bool associated = true;
    bool friends = true;
    bool scenarios = true;
};
WalksBelow FindWalksBelow(const VELIDOMElement& context, const FormatIds& ids);

} // namespace dyadctx
