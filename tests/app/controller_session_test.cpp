// Start, quit and start again; profiles, rules and documents.

#include <filesystem>

#include "app/chain_controller.h"
#include "app/controller_support.h"
#include "app/documents_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preferences_controller.h"
#include "app/preview_controller.h"
#include "app/profiles_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "methods/rule_file.h"
#include "run/run_log.h"
#include "settings/profile_file.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Session : public ControllerTest {
 protected:
  std::string write_profile(const std::string& name, const std::function<void(RenameSettings&)>& edit) {
    RenameSettings settings;
    edit(settings);
    const std::string path = home_.data() + "/Profiles/" + name;
    EXPECT_EQ(write_profile_file(path, getCurrentSettings(settings)).reason(), "");
    return path;
  }
  std::u16string text_in(const std::string& profile) {
    const Result<SettingsRecord> record = read_profile_file(profile);
    EXPECT_EQ(record.reason(), "");
    RenameSettings settings;
    setSettings(settings, *record);
    return *settings.insertDeleteInsert;
  }
};

TEST_F(Session, TheFirstStartMakesFoldersAndPreferences) {
  start();
  for (const char* name : {"/Logs", "/Profiles", "/Rules", "/preferences.plist"}) {
    EXPECT_TRUE(std::filesystem::exists(home_.data() + name)) << name;
  }
  EXPECT_TRUE(app().model().state().shows_empty_hint);
  EXPECT_FALSE(app().model().state().preview_enabled || app().model().state().rename_enabled);
  EXPECT_EQ(app().model().values().dateTimeCustomDate, ports_.main_thread.date());
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(Session, AFolderThatCannotBeMadeEndsTheProgram) {
  home_.make({"data"});  // a file
  app_.emplace(ports_.ports(), ports_.clock());
  EXPECT_FALSE(app().start());
  EXPECT_THAT(alerts(), ElementsAre("APPLICATIONCREATEFOLDERFAILED"));
  EXPECT_TRUE(ports_.desktop.has_quit);
}

TEST_F(Session, ComesBackAsItWasLeft) {
  start();
  tree_.make({"folder/a"});
  ports_.chooser.open_answers = {{tree_ / "folder"}};
  app().list().addFolderAction();
  run();
  app().options().select_tab(Method::insert_delete);
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"x\u00e9"; });
  app().chain().addToRule();
  app().options().select_tab(Method::general);
  app().options().generalOptionsChanged(10);
  app().preferences().setIncludeHidden(true);
  app().preview().setLivePreviewPreferences({false, true, u"3"});
  // A word still being typed belongs to it.
  ports_.desktop.on_end_editing = [this] {
    set([](RenameSettings& settings) { settings.generalFilenameMask = u"***"; });
  };
  RenameSettings expected = app().model().values();
  expected.generalFilenameMask = u"***";
  restart();
  EXPECT_THAT(rows(), IsEmpty());
  expected.dateTimeCustomDate = app().model().values().dateTimeCustomDate;
  EXPECT_EQ(app().model().values(), expected);
  ASSERT_EQ(app().rules_controller().rules().size(), 1U);
  EXPECT_EQ(app().rules_controller().rules()[0].settings.insertDeleteInsert, u"x\u00e9");
  ASSERT_EQ(app().model().recentItems().size(), 1U);
  EXPECT_EQ(app().model().recentItems()[0].itemPath, tree_ / "folder");
  EXPECT_TRUE(app().model().include_hidden());
  EXPECT_FALSE(app().model().live_preview().isLivePreviewEnabled);
  EXPECT_EQ(app().model().live_preview().livePreviewFilesLimit, u"3");
}

TEST_F(Session, AnOpenProfileIsOpenedAgainAndABrokenOneIsLeftAlone) {
  start();
  const std::string path = write_profile("p\xff.brprofile", [](RenameSettings& s) { s.insertDeleteInsert = u"in p"; });
  app().profiles().setCurrentSettings(path);
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"of the window"; });
  restart();
  EXPECT_EQ(app().profiles().currProfileFile(), path);
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"in p");

  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"of the window"; });
  Preferences preferences = app().model().preferences();
  preferences.automaticSaveCurrProfile = true;
  app().preferences().setPreferences(preferences);
  ASSERT_TRUE(app().applicationShouldTerminate());
  EXPECT_EQ(text_in(path), u"of the window");

  std::ofstream(path) << "no profile";
  start();
  EXPECT_THAT(alerts(), ElementsAre("PROFILELOADFAILED"));
  EXPECT_EQ(app().profiles().currProfileFile(), "");
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"of the window");
  ASSERT_TRUE(app().applicationShouldTerminate());
  EXPECT_EQ(std::filesystem::file_size(path), 10U);
}

