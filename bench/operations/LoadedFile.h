// SPDX-License-Identifier: MIT
// Collectors made from the file of a measurement, and what operations need to know of them.
#pragma once

#include "bench/Operation.h"
#include "collector/VELDyadCtxCollector.h"

#include <memory>
#include <string>
#include <vector>

namespace dyadctx::bench {

using CollectorPtr = std::unique_ptr<VELDyadCtxCollector>;

// What the factory returns, with the DB context environment on: a collector or null, and a message.
CollectorPtr TryCreate(const std::string& file, std::string& message);
// The same; throws std::runtime_error for a file that is refused.
CollectorPtr Create(const std::string& file);

enum class View { All, Path, Database, File };

// Makes it the current view of the collector.
void Switch(VELDyadCtxCollector& collector, View view);
// The names of the contexts of the current view, in an order that looks random and is always the
// same.
std::vector<std::string> ShuffledNames(VELDyadCtxCollector& collector);

// The collector of a file for the operations that do not change it: one for all that are alive.
std::shared_ptr<VELDyadCtxCollector> SharedCollector(const std::string& file);

} // namespace dyadctx::bench
