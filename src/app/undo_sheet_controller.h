#pragma once

// The undo sheet: the logs of the log folder, or one from anywhere, to be looked at, undone and deleted. Main thread;
// reading and undoing a log are jobs of the main controller, whose state shows their progress.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/sheet_controller.h"
#include "log/rename_log.h"

namespace brindle {

class RenamingController;

class UndoSheetController final : public SheetController {
 public:
  /// Finishes the logs of interrupted runs, then lists the folder's.
  explicit UndoSheetController(BrindleAppController& app);

  const std::vector<LogRecord>& logFiles() const { return logFiles_; }
  std::optional<std::size_t> selected_row() const { return selected_; }
  /// Selects a log of the list; its count is taken from its name. No row changes nothing but the row.
  void tableViewSelectionDidChange(std::optional<std::size_t> row);
  /// What a column ("logFileName", "dateCreated", "filesCount") says of a row; UTF-8, "" for other columns.
  std::string objectValue(std::string_view column, std::size_t row) const;
  /// The selection stays on its log.
  void sortDescriptorsDidChange(std::string_view column, bool ascending);

  const std::string& currLogFilePath() const { return currLogFilePath_; }  ///< "" when none is selected
  std::size_t totalFilesCanBeUndoFromLog() const { return totalFilesCanBeUndoFromLog_; }
  bool isUndoing() const { return isUndoing_; }  ///< a log is being read, undone or done again
  const std::string& status_label() const { return status_label_; }
  std::string logs_label() const;  ///< how many logs there are

  static std::string defaultLogFolderPath();
  void loadUserLogFiles();
  void openLogFile();
  void undoRenaming();
  /// Does again what was undone last; its new log is listed then.
  void redo();
  /// Stops the undo at hand; its log stays, and undoing it again goes on from there.
  void cancel();
  void viewLogFileContent();
  void deleteLogFile();

  /// False while isUndoing().
  bool sheetClosed() override;

 private:
  std::string_view help_page() const override { return "Undo.html"; }
  struct Outcome;
  void begin(std::string_view label_key);
  void verifyLogFile();
  void verified(const Outcome& outcome);
  void tell_verified(const Outcome& outcome) const;
  void start_undo();
  static void undo(const std::string& path, FileList& files, const JobControl& control, Outcome& outcome);
  void undone(const Outcome& outcome);
  void tell_undone(const Outcome& outcome);
  static std::string what_became_of_log(const Outcome& outcome);
  void delete_log();
  void drop_from_list();
  void show_count(std::size_t count);
  void show_broken_off_undo();

  RenamingController& renaming_;
  std::vector<LogRecord> logFiles_;
  std::optional<std::size_t> selected_;
  std::string currLogFilePath_;
  std::size_t totalFilesCanBeUndoFromLog_ = 0;
  bool isUndoing_ = false;
  std::string status_label_;
};

}  // namespace brindle
