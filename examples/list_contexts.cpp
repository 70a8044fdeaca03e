// A client of the library: lists the contexts of a file, and the options of an exchange scenario.
//
//     ExchangeChannel=FILE list_contexts [CHANNEL PROFILE]
#include "collector/VELDyadCtxCollector.h"
#include "platform/VELDbContextEnvironment.h"

#include <iostream>
#include <memory>

namespace {

void ListContexts(VELDyadCtxCollector& collector) {
    for (int position = 1; position <= collector.GetNbCtxs(); ++position) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(position, context) < 0 || context == nullptr)
            continue;
        std::cout << context->GetName().AsView() << " (" << context->GetNLSParameterType().AsView()
                  << ")\n";
    }
}

void ListOptions(VELDyadCtxCollector& collector, const char* channel, const char* profile) {
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    collector.GetOptionsfromExchangeProfile(channel, profile, names, values);
    for (int position = 1; position <= names.Size(); ++position)
        std::cout << names[position].AsView() << " = " << values[position].AsView() << "\n";
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 1 && argc != 3) {
        std::cerr << "usage: ExchangeChannel=FILE list_contexts [CHANNEL PROFILE]\n";
        return 2;
    }
    // Database contexts take part only in the DB context environment.
    SetDbContextEnvironment(true);

    VELUnicodeString message;
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateExchangeChannelCollector(message));
    if (!collector) {
        // Without ExchangeChannel there is no message.
        std::cerr << "no contexts: " << message.AsView() << "\n";
        return 1;
    }
    ListContexts(*collector);
    if (argc == 3)
        ListOptions(*collector, argv[1], argv[2]);
    return 0;
}
