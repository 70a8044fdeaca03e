// SPDX-License-Identifier: MIT
// Any bytes are a document or are refused for a reason; a document is written as a text that is
// read back as the same document.
#include "platform/detail/XmlDiagnosis.h"
#include "platform/detail/XmlParser.h"
#include "platform/detail/XmlSerializer.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

class BytesSource final : public dyadctx::XmlSource {
public:
    explicit BytesSource(std::string_view bytes) : all_(bytes), bytes_(bytes) {}

    std::int64_t Read(void* buffer, std::size_t size) override {
        const std::size_t count = std::min(size, bytes_.size());
        if (count > 0)
            std::memcpy(buffer, bytes_.data(), count);
        bytes_.remove_prefix(count);
        return static_cast<std::int64_t>(count);
    }
    bool Rewind() override {
        bytes_ = all_;
        return true;
    }

private:
    std::string_view all_;
    std::string_view bytes_;
};

void Require(bool condition) {
    if (!condition)
        std::abort();
}

std::unique_ptr<dyadctx::DomDocument> Parse(std::string_view bytes) {
    BytesSource source(bytes);
    dyadctx::XmlFailure failure;
    std::unique_ptr<dyadctx::DomDocument> document = dyadctx::ParseXml(source, failure);
    if (document == nullptr)
        dyadctx::DiagnoseXml(source, failure);
    Require((document == nullptr) == (*failure.reason != '\0'));
    return document;
}

std::string Serialize(const dyadctx::DomDocument& document, dyadctx::XmlLayout layout) {
    std::string text;
    Require(dyadctx::SerializeXml(document, layout, text));
    return text;
}

// In UTF-16 and Latin-1 Expat takes a few characters into names that it refuses in UTF-8, so a
// document in another encoding need not be readable once it is written.
bool IsSurelyUtf8(std::string_view bytes) {
    return bytes.find('\0') == std::string_view::npos &&
           bytes.find("encoding") == std::string_view::npos && bytes.substr(0, 2) != "\xFE\xFF" &&
           bytes.substr(0, 2) != "\xFF\xFE";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto document = Parse(bytes);
    if (document == nullptr)
        return 0;
    document->ElementsByTagName(*document->Root(), "CtxData", 2);
    for (const auto layout : {dyadctx::XmlLayout::OneLine, dyadctx::XmlLayout::Indented}) {
        const std::string text = Serialize(*document, layout);
        const auto again = Parse(text);
        Require(again != nullptr || !IsSurelyUtf8(bytes));
        Require(again == nullptr || Serialize(*again, layout) == text);
    }
    return 0;
}
