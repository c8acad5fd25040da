// From an empty list to renamed files, as a person goes about it.

#include <sys/stat.h>

#include <filesystem>

#include "app/chain_controller.h"
#include "app/controller_support.h"
#include "app/jobs_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/order_controller.h"
#include "app/preferences_controller.h"
#include "app/preview_controller.h"
#include "app/renaming_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "log/rename_log.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Renaming : public ControllerTest {
 protected:
  void SetUp() override { start(); }

  /// Chooses to put `text` before each name.
  void insert(const std::u16string& text) {
    app().options().select_tab(Method::insert_delete);
    set([&text](RenameSettings& settings) { settings.insertDeleteInsert = text; });
  }
  void preview() {
    app().preview().actionPreview();
    advance(500);
  }
  void rename() {
    ports_.alerts.answers = {0};
    app().renaming().actionApply();
    run();
    alerts();
  }
  std::size_t logs() { return loadUserLogFiles(app().model().preferences().defaultLogFolderPath).size(); }
};

TEST_F(Renaming, EveryDoorLeadsToTheList) {
  tree_.make({"d/sub/1", "d/.hidden", "f"});
  const auto load = [this](const std::function<void()>& by_door) {
    by_door();
    run();
    const std::vector<std::string> found = rows();
    ports_.alerts.answers = {0};
    if (!found.empty()) app().list().clearFilesFolders();
    alerts();
    return found;
  };
  const std::vector<std::string> chosen = {tree_ / "d", tree_ / "f"};
  ports_.chooser.open_answers = {chosen, {tree_ / "d"}, chosen, {}};
  EXPECT_THAT(load([this] { app().list().addFilesAction(); }), ElementsAre("1", "f"));
  EXPECT_THAT(load([this] { app().list().addFolderAction(); }), ElementsAre("1"));
  EXPECT_THAT(load([this] { app().list().addFilesFolders(); }), ElementsAre("1", "f"));
  EXPECT_THAT(load([this] { app().list().addFilesFolders(); }), IsEmpty());  // cancelled
  EXPECT_THAT(load([this] { app().list().recentFolderChanged(0); }), IsEmpty());
  app().preferences().setIncludeHidden(true);
  EXPECT_THAT(load([this] { app().list().recentFolderChanged(1); }), ::testing::UnorderedElementsAre("1", ".hidden"));
  app().preferences().setIncludeHidden(false);
  ports_.desktop.clipboard = chosen;
  EXPECT_THAT(load([this] { app().list().addFilesFoldersFromFinder(); }), ElementsAre("1", "f"));
  EXPECT_THAT(load([&] { app().list().PasteboardItemsControllerDidFinish(true, false, chosen); }), ElementsAre("d"));
  EXPECT_TRUE(app().model().values().isFolders);
  EXPECT_EQ(app().model().values().fileFolderIndex, 1);
  EXPECT_THAT(load([&] { app().list().loadFiles(chosen); }), ElementsAre("f"));  // folders are not looked into any more
  EXPECT_TRUE(app().model().values().isFiles);
}

TEST_F(Renaming, PathsMayPassThroughLinksAndWhatCannotBeReadIsALineWithAList) {
  tree_.make({"home -> real", "real/a", "real/t1/b", "loop -> loop"});
  app().list().loadFiles({tree_ / "home/a", tree_ / "home/t1/", tree_ / "loop/x", tree_ / "loop/<b>"});
  run();
  EXPECT_THAT(rows(), ElementsAre("a", "b"));
  EXPECT_EQ(app().model().files().path(1), tree_ / "real/t1/b");
  EXPECT_EQ(app().model().state().unreadable_label, "2 items could not be read");
  EXPECT_EQ(app().model().state().unreadable_list, tree_ / "loop/x" + ": a symbolic link stands in the way to it\n" +
                                                       tree_ / "loop/<b>" +
                                                       ": a symbolic link stands in the way to it");
  add({"real/a"});
  EXPECT_EQ(app().model().state().unreadable_label + app().model().state().unreadable_list, "");
}

TEST_F(Renaming, NamesAreGivenByTheChoicesThatTheyWerePromisedBy) {
  tree_.make({"a", "xa"});
  add({"a", "xa"});
  app().preview().set_choices({.permute = true});
  insert(u"x");
  preview();
  app().preview().set_choices({});
  rename();
  EXPECT_EQ(tree_.names(), (std::vector<std::string>{"xa", "xxa"}));
}

