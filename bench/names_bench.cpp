// New names alone: every row read from the list, renamed and written back, with no look at the disk. This is the
// preview that follows a person's typing.

#include <vector>

#include "methods/rename_plan.h"
#include "methods/rule.h"
#include "run/preview.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

constexpr std::size_t count = 100'000;

RenameSettings insert() {
  RenameSettings settings;
  settings.selectedTab = 1;
  settings.insertDeleteInsert = u"Brest - ";
  return settings;
}

RenameSettings insert_after_text() {
  RenameSettings settings = insert();
  settings.insertDeleteInsertOptionIndex = 4;
  settings.insertDeleteInsertAtAfterText = u"00";
  return settings;
}

RenameSettings delete_three() {
  RenameSettings settings;
  settings.selectedTab = 1;
  settings.isInsertDeleteInsert = false;
  settings.isInsertDeleteDelete = true;
  settings.insertDeleteNumberOfCharacters = u"3";
  return settings;
}

void run(benchmark::State& state, RenamePlan& plan) {
  FileList files;
  fill(files, count);
  for (auto _ : state) benchmark::DoNotOptimize(quickPreview(files, plan, 0, {}).renameable);
  report_time_an_item(state, count);
}

void one_method(benchmark::State& state, RenameSettings (*make)()) {
  RenamePlan plan(make(), Date{});
  run(state, plan);
}

void chain_of_eight(benchmark::State& state) {
  std::vector<Rule> rules;
  while (rules.size() < 8) {
    for (const auto make : {insert, delete_three}) {
      RenameSettings settings = make();
      rules.push_back(std::get<Rule>(getRule(settings)));
    }
  }
  RenamePlan plan(rules, Date{});
  run(state, plan);
}

BENCHMARK_CAPTURE(one_method, insert, insert)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(one_method, insert_after_text, insert_after_text)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(one_method, delete_three, delete_three)->Unit(benchmark::kMillisecond);
BENCHMARK(chain_of_eight)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brindle::bench
