// Undo and export, from the sheet to the disk.

#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/controller_support.h"
#include "app/export_sheet_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preview_controller.h"
#include "app/renaming_controller.h"
#include "app/undo_sheet_controller.h"
#include "app/window_model.h"
#include "metadata/metadata_catalogue.h"
#include "platform/data_folders.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class UndoSheet : public ControllerTest {
 protected:
  UndoSheet() { start(); }

  /// Renames files by putting a text before their names, each in a run of its own; keeps the log's name.
  void rename(const std::vector<std::string>& names) {
    tree_.make(names);
    app().list().filesFoldersOptionChanged(false);
    add(names);
    app().options().select_tab(Method::insert_delete);
    set([](RenameSettings& settings) { settings.insertDeleteInsert = u"x"; });
    app().preview().actionPreview();
    advance(500);
    ports_.alerts.answers = {0};
    app().renaming().actionApply();
    run();
    alerts();
  }
  std::vector<std::string> logs() const {
    std::vector<std::string> names;
    for (const LogRecord& record : loadUserLogFiles(default_log_folder())) names.push_back(record.logFileName);
    return names;
  }
  void write_log(const std::string& name, std::string_view content) const {
    std::ofstream(default_log_folder() + "/" + name) << content;
  }
};

TEST_F(UndoSheet, UndoesTheSelectedLogAndTellsWhatItCouldNot) {
  rename({"a", "b", "c"});
  std::filesystem::remove(tree_ / "xb");
  tree_.make({"c"});  // its old name is taken
  UndoSheetController sheet(app());
  EXPECT_EQ(sheet.logs_label(), "Logs: 1");
  sheet.undoRenaming();
  EXPECT_THAT(alerts(), ElementsAre("UNDOFILESFOLDERSNOLOGSELECTED"));
  sheet.tableViewSelectionDidChange(0);
  EXPECT_EQ(sheet.totalFilesCanBeUndoFromLog(), 3U);
  EXPECT_THAT(sheet.status_label(), HasSubstr("3"));
  ports_.worker.hold = true;
  sheet.undoRenaming();
  EXPECT_TRUE(sheet.isUndoing());
  EXPECT_FALSE(sheet.sheetClosed()) << "not while names are being restored";
  ports_.worker.hold = false;
  ports_.worker.release();
  advance(2000);
  EXPECT_FALSE(sheet.isUndoing());
  EXPECT_THAT(tree_.names(), ElementsAre("a", "c", "xc"));
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_THAT(ports_.alerts.shown[0].message, HasSubstr("3"));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("/xc”: another file has its old name"));
  EXPECT_THAT(app().model().state().lastActionTimeTaken, HasSubstr("Undo"));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("The log stays"));
  EXPECT_THAT(logs(), SizeIs(1)) << "what was left alone can be tried again";
  std::filesystem::remove(tree_ / "c");
  std::filesystem::rename(tree_ / "a", tree_ / "xb");
  alerts();
  sheet.undoRenaming();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("b", "c"));
  EXPECT_THAT(sheet.logFiles(), IsEmpty());
  EXPECT_TRUE(sheet.sheetClosed());
}

TEST_F(UndoSheet, WhatWasUndoneLastIsDoneAgainAfterAQuestion) {
  app().renaming().redo();
  EXPECT_THAT(alerts(), ElementsAre("REDONOTHING"));
  rename({"a", "b", "c"});
  UndoSheetController sheet(app());
  sheet.tableViewSelectionDidChange(0);
  sheet.undoRenaming();
  run();
  alerts();
  ports_.alerts.answers = {1};
  app().renaming().redo();
  run();
  EXPECT_THAT(alerts(), ElementsAre("REDOMESSAGEFILES"));
  EXPECT_THAT(tree_.names(), ElementsAre("a", "b", "c"));
  tree_.make({"xb"});
  ports_.alerts.answers = {0};
  sheet.redo();
  run();
  ASSERT_THAT(ports_.alerts.shown, SizeIs(2));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("2 new names"));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("/b”: "));
  EXPECT_THAT(ports_.alerts.shown[1].message, HasSubstr("Its log stays"));
  alerts();
  EXPECT_THAT(tree_.names(), ElementsAre("b", "xa", "xb", "xc"));
  EXPECT_THAT(rows(), ElementsAre("xa", "b", "xc")) << "the list of the window follows";
  EXPECT_FALSE(sheet.isUndoing());
  EXPECT_THAT(sheet.logFiles(), SizeIs(1)) << "the new log";
  std::filesystem::remove(tree_ / "xb");
  ports_.alerts.answers = {0};
  app().renaming().redo();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("xa", "xb", "xc"));
  EXPECT_THAT(alerts(), ElementsAre("REDOMESSAGEFILES")) << "all of it: the log has gone without a word";
  app().renaming().redo();
  EXPECT_THAT(alerts(), ElementsAre("REDONOTHING"));
}

