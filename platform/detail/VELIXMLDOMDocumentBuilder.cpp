#include "platform/VELIXMLDOM.h"

#include "platform/VELBaseUnknown_var.h"
#include "platform/detail/DomDocument.h"
#include "platform/detail/DomFaults.h"
#include "platform/detail/FileReader.h"
#include "platform/detail/FileWriter.h"
#include "platform/detail/XmlParser.h"
#include "platform/detail/XmlReasons.h"
#include "platform/detail/XmlSerializer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>

using dyadctx::DomCall;
using dyadctx::DomDocument;
using dyadctx::DomFault;

namespace {

class FileSource final : public dyadctx::XmlSource {
public:
    explicit FileSource(dyadctx::FileReader& file) : file_(file) {}
    std::int64_t Read(void* buffer, std::size_t size) override { return file_.Read(buffer, size); }

private:
    dyadctx::FileReader& file_;
};

std::unique_ptr<DomDocument> ParseFile(const VELUnicodeString& path,
                                       dyadctx::XmlFailure& failure) noexcept {
    try {
        dyadctx::FileReader file;
        if (!file.Open(path)) {
            failure.reason = dyadctx::UnreadableReason;
            return nullptr;
        }
        FileSource source(file);
        return dyadctx::ParseXml(source, failure);
    } catch (...) {
        failure.reason = dyadctx::NoMemoryReason;
        return nullptr;
    }
}

// The handler is the caller's code, and what it throws goes no further.
void Tell(VELISAXErrorHandler* errors, const dyadctx::XmlFailure& failure) noexcept {
    if (errors == nullptr)
        return;
    try {
        errors->FatalError(static_cast<int>(failure.position.line),
                           static_cast<int>(failure.position.column), failure.reason);
    } catch (...) {
        return;
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

VELResult WriteFile(const DomDocument& document, const VELUnicodeString& file,
                    dyadctx::XmlLayout layout) noexcept {
    try {
        std::string text;
        if (!dyadctx::SerializeXml(document, layout, text))
            return E_FAIL;
        return dyadctx::ReplaceFile(file, text);
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
    std::unique_ptr<DomDocument> parsed = ParseFile(file, failure);
    if (parsed == nullptr) {
        document = VELIDOMDocument();
        Tell(errors, failure);
        return E_FAIL;
    }
    document = VELIDOMDocument(parsed.release());
    return S_OK;
}

VELResult VELIXMLDOMDocumentBuilder::CreateDocument(VELIDOMDocument& document) const {
    if (IsNull())
        VELBaseUnknown_var::ThrowErrorNullVar();
    document = VELIDOMDocument();
    const DomFault fault = dyadctx::TakeDomFault(DomCall::CreateDocument);
    if (fault != DomFault::None)
        return fault == DomFault::NullHandle ? S_OK : E_FAIL;
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
    const DomDocument& written = document.Document();
    const WriteOptions options = ReadOptions(optionNames, optionValues);
    return options.isEncodingKnown ? WriteFile(written, file, options.layout) : E_FAIL;
}

VELResult CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder, int parserClass) {
    builder.parserClass_ = 0;
    const DomFault fault = dyadctx::TakeDomFault(DomCall::CreateBuilder);
    if (fault != DomFault::None)
        return fault == DomFault::NullHandle ? S_OK : E_FAIL;
    if (parserClass != CLSID_XML4C_DOM && parserClass != CLSID_MSXML6_DOM)
        return E_FAIL;
    builder.parserClass_ = parserClass;
    return S_OK;
}
