// SPDX-License-Identifier: MIT
#include "bench/operations/LoadedFile.h"

#include "bench/ProcessServices.h"
#include "bench/generator/Names.h"
#include "platform/VELDbContextEnvironment.h"

#include <map>
#include <stdexcept>
#include <utility>

namespace dyadctx::bench {

namespace {

constexpr std::uint64_t ShuffleSeed = 7;

void Shuffle(std::vector<std::string>& texts) {
    for (std::size_t i = texts.size(); i > 1; --i)
        std::swap(texts[i - 1], texts[Chance(ShuffleSeed, i, 0) % i]);
}

} // namespace

CollectorPtr TryCreate(const std::string& file, std::string& message) {
    SetDbContextEnvironment(true);
    SetVariable("ExchangeChannel", file);
    VELUnicodeString text;
    CollectorPtr collector(VELDyadCtxCollector::CreateExchangeChannelCollector(text));
    message = text.AsView();
    return collector;
}

CollectorPtr Create(const std::string& file) {
    std::string message;
    CollectorPtr collector = TryCreate(file, message);
    if (!collector)
        throw std::runtime_error("cannot load " + file + ": " + message.substr(0, 200));
    return collector;
}

void Switch(VELDyadCtxCollector& collector, View view) {
    switch (view) {
    case View::All:
        collector.SetContextAllType();
        break;
    case View::Path:
        collector.SetContextPathType();
        break;
    case View::Database:
        collector.SetContextDatabaseType({});
        break;
    case View::File:
        collector.SetContextFileType();
        break;
    }
}

std::vector<std::string> ShuffledNames(VELDyadCtxCollector& collector) {
    std::vector<std::string> names;
    const int count = collector.GetNbCtxs();
    names.reserve(static_cast<std::size_t>(count));
    for (int position = 1; position <= count; ++position) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(position, context) == S_OK && context)
            names.emplace_back(context->GetName().AsView());
    }
    Shuffle(names);
    return names;
}

std::shared_ptr<VELDyadCtxCollector> SharedCollector(const std::string& file) {
    static std::map<std::string, std::weak_ptr<VELDyadCtxCollector>> alive;
    std::shared_ptr<VELDyadCtxCollector> collector = alive[file].lock();
    if (!collector) {
        collector = Create(file);
        alive[file] = collector;
    }
    return collector;
}

} // namespace dyadctx::bench