TEST_F(UndoSheet, TheListFollows) {
  rename({"a", "b"});
  EXPECT_THAT(rows(), ElementsAre("xa -> Renaming (OK)", "xb -> Renaming (OK)"));
  UndoSheetController sheet(app());
  sheet.tableViewSelectionDidChange(0);
  sheet.undoRenaming();
  run();
  EXPECT_THAT(rows(), ElementsAre("a", "b"));
  EXPECT_EQ(app().model().state().count_label, "2 items restored");
  ASSERT_THAT(ports_.alerts.shown, SizeIs(1));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("Logs/Undone/Log "));
  EXPECT_THAT(sheet.logFiles(), IsEmpty());
  EXPECT_EQ(sheet.currLogFilePath(), "");
  rename({});  // and can be renamed anew
  EXPECT_THAT(tree_.names(), ElementsAre("xa", "xb"));
}

TEST_F(UndoSheet, ACancelledUndoKeepsItsLog) {
  rename({"a"});
  UndoSheetController sheet(app());
  sheet.tableViewSelectionDidChange(0);
  ports_.worker.hold = true;
  sheet.undoRenaming();
  sheet.cancel();
  ports_.worker.hold = false;
  ports_.worker.release();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("xa"));
  ASSERT_THAT(ports_.alerts.shown, SizeIs(1));
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("Cancelled before 1 of the 1 items"));
  EXPECT_EQ(logs().size(), 1U);
  sheet.undoRenaming();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("a"));
}

TEST_F(UndoSheet, TheLivePreviewMakesWay) {
  rename({"a.jpg"});
  app().options().setPhotoMetaDataList({*find_field(u"<EXIF_Date>")});
  app().options().select_tab(Method::photo);
  ports_.worker.hold = true;
  set([](RenameSettings& settings) { settings.insertDeleteInsert = u"y"; });
  advance(500);
  ASSERT_TRUE(app().model().state().is_quiet);
  UndoSheetController sheet(app());
  sheet.tableViewSelectionDidChange(0);
  sheet.undoRenaming();
  EXPECT_FALSE(sheet.isUndoing());
  ports_.worker.hold = false;
  ports_.worker.release();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("a.jpg"));
  EXPECT_FALSE(ports_.desktop.has("beep"));
}

TEST_F(UndoSheet, AFileFromAnywhereIsCheckedFirst) {
  rename({"a"});
  const std::string elsewhere = home_ / "elsewhere.xml";
  std::filesystem::rename(default_log_folder() + "/" + logs()[0], elsewhere);
  std::ofstream(home_ / "other.xml") << "<files><item/></files>";
  UndoSheetController sheet(app());
  ports_.chooser.open_answers = {{home_ / "other.xml"}, {elsewhere}};
  sheet.openLogFile();
  run();
  EXPECT_THAT(alerts(), ElementsAre("UNDOFILESFOLDERSINVALIDFILE"));
  sheet.openLogFile();
  run();
  EXPECT_EQ(sheet.totalFilesCanBeUndoFromLog(), 1U);
  sheet.undoRenaming();
  run();
  EXPECT_THAT(tree_.names(), ElementsAre("a"));
  EXPECT_FALSE(std::filesystem::exists(elsewhere));
}

