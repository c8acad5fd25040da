// Which row has to leave its name before which.

#include <numeric>

#include "list/file_list.h"
#include "platform/file_name.h"
#include "run/run_order.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

/// Every row gets the name of the one `step` rows on, or a free one where step is 0.
void order_a_run(benchmark::State& state, std::size_t step) {
  const auto count = static_cast<std::size_t>(state.range(0));
  FileList files;
  const FolderId folder = files.folders().intern("/bench");
  const auto name_of = [](std::size_t number) { return "IMG_" + std::to_string(10'000'000 + number) + ".jpg"; };
  for (std::size_t row = 0; row < count; ++row) files.add(folder, name_of(row), 0, row + 1);
  FileSystemItem item;
  for (std::size_t row = 0; row < count; ++row) {
    files.read(row, item);
    item.setNewFilename(decode_file_name(step == 0 ? "Holiday " + name_of(row) : name_of(row + step)));
    files.write(row, item, 255);
  }
  std::vector<std::uint32_t> rows(count);
  std::iota(rows.begin(), rows.end(), 0);
  for (auto _ : state) {
    benchmark::DoNotOptimize(order_of_run(files, rows, [](FolderId, const char*, const char*) { return false; }));
  }
  report_time_an_item(state, count);
}

BENCHMARK_CAPTURE(order_a_run, free_names, 0)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(order_a_run, a_shift, 1)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(order_a_run, far_apart, 500'009)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brindle::bench
