#include "run/preview.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "gather/gather.h"
#include "methods/validation.h"
#include "platform/file_name.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;
using Shown = std::vector<std::string>;

RenameSettings insert_at_start(std::u16string text) {
  RenameSettings settings;
  settings.selectedTab = 1;
  settings.insertDeleteInsert = std::move(text);
  return settings;
}

RenameSettings replace(std::u16string from, std::u16string to) {
  RenameSettings settings;
  settings.selectedTab = 2;
  settings.replaceRemoveThis = std::move(from);
  settings.replaceRemoveWith = std::move(to);
  settings.isReplaceRemoveAllOccurrence = true;
  settings.isReplaceRemoveCaseSensitive = true;
  return settings;
}

RenameSettings numbers(bool restart) {
  RenameSettings settings;
  settings.selectedTab = 0;
  settings.alphaNumericNumericStartWith = u"1";
  settings.isAlphaNumericResetSequenceOnEachFolder = restart;
  return settings;
}

class Preview : public testing::Test {
 protected:
  void gather(const Shown& paths) {
    Shown absolute;
    for (const std::string& path : paths) absolute.push_back(tree_ / path);
    addFiles(files_, absolute, {}, &names_, {});
  }
  PreviewResult run(const RenameSettings& settings) {
    RenamePlan plan(settings, {});
    return preview(files_, plan, names_, {});
  }
  Shown shown() const {
    Shown fields;
    for (std::size_t row = 0; row < files_.size(); ++row) fields.push_back(to_utf8(files_.new_filename(row)));
    return fields;
  }

  TempTree tree_;
  FileList files_;
  DiskNames names_;
};

TEST_F(Preview, EachRowGetsItsNameOrWhatStandsInItsWay) {
  tree_.make({"a.txt", "x_a.txt", "keep", "folder.app/", "x_folder.app", "gone"});
  gather({"a.txt", "x_a.txt", "folder.app", "gone"});
  std::filesystem::remove(tree_ / "gone");
  const PreviewResult result = run(insert_at_start(u"x_"));
  EXPECT_EQ(shown(), (Shown{"File Already Exists", "x_x_a.txt", "Folder Already Exists", "File Not Found"}));
  EXPECT_TRUE(result.result && result.isHasFilesForRenaming && result.error.empty());
  EXPECT_EQ(result.renameable, 1U);
}

TEST_F(Preview, UnchangedAndUnwritableNamesAreNoChanges) {
  tree_.make({"abc", "a\xF0\x9F\x98\x80"});
  gather({"abc", "a\xF0\x9F\x98\x80"});
  EXPECT_FALSE(run(replace(u"q", u"r")).isHasFilesForRenaming);
  EXPECT_EQ(shown(), (Shown{"No Changes", "No Changes"}));
  run(replace(u"abc", u".."));
  EXPECT_EQ(shown().front(), "No Changes");
  EXPECT_FALSE(files_.reason(0).empty());
  run(insert_at_start(std::u16string(253, u'x')));
  EXPECT_EQ(shown(), (Shown{"No Changes", "No Changes"}));
  EXPECT_NE(files_.reason(1).find("too long"), std::string::npos);
  RenameSettings split;
  split.selectedTab = 5;
  split.generalOptionIndex = 4;
  run(split);
  EXPECT_EQ(shown(), (Shown{"cba", "No Changes"}));
  EXPECT_NE(files_.reason(1).find("split"), std::string::npos);
}

TEST_F(Preview, ANameThatReadsLikeAStatusIsNeverProposed) {
  tree_.make({"old"});
  gather({"old"});
  run(replace(u"old", u"Renaming (OK)"));
  EXPECT_TRUE(is_terminal(files_[0].status));
  EXPECT_FALSE(files_.reason(0).empty());
}

TEST_F(Preview, AChangeOfCaseIsAChange) {
  tree_.make({"Photo.JPG"});
  gather({"Photo.JPG"});
  run(replace(u"Photo", u"photo"));
  EXPECT_EQ(shown(), (Shown{"photo.JPG"}));
}

TEST_F(Preview, TwoRowsMayGetOneName) {
  tree_.make({"a1", "a2"});
  gather({"a1", "a2"});
  RenameSettings cut;
  cut.selectedTab = 1;
  cut.isInsertDeleteInsert = false;
  cut.isInsertDeleteDelete = true;
  cut.insertDeleteFromCharacterPosition = u"2";
  run(cut);
  EXPECT_EQ(shown(), (Shown{"a", "a"}));
}