TEST_F(Renaming, StateFollowsTheList) {
  tree_.make({"a", "b", "c"});
  add({"a", "b", "c"});
  insert(u"x");
  EXPECT_TRUE(app().model().state().preview_enabled);
  EXPECT_FALSE(app().model().state().rename_enabled || app().model().state().shows_empty_hint);
  EXPECT_EQ(app().model().state().count_label, "3 files found");
  preview();
  EXPECT_TRUE(app().model().state().rename_enabled);
  app().list().RemoveFiles({});
  EXPECT_TRUE(ports_.desktop.has("tooltip NOITEMSTOREMOVE"));
  app().list().RemoveFiles({0, 2});
  EXPECT_THAT(rows(), ElementsAre("b -> xb"));
  EXPECT_FALSE(app().model().state().rename_enabled);
  add({"a"});  // removed, so it can come again
  EXPECT_THAT(rows(), ElementsAre("b -> xb", "a"));
  ports_.alerts.answers = {1};
  app().list().clearFilesFolders();
  EXPECT_EQ(app().model().files().size(), 2U);
  ports_.alerts.answers = {0};  // a row was taken out
  app().list().filesFoldersOptionChanged(true);
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_TRUE(app().model().values().isIncludeSubFolders && app().model().state().shows_empty_hint);
  app().preview().actionPreview();
  EXPECT_TRUE(ports_.desktop.has("tooltip NOITEMSTOPREVIEW"));
  EXPECT_FALSE(app().list().showExport());
  app().options().select_tab(Method::from_list);
  app().list().filesFoldersOptionChanged(false);
  add({"a"});
  EXPECT_THAT(rows(), ElementsAre("a -> No Changes"));
  EXPECT_FALSE(app().model().state().preview_enabled);
}

TEST_F(Renaming, PreviewAndRenameWithALog) {
  tree_.make({"a", "b", "xb"});
  add({"a", "b"});
  insert(u"x");
  preview();
  EXPECT_THAT(rows(), ElementsAre("a -> xa", "b -> File Already Exists"));
  EXPECT_EQ(app().model().state().lastActionTimeTaken, "Preview: 0 s");
  ports_.alerts.answers = {1};
  app().renaming().actionApply();
  EXPECT_EQ(logs(), 0U);
  rename();
  EXPECT_THAT(rows(), ElementsAre("xa -> Renaming (OK)", "b -> File Already Exists"));
  EXPECT_THAT(tree_.names(), ElementsAre("b", "xa", "xb"));
  EXPECT_EQ(logs(), 1U);
  EXPECT_EQ(app().model().state().count_label, "1 file renamed in all");
  EXPECT_FALSE(app().model().state().rename_enabled);
  app().renaming().actionApply();  // off: asks nothing
}

