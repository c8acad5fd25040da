// A million names must not be a million allocations: once its buffers are warm, a method takes no memory.

#include <atomic>
#include <cstdlib>
#include <new>

#include "methods/rename_plan.h"
#include "methods/sample_item.h"

namespace {
std::atomic<std::size_t> allocations = 0;
}  // namespace

// Not inlined, or the compiler takes the pair for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
// Sorting asks for memory in this way, and gives it back in the other.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocations;
  return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace brindle::test {
namespace {

void expect_no_allocation(const char* method, const RenameSettings& settings) {
  FileSystemItem item = sample_item(u"Holiday in Brest, été 2024_0001.jpg");
  RenamePlan plan(settings, Date{});
  ASSERT_FALSE(plan.empty()) << method;
  std::u16string error;
  const auto run = [&](int times) {
    for (int i = 0; i < times; ++i) {
      item.setNewFilename(std::u16string_view());
      plan.run(item, error);
    }
  };
  run(3);
  const std::size_t before = allocations;
  run(50);
  EXPECT_EQ(allocations, before) << method;
  EXPECT_TRUE(error.empty()) << method;
}

RenameSettings of(Method method) {
  RenameSettings settings;
  settings.selectedTab = tab_of(method);
  return settings;
}

TEST(Methods, TakeNoMemoryOnceWarm) {
  RenameSettings settings = of(Method::insert_delete);
  settings.insertDeleteInsert = u"Brest and around";
  settings.insertDeleteInsertOptionIndex = Placement::at_end;
  expect_no_allocation("insert", settings);
  settings.isInsertDeleteInsert = false;
  settings.isInsertDeleteDelete = true;
  settings.insertDeleteNumberOfCharacters = u"3";
  expect_no_allocation("delete", settings);
  settings = of(Method::replace_remove);
  settings.replaceRemoveThis = u"É";
  settings.replaceRemoveWith = u"ee";
  for (const bool exact : {false, true}) {
    settings.isReplaceRemoveCaseSensitive = exact;
    settings.replaceRemovePositionDirection = 1;
    settings.isReplaceRemoveReplace = true;
    expect_no_allocation("replace", settings);
    settings.isReplaceRemoveReplace = false;
    settings.isReplaceRemoveRemoveCharacters = true;
    expect_no_allocation("characters", settings);
  }
  settings = of(Method::prefix_suffix);
  settings.prefixSuffixPrefix = settings.prefixSuffixSuffix = u"p";
  expect_no_allocation("prefix", settings);
  settings = of(Method::date_time);
  settings.dateTimeDateOptionIndex = 2;
  expect_no_allocation("date", settings);
  settings = of(Method::path_components);
  settings.pathComponentsLevelNo = -1;
  expect_no_allocation("folders", settings);
  settings = of(Method::general);
  settings.generalSwapSeperator = settings.generalRemoveFromString = u"_";
  settings.generalFilenameMask = u"000";
  for (settings.generalOptionIndex = 0; settings.generalOptionIndex <= 12; ++settings.generalOptionIndex) {
    for (settings.generalFileNameCase = 1; settings.generalFileNameCase <= 3; ++settings.generalFileNameCase) {
      expect_no_allocation("general", settings);
    }
  }
  settings = of(Method::sequence);
  settings.isAlphaNumericPrefix = settings.isAlphaNumericSeperator = true;
  settings.alphaNumericSeperator = u" - ";
  settings.alphaNumericPaddingMask = u"0000";
  expect_no_allocation("number", settings);
  settings.isAlphaNumericNumeric = false;
  settings.isAlphaNumericAlphabetic = true;
  expect_no_allocation("letter", settings);
}

}  // namespace
}  // namespace brindle::test
