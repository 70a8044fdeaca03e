// Reads the documents people really write in one pass: UTF-8 without DOCTYPE, of tags, attributes,
// the five entities, character references, comments, CDATA sections and processing instructions.
//
// It accepts only what the parser certainly accepts, and makes the same tree with the same
// positions. At the first doubt, be something wrong or just unusual, it gives up, and the parser
// decides.
#pragma once

#include "platform/detail/DomDocument.h"
#include "platform/detail/XmlParser.h"

#include <cstddef>
#include <memory>

namespace dyadctx {

// Null at the first doubt; some of the source has then been read. The source is read in pieces,
// which grow when a token does not fit. Throws std::bad_alloc, and what the source throws.
std::unique_ptr<DomDocument> ScanPlainXml(XmlSource& source,
                                          std::size_t pieceSize = std::size_t{64} << 10U);

} // namespace dyadctx