TEST_F(Session, AChainThatCannotBeReadIsDropped) {
  UserDefaults defaults;
  defaults.set(user_default::last_rule, PropertyValue::Data{1, 2, 3});
  ASSERT_EQ(defaults.flush().reason(), "");
  start();
  EXPECT_THAT(app().rules_controller().rules(), IsEmpty());
  EXPECT_EQ(UserDefaults().find(user_default::last_rule), nullptr);
}

TEST_F(Session, AnInterruptedRunIsFinishedAndToldOnce) {
  start();
  const std::string logs = app().model().preferences().defaultLogFolderPath;
  tree_.make({"b"});
  {
    // What is left of a run that was killed behind its only rename, a -> b.
    FileList files;
    JournalWriter journal;
    RenameLogWriter log;
    ASSERT_EQ(begin_run_log(logs, 1'700'000'000, {false, false, "4"}, journal, log).reason(), "");
    journal.add_folder(1, tree_.path());
    journal.add(1, "a", "b", tree_.inodes().at("b"));
    ASSERT_EQ(journal.seal().reason(), "");
    journal.mark(0, JournalMark::begun);
  }
  start();
  ports_.alerts.answers = {0};
  EXPECT_TRUE(app().tell_interrupted_runs()) << "the logs are wanted";
  EXPECT_THAT(alerts(), ElementsAre("INTERRUPTEDRUNFINISHED"));
  start();
  EXPECT_FALSE(app().tell_interrupted_runs());
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(Session, ProfilesAreSavedUnderTheirNameOrANewOne) {
  start();
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"one"; });
  const std::string path = tree_ / "new.brprofile";
  ports_.chooser.save_answers = {path};
  EXPECT_TRUE(app().profiles().saveProfile());  // none is open: asks for a name
  EXPECT_EQ(app().profiles().window_title(), "Brindle - new.brprofile");
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"two"; });
  EXPECT_TRUE(app().profiles().saveProfile());
  EXPECT_EQ(text_in(path), u"two");
  EXPECT_FALSE(app().profiles().saveAsProfile());  // cancelled

  app().profiles().loadEmptyProfile();
  EXPECT_EQ(app().profiles().currProfileFile(), "");
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"");
  ports_.chooser.save_answers = {tree_ / "no/such/folder.brprofile"};
  EXPECT_FALSE(app().profiles().saveAsProfile());
  EXPECT_THAT(alerts(), ElementsAre("PROFILESAVEDFAILED"));
  EXPECT_EQ(app().profiles().currProfileFile(), "");
}

TEST_F(Session, AProfileForFoldersEmptiesAListOfFilesWhenThePersonAgrees) {
  start();
  tree_.make({"a", "b"});
  add({"a", "b"});
  const std::string folders = write_profile("f.brprofile", [](RenameSettings& s) {
    s.isFiles = false;
    s.isFolders = true;
    s.selectedTab = 9;
  });
  ports_.alerts.answers = {0};
  app().profiles().setCurrentSettings(folders);
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_THAT(alerts(), ElementsAre("Are you sure to remove all file(s)/folder(s)?"));
  EXPECT_FALSE(app().model().state().preview_enabled);
  app().profiles().setCurrentSettings(folders);  // the same kind: nothing to ask
  EXPECT_FALSE(app().rules_controller().enabled().addButton);
}

TEST_F(Session, DocumentsAreOpenedAndFilesListedAfterAWhile) {
  start();
  RenameSettings settings;
  settings.selectedTab = 3;
  settings.prefixSuffixPrefix = u"p";
  Rule rule = std::get<Rule>(getRule(settings));
  rule.rule = u"Rule - PrefixSuffix";
  const std::string rules = tree_ / "r.BRRULE";
  ASSERT_EQ(write_rule_file(rules, std::vector<Rule>{rule}).reason(), "");
  const auto chain = [this] { return app().rules_controller().rules().size(); };
  EXPECT_EQ(app().documents().openFiles({rules}), DocumentsController::OpenReply::success);
  ASSERT_EQ(chain(), 1U);
  EXPECT_EQ(app().rules_controller().rules()[0].rule, u"PrefixSuffix");
  EXPECT_TRUE(app().rules_controller().isOpen());
  EXPECT_EQ(app().model().values().selectedTab, 3);  // the selected rule is shown
  ASSERT_EQ(write_rule_file(rules, std::vector<Rule>{rule, rule}).reason(), "");
  ports_.alerts.answers = {1, 0};
  app().documents().openFiles({rules});
  EXPECT_EQ(chain(), 1U);
  app().documents().openFiles({rules});
  EXPECT_EQ(chain(), 2U);

  const std::string first = write_profile("first.brprofile", [](RenameSettings& s) { s.insertDeleteInsert = u"1"; });
  const std::string second = write_profile("second.brProfile", [](RenameSettings& s) { s.insertDeleteInsert = u"2"; });
  app().documents().openFiles({first});
  ports_.alerts.answers = {1, 0};
  app().documents().openFiles({second});
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"1");
  app().documents().openFiles({second});
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"2");

  tree_.make({"a", "b", "c"});
  EXPECT_EQ(app().documents().openFiles({}), DocumentsController::OpenReply::failure);
  app().documents().openFiles({tree_ / "a"});
  advance(300);
  app().documents().openFiles({tree_ / "b", tree_ / "c"});
  advance(499);
  EXPECT_THAT(rows(), IsEmpty());
  advance(1);
  EXPECT_THAT(rows(), ElementsAre("b", "c"));
  ports_.worker.hold = true;
  app().preview().actionPreviewRule();
  EXPECT_EQ(app().documents().openFiles({tree_ / "a"}), DocumentsController::OpenReply::cancelled);
  EXPECT_FALSE(app().applicationShouldTerminate());
  ports_.worker.release();
  run();
  EXPECT_TRUE(app().applicationShouldTerminate());
}