TEST_F(Preview, NumbersRestartInEveryFolder) {
  tree_.make({"b/2", "b/10", "a/1", "a/3"});
  gather({"b/10", "a/3", "b/2", "a/1"});
  run(numbers(false));
  EXPECT_EQ(files_.path(0), tree_ / "b/10");
  EXPECT_EQ(shown(), (Shown{"1", "2", "3", "4"}));
  run(numbers(true));
  EXPECT_EQ(files_.path(1), tree_ / "a/3");
  EXPECT_EQ(shown(), (Shown{"No Changes", "2", "1", "File Already Exists"}));
}

TEST_F(Preview, AChainRunsEveryActiveRuleOnTheResultOfTheOneBefore) {
  tree_.make({"one.txt", "two.txt"});
  gather({"one.txt", "two.txt"});
  RenameSettings first = numbers(false);
  first.isAlphaNumericPrefix = true;
  RenameSettings second = numbers(false);
  second.isAlphaNumericSufix = true;
  second.alphaNumericNumericStartWith = u"7";
  RenameSettings off = insert_at_start(u"never");
  RenameSettings last = replace(u"o", u"0");
  std::vector<Rule> rules;
  for (RenameSettings* settings : {&first, &second, &off, &last}) rules.push_back(std::get<Rule>(getRule(*settings)));
  rules[2].isActive = false;
  RenamePlan plan(rules, {});
  preview(files_, plan, names_, {});
  EXPECT_EQ(shown(), (Shown{"10ne7.txt", "2tw08.txt"}));
}

TEST_F(Preview, TheListMethodKeepsItsNames) {
  tree_.make({"a", "b"});
  gather({"a", "b"});
  FileSystemItem item;
  files_.read(0, item);
  item.setNewFilename(u"from list");
  files_.write(0, item, 255);
  RenameSettings list;
  list.selectedTab = 9;
  EXPECT_TRUE(run(list).result);
  EXPECT_EQ(shown(), (Shown{"from list", "No Changes"}));
  list.selectedTab = 12;
  EXPECT_FALSE(run(list).result);
}

TEST_F(Preview, AFailingRowKeepsItsNameAndTheRunSaysWhich) {
  tree_.make({"a", "b"});
  gather({"a", "b"});
  RenameSettings letters;
  letters.isAlphaNumericNumeric = letters.isAlphaNumericIncrement = false;
  letters.isAlphaNumericAlphabetic = true;
  letters.alphaNumericAlphabeticStartWith = u"?";
  const PreviewResult result = run(letters);
  EXPECT_FALSE(result.result);
  EXPECT_EQ(result.error_row, 0U);
  EXPECT_EQ(shown(), (Shown{"No Changes", "No Changes"}));
  EXPECT_NE(files_.reason(1), "");
}

TEST_F(Preview, WhileTypingOnlySoManyRowsAreNamedAndNoDiskIsAsked) {
  for (char c = 'a'; c < 'k'; ++c) tree_.make({std::string(1, c)});
  gather({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});
  tree_.make({"x_a"});
  RenamePlan plan(insert_at_start(u"x_"), {});
  PreviewResult result = quickPreview(files_, plan, 3, {});
  EXPECT_EQ(result.processed, 3U);
  EXPECT_EQ(shown(), (Shown{"x_a", "x_b", "x_c", "No New Name", "No New Name", "No New Name", "No New Name",
                            "No New Name", "No New Name", "No New Name"}));
  result = quickPreview(files_, plan, 0, {});
  EXPECT_TRUE(result.isHasFilesForRenaming);
  EXPECT_EQ(shown().back(), "x_j");
}

TEST_F(Preview, ACancelledRunLeavesTheRestAsItWas) {
  tree_.make({"a", "b"});
  gather({"a", "b"});
  run(insert_at_start(u"1"));
  std::atomic<bool> cancel{true};
  RenamePlan plan(insert_at_start(u"2"), {});
  EXPECT_TRUE(preview(files_, plan, names_, {&cancel, nullptr}).cancelled);
  EXPECT_EQ(shown(), (Shown{"1a", "1b"}));
}

// Folders large enough to be listed, and changed behind the preview's back.
TEST_F(Preview, SeesWhatChangedSinceTheLastPreview) {
  for (int i = 0; i < 100; ++i) tree_.make({"f/" + std::to_string(i)});
  addFiles(files_, Shown{tree_ / "f"}, {}, &names_, {});
  EXPECT_EQ(run(insert_at_start(u"x")).renameable, 100U);
  tree_.make({"f/x7", "f/X8"});
  std::filesystem::remove(tree_ / "f/9");
  EXPECT_EQ(run(insert_at_start(u"x")).renameable, 98U);
  std::filesystem::remove(tree_ / "f/x7");
  EXPECT_EQ(run(insert_at_start(u"x")).renameable, 99U);
}

}  // namespace
}  // namespace brindle