TEST_F(UndoSheet, LogsThatHoldNothingGoToTheTrash) {
  write_log("Log 15-11-2026 03-17-45-2.xml", "no log at all");
  write_log("Log without a number.xml", "<files/>");
  UndoSheetController sheet(app());
  sheet.sortDescriptorsDidChange("filesCount", false);
  EXPECT_EQ(sheet.objectValue("filesCount", 0), "2");
  sheet.tableViewSelectionDidChange(0);
  sheet.viewLogFileContent();
  EXPECT_TRUE(ports_.desktop.has("open " + sheet.currLogFilePath()));
  sheet.undoRenaming();
  run();
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("cannot be read"));
  EXPECT_THAT(logs(), ElementsAre("Log without a number.xml"));
  EXPECT_EQ(sheet.selected_row(), 0U) << "the next one follows";
  sheet.undoRenaming();
  EXPECT_THAT(logs(), IsEmpty());
  EXPECT_EQ(sheet.selected_row(), std::nullopt);
  const auto trashed = std::filesystem::directory_iterator(home_ / "data/Trash/files");
  EXPECT_EQ(std::distance(begin(trashed), end(trashed)), 2);
}

TEST_F(UndoSheet, DeletesALogWhenThatIsWanted) {
  for (const char* name : {"a 1-1.xml", "b 1-2.xml"}) write_log(name, "<files/>");
  UndoSheetController sheet(app());
  sheet.deleteLogFile();
  sheet.viewLogFileContent();
  EXPECT_THAT(alerts(), ElementsAre("UNDOFILESFOLDERSNOLOGSELECTED", "VIEWLOGFILETITLEMESSAGE"));
  sheet.tableViewSelectionDidChange(1);
  ports_.alerts.answers = {1, 0};
  sheet.deleteLogFile();
  EXPECT_EQ(logs().size(), 2U);
  sheet.deleteLogFile();
  EXPECT_EQ(logs().size(), 1U);
  EXPECT_EQ(sheet.selected_row(), 0U) << "the last one left";
  EXPECT_EQ(sheet.currLogFilePath(), default_log_folder() + "/" + logs()[0]);
}

class ExportSheet : public UndoSheet {
 protected:
  /// The Export button, and the second that follows.
  void press(ExportSheetController& sheet) {
    sheet.start_export();
    EXPECT_TRUE(sheet.isExporting());
    EXPECT_FALSE(sheet.sheetClosed());
    advance(1000);
    EXPECT_FALSE(sheet.isExporting());
  }
  std::string content(const std::string& path) const {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_F(ExportSheet, WritesTheColumnsThatAreWanted) {
  tree_.make({"a"});
  add({"a"});
  ExportSheetController sheet(app());
  press(sheet);  // the panel is cancelled
  EXPECT_THAT(alerts(), IsEmpty());
  ports_.chooser.save_answers = {tree_ / "list.txt", tree_ / "none/list.txt"};
  press(sheet);
  EXPECT_EQ(content(tree_ / "list.txt"), "Filename\tNew Filename\tLocation\na\t\t" + tree_.path() + "\n");
  press(sheet);
  ASSERT_EQ(ports_.alerts.shown.size(), 2U);
  EXPECT_THAT(ports_.alerts.shown[1].informative_text, HasSubstr("none/list.txt"));
  EXPECT_THAT(alerts(), ElementsAre("EXPORTFILESEXPORTEDSUCCESS", "EXPORTFILESEXPORTEDFAILED"));

  sheet.setOptions({.isFilename = false, .isNewFilename = false, .isIncludeLocation = true});
  press(sheet);
  sheet.setOptions({.isFilename = false, .isNewFilename = false, .isLocation = false});
  press(sheet);
  EXPECT_THAT(alerts(), ElementsAre("EXPORTFILESFAILED", "EXPORTNOCOLUMN"));
  EXPECT_EQ(ports_.chooser.saved.size(), 3U);
  EXPECT_TRUE(sheet.sheetClosed());
}

TEST_F(ExportSheet, CanBeCalledOffBeforeItBegins) {
  {
    ExportSheetController sheet(app());
    sheet.start_export();
    sheet.cancel();
    EXPECT_FALSE(sheet.isExporting());
    sheet.start_export();
  }  // and a sheet that has gone is not called back
  advance(2000);
  EXPECT_THAT(ports_.chooser.saved, IsEmpty());
}

}  // namespace
}  // namespace brindle::test
