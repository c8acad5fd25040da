// A million names must not be a million allocations: once its buffers are warm, a method takes no memory.

#include <atomic>
#include <cstdlib>
#include <new>

#include "methods/date_time.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/path_components.h"
#include "methods/prefix_suffix.h"
#include "methods/replace_remove.h"
#include "methods/sample_item.h"
#include "methods/sequence.h"

namespace {
std::atomic<std::size_t> allocations = 0;
}  // namespace

// Not inlined, or the compiler takes the pair for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace brindle::test {
namespace {

template <class Rename>
void expect_no_allocation(const char* method, Rename rename) {
  FileSystemItem item = sample_item(u"Holiday in Brest, été 2024_0001.jpg");
  WorkingName name;
  std::u16string error;
  const auto run = [&](int times) {
    for (int i = 0; i < times; ++i) {
      item.setNewFilename(std::u16string_view());
      rename(item, name, error);
    }
  };
  run(3);
  const std::size_t before = allocations;
  run(50);
  EXPECT_EQ(allocations, before) << method;
  EXPECT_TRUE(error.empty()) << method;
}

template <class Parameters, class Operation>
void expect_no_allocation(const char* method, const Parameters& parameters, Operation operation) {
  expect_no_allocation(method, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
    operation(item, parameters, name, error);
  });
}

TEST(Methods, TakeNoMemoryOnceWarm) {
  expect_no_allocation("insert", InsertParameters({.insertText = u"Brest and around", .insertOptionIndex = 1}),
                       renameByInsert);
  expect_no_allocation("delete", DeleteParameters{.numberOfCharacters = 3}, renameByDelete);
  for (const bool exact : {false, true}) {
    expect_no_allocation(
        "replace",
        ReplaceRemoveParameters(
            {.replaceThis = u"É", .replaceWith = u"ee", .caseSensitive = exact, .replaceRemovePositionDirection = 1}),
        renameByReplaceRemove);
    expect_no_allocation(
        "characters", ReplaceRemoveParameters({.replaceThis = u"aé", .caseSensitive = exact, .removeCharacters = true}),
        renameByReplaceRemove);
  }
  expect_no_allocation("prefix", PrefixSuffixParameters({.prefix = u"p", .suffix = u"s"}), renameByPrefixSuffix);
  expect_no_allocation("date", DateTimeParameters({.dateTimeDateOptionIndex = 2, .dateTimeCustomDate = Date{}}),
                       renameByDateTime);
  expect_no_allocation("folders", PathComponentsParameters({.pathComponentsLevelNo = -1}), renameByPathComponents);
  for (std::int32_t option = 0; option <= 12; ++option) {
    for (const std::int32_t letter_case : {1, 2, 3}) {
      expect_no_allocation("general",
                           GeneralParameters({.generalOptionIndex = option,
                                              .generalFileNameCase = letter_case,
                                              .generalSwapSeperator = u"_",
                                              .generalRemoveFromString = u"_",
                                              .generalFilenameMask = u"000"}),
                           renameByGeneral);
    }
  }
  const SequenceArguments sequence{.prefix = true, .seperator = true, .seperatorString = u" - ", .addingMask = u"0000"};
  std::int32_t number = 1;
  expect_no_allocation("number", [&, numeric = NumericParameters(sequence)](auto& item, auto& name, auto& error) {
    renameByNumeric(item, numeric, number, name, error);
  });
  std::u16string letters = u"a";
  expect_no_allocation("letter", [&, alphabetic = AlphabeticParameters(sequence)](auto& item, auto& name, auto& error) {
    renameByAlphabetic(item, alphabetic, letters, name, error);
  });
}

}  // namespace
}  // namespace brindle::test