TEST_F(Renaming, WhatIsMissingIsToldAndGetsTheFocus) {
  tree_.make({"a"});
  add({"a"});
  insert(u"");
  preview();
  EXPECT_THAT(alerts(), ElementsAre("ENTERVALIDVALUE"));
  EXPECT_TRUE(ports_.desktop.has("focus insertDeleteInsert"));
  EXPECT_THAT(rows(), ElementsAre("a"));
  app().chain().addToRule();
  EXPECT_THAT(rows(), ElementsAre("a"));
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_EQ(ports_.alerts.shown[0].title_key, "UNABLETOADDRULE");
  app().options().select_tab(Method::sequence);
  set([](RenameSettings& settings) { settings.alphaNumericIncrementBy = u"0"; });
  preview();
  EXPECT_EQ(app().model().values().alphaNumericIncrementBy, u"1");
  app().options().select_tab(Method::from_list);
  ports_.alerts.shown.clear();
  app().chain().addToRule();  // makes no rule, and says nothing
  EXPECT_THAT(app().rules_controller().rules(), IsEmpty());
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(Renaming, AChainIsPreviewedWhileItsDrawerIsOpen) {
  tree_.make({"a", "b"});
  add({"a", "b"});
  insert(u"x");
  app().chain().addToRule();
  app().options().select_tab(Method::sequence);
  app().chain().addToRule();
  app().rules_controller().setOpen(true);
  app().preview().actionPreview();
  EXPECT_THAT(rows(), ElementsAre("a", "b"));
  advance(500);
  EXPECT_THAT(rows(), ElementsAre("a -> 0", "b -> 1"));
  EXPECT_TRUE(app().model().state().isRulePreview);
  app().rules_controller().setObjectValue(u"0", "isActive", 1);
  preview();
  EXPECT_THAT(rows(), ElementsAre("a -> xa", "b -> xb"));
  rename();
  EXPECT_THAT(tree_.names(), ElementsAre("xa", "xb"));
}

TEST_F(Renaming, TheLivePreviewFollowsTyping) {
  tree_.make({"a", "b", "c"});
  add({"a", "b", "c"});
  app().preview().setLivePreviewPreferences({true, false, u"2"});
  advance(100);
  EXPECT_THAT(rows(), ElementsAre("a -> 0", "b -> 1", "c -> No New Name"));
  insert(u"x");
  advance(399);
  insert(u"xy");
  advance(399);
  EXPECT_THAT(rows(), ElementsAre("a -> 0", "b -> 1", "c -> No New Name"));
  advance(1);
  EXPECT_THAT(rows(), ElementsAre("a -> xya", "b -> xyb", "c -> No New Name"));
  insert(u"");
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("a -> No New Name", "b -> No New Name", "c -> No New Name"));
  EXPECT_THAT(alerts(), IsEmpty());
  EXPECT_FALSE(app().model().state().rename_enabled);
  app().options().select_tab(Method::prefix_suffix);  // takes over from the names of the last method
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("a -> a", "b -> b", "c -> No New Name"));
  set([](RenameSettings& settings) { settings.prefixSuffixSuffix = u"!"; });
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("a -> a!", "b -> b!", "c -> No New Name"));
  app().preview().set_new_name(2, u"d");
  app().options().select_tab(Method::general);  // but not from a name typed by hand
  set([](RenameSettings& settings) { settings.generalSwapPosition = std::nullopt; });
  EXPECT_EQ(ports_.main_thread.timers(), 0U);  // nothing was typed: a value went absent
  app().options().generalOptionsChanged(1);    // its key does not count, its button does
  advance(400);
  EXPECT_EQ(app().model().values().generalSwapPosition, u"1");
  EXPECT_EQ(ports_.main_thread.timers(), 0U);  // put in order without waking itself
  app().preview().setLivePreviewPreferences({false, false, u"2"});
  insert(u"z");
  EXPECT_EQ(ports_.main_thread.timers(), 0U);
}

TEST_F(Renaming, ALivePreviewThatChangesNothingIsNoRename) {
  tree_.make({"a", "b"});
  add({"a", "b"});
  app().options().select_tab(Method::replace_remove);
  const auto replace_a = [this](const char16_t* with) {
    set([with](RenameSettings& settings) {
      settings.replaceRemoveThis = u"a";
      settings.replaceRemoveWith = with;
    });
  };
  replace_a(u"A");
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("a -> A", "b -> b"));
  app().options().select_tab(Method::from_list);  // a list brings its own names
  EXPECT_THAT(rows(), ElementsAre("a", "b"));
  EXPECT_FALSE(app().model().state().rename_enabled);
  app().options().select_tab(Method::replace_remove);
  replace_a(u"c");
  advance(400);
  ports_.alerts.answers = {0};
  app().renaming().actionApply();
  run();
  EXPECT_THAT(rows(), ElementsAre("c -> Renaming (OK)", "b -> No Changes"));
  EXPECT_THAT(alerts(), ElementsAre("ITEMRENAMINGMESSAGEFILES"));  // and nothing that was refused
}

TEST_F(Renaming, NoLivePreviewUndoesAPreviewOrARename) {
  tree_.make({"a"});
  add({"a"});
  insert(u"x");
  preview();
  advance(1000);
  rename();
  insert(u"y");
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("xa -> yxa"));
  insert(u"z");  // typed, and the button pressed before the preview shows it: what is seen is renamed
  rename();
  advance(1000);
  EXPECT_THAT(rows(), ElementsAre("yxa -> Renaming (OK)"));
  insert(u"1");
  advance(400);
  ports_.alerts.while_shown = [this](const Alert&) {  // a question's own loop lets timers fire
    insert(u"2");
    advance(1000);
  };
  rename();
  EXPECT_THAT(tree_.names(), ElementsAre("1yxa"));
}