TEST_F(Session, AFixedDateThatIsNotTakenOverIsTold) {
  start();
  const auto dated = [this](const char* name, std::int32_t tab, std::int32_t source) {
    return write_profile(name, [=](RenameSettings& settings) {
      settings.selectedTab = tab;
      settings.dateTimeDateOptionIndex = source;
      settings.dateTimeCustomDate = Date(std::chrono::hours(24 * 400));
    });
  };
  app().profiles().setCurrentSettings(dated("modified.brprofile", 4, 1));
  app().profiles().setCurrentSettings(dated("other.brprofile", 1, 2));
  EXPECT_THAT(alerts(), IsEmpty());
  app().profiles().setCurrentSettings(dated("fixed.brprofile", 4, 2));
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_THAT(ports_.alerts.shown[0].message, ::testing::HasSubstr("05/02/1971"));
  EXPECT_THAT(alerts(), ElementsAre("DATELEFTOUT"));
  EXPECT_TRUE(app().profiles().saveProfile());  // with the date of the window
  app().profiles().setCurrentSettings(app().profiles().currProfileFile());
  EXPECT_THAT(alerts(), IsEmpty());
}

// Whoever hands paths over has been told that all is well, and does it once.
TEST_F(Session, WhatComesDuringAJobIsListedAfterIt) {
  start();
  tree_.make({"first", "drop", "bus", "pieces/one", "clip", "late", "sheet"});
  const std::string profile = write_profile("p.brprofile", [](RenameSettings& s) { s.insertDeleteInsert = u"of p"; });
  ports_.desktop.clipboard = {tree_ / "clip"};
  app().documents().openFiles({tree_ / "late"});
  ports_.worker.hold = true;
  add({"first"});
  ASSERT_TRUE(app().model().state().isExecuting);
  add({"drop"});
  app().documents().openFilesInTurn({tree_ / "bus"});
  app().documents().openFilesInTurn({tree_ / "pieces/one"});
  app().documents().openFilesInTurn({profile});
  app().list().addFilesFoldersFromFinder();
  advance(500);
  app().list().PasteboardItemsControllerDidFinish(false, false, {tree_ / "sheet"});
  EXPECT_TRUE(ports_.desktop.has("tooltip LOADWAITS"));
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"");
  ports_.worker.hold = false;
  ports_.worker.release();
  run();
  EXPECT_THAT(rows(), ElementsAre("first", "drop", "bus", "one", "clip", "late", "sheet"));
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"of p");
}

// A list of folders, asked about while the next paths come.
TEST_F(Session, WhatComesDuringAQuestionIsListedToo) {
  start();
  tree_.make({"d/", "a", "b"});
  app().list().filesFoldersOptionChanged(true);
  app().list().setIncludeSubFolders(false);
  add({"d"});
  ports_.alerts.answers = {0, 0};
  ports_.alerts.while_shown = [this](const Alert&) {
    ports_.alerts.while_shown = nullptr;
    app().list().loadFiles({tree_ / "b"});
  };
  app().list().loadFiles({tree_ / "a"});
  run();
  EXPECT_THAT(rows(), ElementsAre("b", "a"));
  EXPECT_TRUE(app().model().values().isFiles);
}

TEST_F(Session, TheRulesMenuListsTheFolder) {
  start();
  const std::string folder = app().model().preferences().defaultRulesFolderPath;
  for (const char* name : {"/b.brrule", "/a.BrRule"}) {
    ASSERT_EQ(write_rule_file(folder + name, std::vector<Rule>(2)).reason(), "");
  }
  std::ofstream(folder + "/other.txt");
  const auto items = app().chain().loadRulesMenu();
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0].title, "a");
  app().chain().ruleMenuItemClick(items[1].file);
  EXPECT_EQ(app().rules_controller().rules().size(), 2U);
  EXPECT_TRUE(ports_.desktop.has("front"));
}

}  // namespace
}  // namespace brindle::test
