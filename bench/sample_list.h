#pragma once

// Lists to measure with.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "list/file_list.h"

namespace brindle::bench {

/// `count` names as cameras and people give them, in an order of no order. The same on every call.
std::vector<std::string> sample_names(std::size_t count);

/// A list of such names, a thousand a folder; nothing of it exists on disk.
void fill(FileList& files, std::size_t count);

/// Adds the time an item, in nanoseconds, to a benchmark that has run `items` items an iteration.
void report_time_an_item(benchmark::State& state, std::size_t items);

}  // namespace brindle::bench