TEST_F(Renaming, ALongListIsPreviewedByAQuietJobThatMakesWay) {
  std::vector<std::string> names;
  for (int i = 0; i < 20'001; ++i) names.push_back("gone" + std::to_string(i));
  add(names);
  app().preview().setLivePreviewPreferences({true, true, u""});
  ports_.worker.hold = true;
  insert(u"x");
  advance(400);
  EXPECT_TRUE(app().model().state().isExecuting && app().model().state().is_quiet);
  EXPECT_EQ(app().model().state().status_label, "");
  insert(u"xy");
  ports_.worker.release();
  advance(400);
  ports_.worker.release();
  run();
  EXPECT_EQ(app().model().files().new_filename(20'000), u"xygone20000");
  insert(u"z");
  advance(400);
  app().list().RemoveFiles({0});
  EXPECT_EQ(app().model().state().item_count, 20'001U);
  ports_.worker.release();
  run();
  EXPECT_EQ(app().model().state().item_count, 20'000U);
  advance(400);  // twenty thousand are named at once, and the preview that was broken off is made again
  EXPECT_EQ(app().model().files().new_filename(19'999), u"zgone20000");
}

TEST_F(Renaming, ARenamingThatIsCancelledGoesOnLater) {
  tree_.make({"a", "b"});
  add({"a", "b"});
  insert(u"x");
  preview();
  ports_.worker.hold = true;
  rename();
  EXPECT_TRUE(app().model().state().isExecuting);
  EXPECT_FALSE(app().model().state().preview_enabled);
  app().list().RemoveFiles({0});
  app().order().sort_by_column("filename", false);
  app().jobs().cancelProcess();
  ports_.worker.release();
  run();
  EXPECT_THAT(rows(), ElementsAre("a -> xa", "b -> xb"));
  EXPECT_TRUE(app().model().state().rename_enabled);
  ports_.worker.hold = false;
  rename();
  EXPECT_THAT(tree_.names(), ElementsAre("xa", "xb"));
}

TEST_F(Renaming, WithoutALogOnlyWhenThePersonSaysSo) {
  tree_.make({"a"});
  add({"a"});
  insert(u"x");
  preview();
  Preferences preferences = app().model().preferences();
  preferences.defaultLogFolderPath = tree_ / "no such folder";
  app().preferences().setPreferences(preferences);
  ports_.alerts.answers = {0, 1};
  app().renaming().actionApply();
  run();
  EXPECT_THAT(alerts(), ElementsAre("ITEMRENAMINGMESSAGEFILES", "LOGCREATEFAILED"));
  EXPECT_THAT(tree_.names(), ElementsAre("a"));
  EXPECT_TRUE(app().model().state().rename_enabled);
  ports_.alerts.answers = {0, 0};
  app().renaming().actionApply();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("xa"));
}

TEST_F(Renaming, FromAList) {
  tree_.make({"a", "b", "old"});
  std::ofstream(tree_ / "list.txt") << "a\tA2\t" << tree_.path() << "\nb\t\t" << tree_.path() << "\nnone\tn\t"
                                    << tree_.path() << "\n";
  std::ofstream(tree_ / "empty.txt") << "nothing\n";
  app().options().select_tab(Method::from_list);
  app().list().loadRenameFile(false);
  run();
  ports_.chooser.open_answers = {{tree_ / "empty.txt"}, {tree_ / "list.txt"}};
  app().list().browseRenameFile();
  app().list().loadRenameFile(false);
  run();
  EXPECT_THAT(alerts(), ElementsAre("UNABLETOOPENFILE", "RENAMEFROMFILEMESSAGE"));
  EXPECT_FALSE(app().model().values().renameFile);
  add({"old"});
  app().list().browseRenameFile();
  ports_.alerts.answers = {0};
  app().list().loadRenameFile(false);
  run();
  advance(400);
  EXPECT_THAT(rows(), ElementsAre("a -> A2", "b -> No Changes", "none -> File Not Found"));
  EXPECT_FALSE(app().model().state().preview_enabled);
  rename();
  EXPECT_THAT(tree_.names(), ElementsAre("A2", "b", "empty.txt", "list.txt", "old"));
  app().options().select_tab(Method::sequence);
  EXPECT_FALSE(app().model().values().renameFile);
}

TEST_F(Renaming, NamesTypedByHandAreChecked) {
  tree_.make({"a", "taken", "gone"});
  add({"a", "gone"});
  std::filesystem::remove(tree_ / "gone");
  struct Case {
    std::size_t row;
    std::u16string typed;
    std::string shown;
  };
  const std::vector<Case> cases = {{0, u"1/2", "a -> 1:2"},
                                   {0, u"taken", "a -> File Already Exists"},
                                   {0, u"A", "a -> A"},
                                   {0, u"a", "a -> No Changes"},
                                   {0, u"", "a -> No Changes"},
                                   {0, u"..", "a -> No Changes"},
                                   {0, u"Renaming (OK)", "a -> No Changes"},
                                   {0, std::u16string(300, u'n'), "a -> No Changes"},
                                   {1, u"new", "gone -> File Not Found"}};
  for (const Case& each : cases) {
    app().preview().set_new_name(each.row, each.typed);
    EXPECT_EQ(rows()[each.row], each.shown);
    EXPECT_EQ(app().model().state().rename_enabled, each.shown.ends_with("-> A") || each.shown.ends_with(":2"));
  }
  EXPECT_FALSE(app().model().files().reason(0).empty());
  app().preview().set_new_name(0, u"1/2");
  rename();
  EXPECT_THAT(tree_.names(), ElementsAre("1:2", "taken"));
}

TEST_F(Renaming, OrderByColumnsAndByHand) {
  tree_.make({"z/b10.txt", "z/B9.txt", "a/b10.txt", "a/c.jpg"});
  add({"z/b10.txt", "z/B9.txt", "a/b10.txt", "a/c.jpg"});
  const auto order = [this] {
    std::string names;
    for (std::size_t row = 0; row < 4; ++row)
      names += app().model().files().path(row).substr(tree_.path().size() + 1) + " ";
    return names;
  };
  struct Case {
    const char* column;
    bool ascending;
    const char* order;
  };
  for (const Case& each : std::vector<Case>{{"filenameWithExtension", true, "z/B9.txt z/b10.txt a/b10.txt a/c.jpg "},
                                            {"fileLocation", true, "a/b10.txt a/c.jpg z/B9.txt z/b10.txt "},
                                            {"filenameWithExtension", false, "a/c.jpg a/b10.txt z/b10.txt z/B9.txt "},
                                            {"fileExtension", true, "a/c.jpg a/b10.txt z/b10.txt z/B9.txt "},
                                            {"dimensions", false, "a/c.jpg a/b10.txt z/b10.txt z/B9.txt "},
                                            {"no column", true, "a/c.jpg a/b10.txt z/b10.txt z/B9.txt "},
                                            {"fileWithPath", true, "a/b10.txt a/c.jpg z/B9.txt z/b10.txt "}}) {
    app().order().sort_by_column(each.column, each.ascending);
    run();
    EXPECT_EQ(order(), each.order) << each.column;
  }
  EXPECT_EQ(app().model().sorting().column, "fileWithPath");
  const auto chosen = [this] { return app().model().files().chosen().rows; };
  app().order().follow_rows({{0, 3}, 3});
  app().order().move_rows_up({0, 3});
  EXPECT_EQ(chosen(), RowSet({0, 2}));
  EXPECT_EQ(app().model().files().chosen().current, 2);
  EXPECT_EQ(order(), "a/b10.txt a/c.jpg z/b10.txt z/B9.txt ");
  EXPECT_EQ(app().model().sorting().column, "");
  app().order().follow_rows({{0, 3}, {}});
  app().order().move_rows_down({0, 3});
  EXPECT_EQ(chosen(), RowSet({1, 3}));
  EXPECT_EQ(order(), "a/c.jpg a/b10.txt z/b10.txt z/B9.txt ");
  app().order().follow_rows({{0, 3}, {}});
  app().order().move_rows({0, 3}, 2);
  EXPECT_EQ(chosen(), RowSet({1, 2}));
  EXPECT_EQ(order(), "a/b10.txt a/c.jpg z/B9.txt z/b10.txt ");
  app().order().move_rows({1}, 99);
  EXPECT_EQ(chosen(), RowSet({1, 3}));
}

TEST_F(Renaming, ChoicesAndTheirFlagsGoTogether) {
  app().options().insertOptionChanged(4);
  app().options().dateTimeDateTypeChanged(2);
  app().options().dateTimeOptionsChanged(2);
  app().options().generalOptionsChanged(11);
  app().options().pathComponentsOptionsChanged(1);
  app().options().alphaNumericIncrementDecrementChanged(true);
  app().options().alphaNumericNumericAlphabeticChanged(true);
  app().options().prefixSuffixChanged(true);
  app().options().replaceRemoveChanged(RuleVariant::remove_characters);
  app().options().replaceRemoveRemoveTypeChanged(1);
  const RenameSettings& s = app().model().values();
  EXPECT_TRUE(s.isInsertDeleteInsertAtAfterText && !s.isInsertDeleteInsertAtBeginning);
  EXPECT_TRUE(s.hasDateTimeCustomDate && s.isDateTimeAtPosition && !s.isDateTimeAtBeginning);
  EXPECT_TRUE(s.isGeneralConvertWindowsCompatible && !s.isGeneralConvertFilenameCase && s.generalOptionsIndex == 11);
  EXPECT_TRUE(s.isPathComponentsAtEnd && !s.isPathComponentsAtBeginning);
  EXPECT_TRUE(s.isAlphaNumericDecrement && !s.isAlphaNumericIncrement && s.alphaNumericIncrementDecrementIndex == 1);
  EXPECT_TRUE(s.isAlphaNumericAlphabetic && !s.isAlphaNumericNumeric && s.alphaNumericNumericAlphabeticIndex == 1);
  EXPECT_TRUE(s.isPrefixSuffixDate && !s.isPrefixSuffixString && s.prefixSuffixIndex == 1);
  EXPECT_TRUE(s.isReplaceRemoveRemoveCharacters && !s.isReplaceRemoveReplace && !s.isReplaceRemoveRemove);
  EXPECT_TRUE(s.removeReplaceIndex == 2 && s.replaceRemoveRemoveType == 1 && s.selectedTab == 0);
  app().options().replaceRemoveChanged(RuleVariant::remove);
  EXPECT_TRUE(s.isReplaceRemoveRemove && !s.isReplaceRemoveRemoveCharacters);

  set([](RenameSettings& settings) {
    settings.isID3RenamingSeperator = true;
    settings.id3RenamingSeperator = u"-";
  });
  app().options().id3RenamingMaskActions(u"<Artist>");
  app().options().id3RenamingMaskActions(u"<Title>");
  EXPECT_EQ(s.id3RenamingMask, u"<Artist>-<Title>");
  set([](RenameSettings& settings) { settings.id3RenamingSeperator = u"_"; });
  EXPECT_EQ(s.id3RenamingMask, u"<Artist>_<Title>");
  app().options().id3RenamingMaskRemoveLast();
  EXPECT_EQ(s.id3RenamingMask, u"<Artist>");
}

TEST_F(Renaming, AJobThatFailsIsToldAndLeavesEverythingUsable) {
  bool finished = false;
  app().jobs().run_job({.job = Job::exporting,
                        .work = [](const JobControl&) { throw std::runtime_error("no room"); },
                        .finished = [&] { finished = true; }});
  run();
  EXPECT_TRUE(finished);
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_EQ(ports_.alerts.shown[0].informative_text, "no room");
  EXPECT_FALSE(app().model().state().isExecuting);
  tree_.make({"a"});
  add({"a"});
  EXPECT_EQ(app().model().files().size(), 1U);
}

class WithThreads : public ControllerTest {};

TEST_F(WithThreads, ThreadsLoadPreviewAndRenameWhileTheQueueStaysShort) {
  start(ports_.threaded_ports());
  std::vector<std::string> names;
  for (int i = 0; i < 300; ++i) names.push_back("d/" + std::to_string(i));
  tree_.make(names);
  const auto settle = [this] { ports_.main_thread.run_until([this] { return !app().model().state().isExecuting; }); };
  app().list().loadFiles({tree_ / "d"});
  app().options().select_tab(Method::insert_delete);  // typing goes on while a job runs
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"x"; });
  settle();
  EXPECT_EQ(app().model().state().count_label, "300 files found");
  app().preview().actionPreview();
  settle();
  ports_.alerts.answers = {0};
  app().renaming().actionApply();
  EXPECT_TRUE(app().model().state().isExecuting);
  settle();
  EXPECT_EQ(app().model().state().count_label, "300 files renamed in all");
  EXPECT_TRUE(std::filesystem::exists(tree_ / "d/x299"));

  // A job that reports all the time: one call waits, whatever the view's pace.
  bool finished = false;
  const auto report = [](const JobControl& control) {
    for (std::size_t i = 0; i < 100'000 && !control.cancelled(); ++i) control.progress->report({i, 100'000, "/p"});
  };
  app().jobs().run_job({.job = Job::undo, .work = report, .finished = [&finished] { finished = true; }});
  app().jobs().cancelProcess();
  settle();
  EXPECT_TRUE(finished);
  EXPECT_LE(ports_.main_thread.most_queued(), 3U);
}

}  // namespace
}  // namespace brindle::test
