// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/VELBaseUnknown_var.h"
#include "platform/VELFileSystem.h"
#include "platform/detail/DomDocument.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/XmlDiagnosis.h"
#include "platform/detail/XmlParser.h"
#include "platform/detail/XmlReasons.h"
#include "platform/detail/XmlSerializer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <string_view>

using dyadctx::DomDocument;

namespace {

class FileSource final : public dyadctx::XmlSource {
public:
    explicit FileSource(dyadctx::FileReader& file) : file_(file) {}
    std::int64_t Read(void* buffer, std::size_t size) override { return file_.Read(buffer, size); }
    bool Rewind() override { return file_.Rewind(); }

private:
    dyadctx::FileReader& file_;
};

class TextSource final : public dyadctx::XmlSource {
public:
    explicit TextSource(std::string_view text) : text_(text), rest_(text) {}
    std::int64_t Read(void* buffer, std::size_t size) override {
        const std::size_t count = rest_.copy(static_cast<char*>(buffer), size);
        rest_.remove_prefix(count);
        return static_cast<std::int64_t>(count);
    }
    bool Rewind() override {
        rest_ = text_;
        return true;
    }

private:
    std::string_view text_;
    std::string_view rest_;
};

// Reads the source a second time only for a caller that is told the reason.
std::unique_ptr<DomDocument> ParseSource(dyadctx::XmlSource& source, bool isTold,
                                         dyadctx::XmlFailure& failure) noexcept {
    auto document = dyadctx::ParseXml(source, failure);
    if (document == nullptr && isTold)
        dyadctx::DiagnoseXml(source, failure);
    return document;
}

std::unique_ptr<DomDocument> ParseFile(const VELUnicodeString& path, bool isTold,
                                       dyadctx::XmlFailure& failure) noexcept {
    try {
        dyadctx::FileReader file;
        if (!file.Open(path)) {
            failure.reason = dyadctx::reason::Unreadable;
            return nullptr;
        }
        FileSource source(file);
        return ParseSource(source, isTold, failure);
    } catch (...) {
        failure.reason = dyadctx::reason::NoMemory;
        return nullptr;
    }
}

// The handler is the caller's code; its exceptions are swallowed.
VELResult TellUnlessParsed(const VELIDOMDocument& document, const dyadctx::XmlFailure& failure,
                           VELISAXErrorHandler* errors) noexcept {
    if (!document.IsNull())
        return S_OK;
    if (errors == nullptr)
        return E_FAIL;
    try {
        const VELUnicodeString text = dyadctx::TextOfReason(failure.reason, failure.parameters);
        errors->FatalError(static_cast<int>(failure.position.line),
                           static_cast<int>(failure.position.column),
                           text.IsEmpty() ? dyadctx::reason::NoMemory : text.ConvertToChar());
        return E_FAIL;
    } catch (...) {
        return E_FAIL;
    }
}

struct WriteOptions {
    bool isEncodingKnown = true;
    dyadctx::XmlLayout layout = dyadctx::XmlLayout::OneLine;
};

WriteOptions ReadOptions(const VELListValVELUnicodeString& names,
                         const VELListValVELUnicodeString& values) noexcept {
    WriteOptions options;
    const int count = std::min(names.Size(), values.Size());
    for (int pos = 1; pos <= count; ++pos) {
        if (names[pos].AsView() == "VELEncoding")
            options.isEncodingKnown = values[pos].AsView() == "UTF-8";
        else if (names[pos].AsView() == "VELIndentation")
            options.layout = values[pos].AsView() == "1" ? dyadctx::XmlLayout::Indented
                                                         : dyadctx::XmlLayout::OneLine;
    }
    return options;
}

// Passes the bytes of the document to `take` and returns its code.
template<class Take>
VELResult WriteTo(const Take& take, const DomDocument& document,
                  const VELListValVELUnicodeString& optionNames,
                  const VELListValVELUnicodeString& optionValues) noexcept {
    try {
        const WriteOptions options = ReadOptions(optionNames, optionValues);
        std::string text;
        if (!options.isEncodingKnown || !dyadctx::SerializeXml(document, options.layout, text))
            return E_FAIL;
        return take(text);
    } catch (...) {
        return E_FAIL;
    }
}

} // namespace

VELResult VELIXMLDOMDocumentBuilder::Parse(const VELUnicodeString& file,
                                           VELISAXErrorHandler* errors, VELISAXEntityResolver*,
                                           const VELListValVELUnicodeString&,
                                           const VELListValVELUnicodeString&,
                                           VELIDOMDocument& document) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    dyadctx::XmlFailure failure;
    document = VELIDOMDocument(ParseFile(file, errors != nullptr, failure).release());
    return TellUnlessParsed(document, failure, errors);
}

VELResult VELIXMLDOMDocumentBuilder::ParseText(const VELUnicodeString& text,
                                               VELISAXErrorHandler* errors,
                                               VELIDOMDocument& document) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    dyadctx::XmlFailure failure;
    TextSource source(text.AsView());
    document = VELIDOMDocument(ParseSource(source, errors != nullptr, failure).release());
    return TellUnlessParsed(document, failure, errors);
}

VELResult VELIXMLDOMDocumentBuilder::CreateDocument(VELIDOMDocument& document) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    document = VELIDOMDocument();
    try {
        document =
            VELIDOMDocument(std::make_unique<DomDocument>(DomDocument::Purpose::Making).release());
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult VELIXMLDOMDocumentBuilder::Write(const VELIDOMDocument& document,
                                           const VELUnicodeString& file,
                                           const VELListValVELUnicodeString& optionNames,
                                           const VELListValVELUnicodeString& optionValues) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    const auto replace = [&file](std::string_view bytes) { return VELReplaceFile(file, bytes); };
    return WriteTo(replace, document.Document(), optionNames, optionValues);
}

VELResult
VELIXMLDOMDocumentBuilder::WriteText(const VELIDOMDocument& document, VELUnicodeString& text,
                                     const VELListValVELUnicodeString& optionNames,
                                     const VELListValVELUnicodeString& optionValues) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    const auto keep = [&text](std::string_view bytes) {
        text = VELUnicodeString(bytes);
        return S_OK;
    };
    return WriteTo(keep, document.Document(), optionNames, optionValues);
}

VELResult CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder, int parserClass) {
    builder.parserClass_ = 0;
    if (parserClass != CLSID_XML4C_DOM && parserClass != CLSID_MSXML6_DOM)
        return E_FAIL;
    builder.parserClass_ = parserClass;
    return S_OK;
}
