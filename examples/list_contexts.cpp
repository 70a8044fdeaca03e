// A client of the library: lists the contexts of a file, and the options of an exchange scenario.
//
//     list_contexts FILE [CHANNEL PROFILE]
//
// FILE is taken the way an exchange program takes it: from the environment variable
// ExchangeChannel, which this program sets for itself.
#include "collector/VELDyadCtxCollector.h"
#include "platform/VELDbContextEnvironment.h"

#include <cstdlib>
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
    if (argc != 2 && argc != 4) {
        std::cerr << "usage: list_contexts FILE [CHANNEL PROFILE]\n";
        return 2;
    }
    setenv("ExchangeChannel", argv[1], 1);
    // Database contexts take part only in the DB context environment.
    SetDbContextEnvironment(true);

    VELUnicodeString message;
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateExchangeChannelCollector(message));
    if (!collector) {
        std::cerr << message.AsView();
        return 1;
    }
    ListContexts(*collector);
    if (argc == 4)
        ListOptions(*collector, argv[2], argv[3]);
    return 0;
}
