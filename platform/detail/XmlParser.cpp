// SPDX-License-Identifier: MIT
#include "platform/detail/XmlParser.h"

#include "platform/detail/DomTreeBuilder.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/PlainXmlScanner.h"
#include "platform/detail/XmlPositions.h"
#include "platform/detail/XmlReasons.h"

#include <algorithm>
#include <climits>
#include <expat.h>
#include <new>
#include <vector>

namespace dyadctx {

namespace {

constexpr std::size_t UsualBuffer = std::size_t{256} << 10U;
constexpr std::size_t LargestBuffer = INT_MAX / 2 + 1;

bool IsUtf8Name(std::string_view encoding) noexcept {
    constexpr std::string_view Name = "utf-8";
    const auto isSame = [](char a, char b) { return a == b || (b >= 'a' && a == b - 'a' + 'A'); };
    return std::equal(encoding.begin(), encoding.end(), Name.begin(), Name.end(), isSame);
}

struct ParserFree {
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserFree>;

ParserHandle CreateParser() {
    ParserHandle parser(XML_ParserCreate(nullptr));
    if (parser == nullptr)
        throw std::bad_alloc();
    return parser;
}

// One pass over one source.
class Reading {
public:
    Reading(XmlSource& source, DomDocument& document)
        : source_(source), parser_(CreateParser()), builder_(document) {
        SetHandlers();
    }

    // False if the source is not a document; Failure() says why.
    bool Run();
    const XmlFailure& Failure() const noexcept { return failure_; }

private:
    void SetHandlers() noexcept;
    bool ParsePiece(std::size_t size, bool isLast);
    void SetHandlersForFaults() noexcept;
    void Start(const char* name, const char* const* attributes);
    void End();
    void Other();
    void EndSection() noexcept;
    void Stop(const char* reason) noexcept;
    bool Refuse(const char* reason, DomPosition position) noexcept;
    std::uint64_t Offset() const noexcept;

    // Runs a callback. Exceptions must not pass through the parser, which may still deliver one
    // event after a stop.
    template<class Action>
    static void Handle(void* self, Action action) noexcept {
        Reading& reading = *static_cast<Reading*>(self);
        if (reading.isStopped_)
            return;
        try {
            action(reading);
        } catch (...) {
            reading.Stop(reason::NoMemory);
        }
    }

