// Each rename method alone, on items that are in memory already: names per second and nanoseconds a name.

#include <vector>

#include "methods/date_time.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/path_components.h"
#include "methods/prefix_suffix.h"
#include "methods/replace_remove.h"
#include "methods/sequence.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

std::vector<FileSystemItem> sample_items() {
  std::vector<FileSystemItem> items;
  for (const std::string& name : sample_names(4096)) {
    items.emplace_back().set_path("/home/ann/Pictures/2024 Brest", name);
    items.back().set_kind(false, false, false);
  }
  return items;
}

// `rename(item, name, error)` on every item, each starting from its name on disk.
template <class Rename>
void run(benchmark::State& state, Rename rename) {
  std::vector<FileSystemItem> items = sample_items();
  WorkingName name;
  std::u16string error;
  for (auto _ : state) {
    for (FileSystemItem& item : items) {
      item.setNewFilename(std::u16string_view());
      benchmark::DoNotOptimize(rename(item, name, error));
    }
  }
  report_time_an_item(state, items.size());
}

template <class Parameters, class Operation>
void one(benchmark::State& state, const Parameters& parameters, Operation operation) {
  run(state, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
    return operation(item, parameters, name, error);
  });
}

void insert(benchmark::State& state, InsertArguments arguments) {
  one(state, InsertParameters(arguments), renameByInsert);
}
void replace(benchmark::State& state, ReplaceRemoveArguments arguments) {
  one(state, ReplaceRemoveParameters(arguments), renameByReplaceRemove);
}
void general(benchmark::State& state, GeneralArguments arguments) {
  one(state, GeneralParameters(arguments), renameByGeneral);
}

void remove_run(benchmark::State& state) {
  one(state, DeleteParameters{.fromCharacterPosition = 2, .numberOfCharacters = 3}, renameByDelete);
}

void number(benchmark::State& state) {
  const NumericParameters parameters(
      {.prefix = true, .seperator = true, .seperatorString = u" - ", .addingMask = u"0000"});
  std::int32_t counter = 1;
  run(state, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
    return renameByNumeric(item, parameters, counter, name, error);
  });
}

void letter(benchmark::State& state) {
  const AlphabeticParameters parameters({.subffix = true, .seperator = true, .seperatorString = u"-"});
  std::u16string counter;
  run(state, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
    return renameByAlphabetic(item, parameters, counter, name, error);
  });
}

void prefix_suffix(benchmark::State& state) {
  one(state, PrefixSuffixParameters({.prefix = u"Brest - ", .suffix = u"_z"}), renameByPrefixSuffix);
}

void date(benchmark::State& state, std::u16string_view month) {
  const DateParts parts{
      .datePart1 = u"yyyy", .dateSeperator1 = u"-", .datePart2 = month, .dateSeperator2 = u"-", .datePart3 = u"dd"};
  const Date day{std::chrono::milliseconds(1'242'565'445'678)};
  one(state,
      DateTimeParameters(
          {.dateTimeDateOptionIndex = 2, .dateTimeCustomDate = day, .hasTimeFormat = false, .parts = parts}),
      renameByDateTime);
}

void folders(benchmark::State& state) {
  one(state, PathComponentsParameters({.pathComponentsLevelNo = 2, .pathComponentsSeparator = u"_"}),
      renameByPathComponents);
}

BENCHMARK_CAPTURE(insert, at_position, {.insertText = u"Brest", .insertOptionIndex = 2, .atCharacterPositions = 3});
BENCHMARK_CAPTURE(insert, after_text, {.insertText = u"Brest", .insertOptionIndex = 4, .atAfterText = u"00"});
BENCHMARK(remove_run);
BENCHMARK_CAPTURE(replace, any_case, {.replaceThis = u"img", .replaceWith = u"Brest"});
BENCHMARK_CAPTURE(replace, exact, {.replaceThis = u"0", .replaceWith = u"o", .caseSensitive = true});
BENCHMARK_CAPTURE(replace, from_the_end,
                  {.replaceThis = u"0", .replaceWith = u"o", .replaceRemovePositionDirection = 1});
BENCHMARK_CAPTURE(replace, characters, {.replaceThis = u"aeiou", .removeCharacters = true});
BENCHMARK_CAPTURE(replace, between, {.replaceThis = u"0", .removeCharacters = true, .replaceRemoveRemoveType = 1});
BENCHMARK(number);
BENCHMARK(letter);
BENCHMARK(prefix_suffix);
BENCHMARK_CAPTURE(date, in_numbers, u"MM");
BENCHMARK_CAPTURE(date, with_words, u"MMM");
BENCHMARK_CAPTURE(general, upper, {.generalOptionIndex = 0, .generalFileNameCase = 1});
BENCHMARK_CAPTURE(general, proper, {.generalOptionIndex = 0, .generalFileNameCase = 3});
BENCHMARK_CAPTURE(general, swap, {.generalOptionIndex = 6, .generalSwapSeperator = u"_"});
BENCHMARK_CAPTURE(general, cut, {.generalOptionIndex = 9, .generalRemoveFromString = u"_"});
BENCHMARK_CAPTURE(general, windows, {.generalOptionIndex = 11, .generalConvertWindowsCompatibleString = u"_"});
BENCHMARK(folders);

}  // namespace
}  // namespace brindle::bench
