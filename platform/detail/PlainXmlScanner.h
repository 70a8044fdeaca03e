// SPDX-License-Identifier: MIT
// Reads common documents in one pass: UTF-8 without DOCTYPE, with tags, attributes, the five
// entities, character references, comments, CDATA sections and processing instructions.
//
// It accepts only what the parser accepts, and builds the same tree with the same positions. When
// in doubt, over an error or just something unusual, it gives up and the parser decides.
#pragma once

#include "platform/detail/DomDocument.h"
#include "platform/detail/XmlParser.h"

#include <cstddef>
#include <memory>

namespace dyadctx {

// Null on the first doubt, with part of the source consumed. Reads in pieces, which grow if a token
// does not fit. Throws std::bad_alloc, and what the source throws.
std::unique_ptr<DomDocument> ScanPlainXml(XmlSource& source,
                                          std::size_t pieceSize = std::size_t{64} << 10U);

} // namespace dyadctx