    XmlSource& source_;
    ParserHandle parser_;
    DomTreeBuilder builder_;
    XmlPositions positions_;
    // The attributes of the element being started.
    std::vector<DomReadAttribute> attributes_;
    bool isStopped_ = false;
    XmlFailure failure_;
    // Updated while reading, then moved into the failure. The offsets are those of the open
    // elements.
    XmlFault fault_;
    std::vector<std::uint64_t> openOffsets_;
};

void Reading::SetHandlers() noexcept {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            Handle(self, [=](Reading& reading) { reading.Start(name, attributes); });
        },
        [](void* self, const XML_Char*) { Handle(self, [](Reading& reading) { reading.End(); }); });
    XML_SetCharacterDataHandler(parser, [](void* self, const XML_Char*, int) {
        Handle(self, [](Reading& reading) { reading.builder_.Text(); });
    });
    XML_SetCommentHandler(parser, [](void* self, const XML_Char*) {
        Handle(self, [](Reading& reading) { reading.Other(); });
    });
    XML_SetProcessingInstructionHandler(parser, [](void* self, const XML_Char*, const XML_Char*) {
        Handle(self, [](Reading& reading) { reading.Other(); });
    });
    XML_SetCdataSectionHandler(
        parser,
        [](void* self) { Handle(self, [](Reading& reading) { reading.builder_.StartSection(); }); },
        [](void* self) { Handle(self, [](Reading& reading) { reading.EndSection(); }); });
    SetHandlersForFaults();
}

// Needed only to describe faults.
void Reading::SetHandlersForFaults() noexcept {
    XML_Parser parser = parser_.get();
    XML_SetDoctypeDeclHandler(
        parser,
        [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
            XmlFault& fault = static_cast<Reading*>(self)->fault_;
            fault.hasDoctype = fault.isInDoctype = true;
        },
        [](void* self) {
            Reading& reading = *static_cast<Reading*>(self);
            reading.fault_.isInDoctype = false;
            reading.fault_.textBefore = reading.Offset();
        });
    XML_SetXmlDeclHandler(parser, [](void* self, const XML_Char*, const XML_Char* encoding, int) {
        static_cast<Reading*>(self)->fault_.isUtf8 = encoding == nullptr || IsUtf8Name(encoding);
    });
}

bool Reading::Run() {
    std::size_t size = UsualBuffer;
    for (;;) {
        void* buffer = XML_GetBuffer(parser_.get(), static_cast<int>(size));
        if (buffer == nullptr)
            return Refuse(reason::NoMemory, {});
        bool failed = false;
        const std::size_t got = ReadFull(source_, static_cast<char*>(buffer), size, failed);
        if (failed)
            return Refuse(reason::Unreadable, {});
        positions_.Add(static_cast<const char*>(buffer), got);
        const std::uint64_t before = Offset();
        const bool isLast = got < size;
        if (!ParsePiece(got, isLast))
            return false;
        if (isLast)
            return true;
        // The parser rescans an incomplete token from its start. Growing pieces keep the total work
        // proportional to its length.
        size = Offset() == before ? std::min(2 * size, LargestBuffer) : UsualBuffer;
    }
}

bool Reading::ParsePiece(std::size_t size, bool isLast) {
    if (XML_ParseBuffer(parser_.get(), static_cast<int>(size), isLast) == XML_STATUS_OK)
        return true;
    if (isStopped_)
        return false;
    const XML_Error error = XML_GetErrorCode(parser_.get());
    const bool isUnfinished = error == XML_ERROR_NO_ELEMENTS && builder_.Depth() > 0;
    Refuse(isUnfinished ? reason::Unfinished : ReasonFor(error), positions_.At(Offset()));
    fault_.error = error;
    fault_.offset = Offset();
    if (builder_.Depth() > 0) {
        fault_.openName = builder_.OpenName();
        fault_.openOffset = openOffsets_.back();
    }
    failure_.fault = fault_;
    return false;
}

void Reading::Start(const char* name, const char* const* attributes) {
    if (builder_.Depth() == DomTreeBuilder::DeepestNesting)
        return Stop(reason::TooDeep);
    attributes_.clear();
    for (const char* const* pair = attributes; *pair != nullptr; pair += 2)
        attributes_.push_back({builder_.Intern(pair[0]), pair[1]});
    builder_.StartElement(builder_.Intern(name), attributes_, positions_.At(Offset()));
    openOffsets_.push_back(Offset());
    fault_.textBefore = Offset();
}

void Reading::End() {
    builder_.EndElement();
    openOffsets_.pop_back();
    fault_.textBefore = Offset();
}

void Reading::Other() {
    builder_.Other();
    fault_.textBefore = Offset();
}

void Reading::EndSection() noexcept {
    builder_.EndSection();
    fault_.textBefore = Offset();
}

void Reading::Stop(const char* reason) noexcept {
    isStopped_ = true;
    Refuse(reason, positions_.At(Offset()));
    XML_StopParser(parser_.get(), XML_FALSE);
}

bool Reading::Refuse(const char* reason, DomPosition position) noexcept {
    // Lack of memory is no fault at a place of the file.
    failure_.position = std::string_view(reason) == reason::NoMemory ? DomPosition{} : position;
    failure_.reason = reason;
    return false;
}

// The parser's offset; within an entity, where the entity is used.
std::uint64_t Reading::Offset() const noexcept {
    const XML_Index index = XML_GetCurrentByteIndex(parser_.get());
    return index > 0 ? static_cast<std::uint64_t>(index) : 0;
}

} // namespace

XmlSource::~XmlSource() = default;

bool XmlSource::Rewind() {
    return false;
}

std::unique_ptr<DomDocument> ParseXml(XmlSource& source, XmlFailure& failure) noexcept {
    try {
        if (source.Rewind()) {
            if (auto plain = ScanPlainXml(source); plain != nullptr)
                return plain;
            if (!source.Rewind()) {
                failure.reason = reason::Unreadable;
                return nullptr;
            }
        }
        auto document = std::make_unique<DomDocument>(DomDocument::Purpose::Parsing);
        Reading reading(source, *document);
        if (reading.Run())
            return document;
        failure = reading.Failure();
    } catch (...) {
        failure.reason = reason::NoMemory;
    }
    return nullptr;
}

} // namespace dyadctx
