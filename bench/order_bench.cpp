// The list's name order.

#include "list/file_order.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

void sort_a_list(benchmark::State& state, void (*sort)(FileList&)) {
  const auto count = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    FileList files;
    fill(files, count);
    state.ResumeTiming();
    sort(files);
  }
  report_time_an_item(state, count);
}

BENCHMARK_CAPTURE(sort_a_list, by_name, sort_by_name)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sort_a_list, by_location, sort_by_location)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brindle::bench
