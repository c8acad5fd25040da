// Each rename method alone, on items that are in memory already: names per second and nanoseconds a name.

#include <cstdlib>
#include <string_view>
#include <vector>

#include "methods/rename_plan.h"
#include "sample_list.h"
#include "settings/setting_text.h"

namespace brindle::bench {
namespace {

std::vector<FileSystemItem> sample_items() {
  std::vector<FileSystemItem> items;
  for (const std::string& name : sample_names(4096)) {
    items.emplace_back().set_path("/home/ann/Pictures/2024 Brest", name);
  }
  return items;
}

using Assignments = std::vector<std::string_view>;

// Every item starts from its name on disk.
void method(benchmark::State& state, const Assignments& assignments) {
  RenameSettings settings;
  if (apply_assignments(settings, assignments)) std::abort();
  RenamePlan plan(settings, Date{});
  std::vector<FileSystemItem> items = sample_items();
  std::u16string error;
  for (auto _ : state) {
    for (FileSystemItem& item : items) {
      item.setNewFilename(std::u16string_view());
      benchmark::DoNotOptimize(plan.run(item, error));
    }
  }
  report_time_an_item(state, items.size());
}

#define METHOD_BENCH(name, ...) BENCHMARK_CAPTURE(method, name, Assignments{__VA_ARGS__})

METHOD_BENCH(insert_at_position, "selectedTab=1", "insertDeleteInsert=Brest", "insertDeleteInsertOptionIndex=2",
             "insertDeleteAtCharacterPositions=3");
METHOD_BENCH(insert_after_text, "selectedTab=1", "insertDeleteInsert=Brest", "insertDeleteInsertOptionIndex=4",
             "insertDeleteInsertAtAfterText=00");
METHOD_BENCH(remove_run, "selectedTab=1", "isInsertDeleteInsert=0", "isInsertDeleteDelete=1",
             "insertDeleteFromCharacterPosition=2", "insertDeleteNumberOfCharacters=3");
METHOD_BENCH(replace_any_case, "selectedTab=2", "replaceRemoveThis=img", "replaceRemoveWith=Brest",
             "isReplaceRemoveAllOccurrence=1");
METHOD_BENCH(replace_exact, "selectedTab=2", "replaceRemoveThis=0", "replaceRemoveWith=o",
             "isReplaceRemoveAllOccurrence=1", "isReplaceRemoveCaseSensitive=1");
METHOD_BENCH(replace_from_the_end, "selectedTab=2", "replaceRemoveThis=0", "replaceRemoveWith=o",
             "isReplaceRemoveAllOccurrence=1", "replaceRemovePositionDirection=1");
METHOD_BENCH(replace_characters, "selectedTab=2", "isReplaceRemoveReplace=0", "isReplaceRemoveRemoveCharacters=1",
             "replaceRemoveThis=aeiou");
METHOD_BENCH(replace_between, "selectedTab=2", "isReplaceRemoveReplace=0", "isReplaceRemoveRemoveCharacters=1",
             "replaceRemoveThis=0", "replaceRemoveRemoveType=1", "replaceRemoveOccuranceCount=-1");
METHOD_BENCH(number, "selectedTab=0", "isAlphaNumericPrefix=1", "isAlphaNumericSeperator=1",
             "alphaNumericSeperator= - ", "alphaNumericPaddingMask=0000");
METHOD_BENCH(letter, "selectedTab=0", "isAlphaNumericNumeric=0", "isAlphaNumericAlphabetic=1", "isAlphaNumericSufix=1",
             "isAlphaNumericSeperator=1", "alphaNumericSeperator=-");
METHOD_BENCH(prefix_suffix, "selectedTab=3", "prefixSuffixPrefix=Brest - ", "prefixSuffixSuffix=_z");
METHOD_BENCH(date_in_numbers, "selectedTab=4", "dateTimeDateOptionIndex=2", "dateTimeCustomDate=2009-05-17T15:04:05Z",
             "hasTimeFormat=0", "dateTimeFormatDatePart1=yyyy", "dateTimeFormatDatePart3=dd");
METHOD_BENCH(date_with_words, "selectedTab=4", "dateTimeDateOptionIndex=2", "dateTimeCustomDate=2009-05-17T15:04:05Z",
             "hasTimeFormat=0", "dateTimeFormatDatePart1=yyyy", "dateTimeFormatDatePart2=MMM",
             "dateTimeFormatDatePart3=dd");
METHOD_BENCH(general_upper, "selectedTab=5", "generalFileNameCase=1");
METHOD_BENCH(general_proper, "selectedTab=5", "generalFileNameCase=3");
METHOD_BENCH(general_swap, "selectedTab=5", "generalOptionIndex=6", "generalSwapSeperator=_");
METHOD_BENCH(general_cut, "selectedTab=5", "generalOptionIndex=9", "generalRemoveFromString=_");
METHOD_BENCH(general_windows, "selectedTab=5", "generalOptionIndex=11", "generalConvertWindowsCompatibleString=_");
METHOD_BENCH(folders, "selectedTab=8", "pathComponentsLevelNo=2", "pathComponentsSeparator=_");

}  // namespace
}  // namespace brindle::bench
