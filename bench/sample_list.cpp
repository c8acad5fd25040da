#include "sample_list.h"

#include <cstdint>

#include "list/item_status.h"

namespace brindle::bench {
namespace {

/// A number of at most seven digits that looks drawn by lot. Distinct for distinct `at` below ten million.
std::size_t scatter(std::size_t at) {
  return at * 7'368'787 % 10'000'019;
}

std::string sample_name(std::size_t at) {
  const std::string number = std::to_string(scatter(at));
  switch (at % 4) {
    case 0:
      return "IMG_" + number + ".jpg";
    case 1:
      return "DSC" + number + ".NEF";
    case 2:
      return "Holiday in Brest " + number + ".jpg";
    default:
      return number + ". Café du port.txt";
  }
}

}  // namespace

std::vector<std::string> sample_names(std::size_t count) {
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t at = 0; at < count; ++at) names.push_back(sample_name(at));
  return names;
}

void fill(FileList& files, std::size_t count) {
  constexpr std::size_t per_folder = 1000;
  FileList::Listing listing;
  for (std::size_t at = 0; at < count; ++at) {
    if (at % per_folder == 0) {
      listing = files.begin_listing(files.folders().intern("/bench/Roll " + std::to_string(at / per_folder)));
    }
    files.add_listed(listing, sample_name(at), kind_bits(false, false), at + 1);
  }
}

void report_time_an_item(benchmark::State& state, std::size_t items) {
  const double done = static_cast<double>(items) * static_cast<double>(state.iterations());
  state.counters["an_item"] = benchmark::Counter(done, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

}  // namespace brindle::bench
