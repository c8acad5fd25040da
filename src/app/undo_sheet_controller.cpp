#include "app/undo_sheet_controller.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "app/renaming_controller.h"
#include "list/file_order.h"
#include "log/undo_progress.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "platform/trash.h"
#include "run/recovery.h"
#include "run/restored_items.h"
#include "run/undo.h"
#include "settings/preferences.h"
#include "text/date_format.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::string_view undo_title = "UNDOFILESFOLDERSTITLE";

void recover_interrupted_runs(const std::string& log_folder) {
  if (log_folder.empty()) return;
  const RecoveryResult result = recover(log_folder);
  for (const auto& lines : {result.problems, result.set_aside}) {
    for (const std::string& line : lines) log_failure("recover", line);
  }
}

bool comes_before(const LogRecord& a, const LogRecord& b, std::string_view column) {
  if (column == "filesCount") return a.filesCount < b.filesCount;
  if (column == "dateCreated") return a.dateCreated < b.dateCreated;
  return compareFiles(decode_file_name(a.logFileName), decode_file_name(b.logFileName)) < 0;
}

/// Why the first of the items that were left alone was.
class FirstReason {
 public:
  void hear(const LogEntry& entry, std::string_view reason) {
    if (reason.empty() || !text_.empty()) return;
    const std::string path = fmt::format("{}/{}", entry.target_folder, entry.target_name);
    text_ = entry.fault.empty()
                ? localized_format("ITEMANDREASON", in_sentence(decode_file_name(path)), localized(reason))
                : std::string(reason);
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace

/// What a job hands back to the main thread.
struct UndoSheetController::Outcome {
  UndoResult result;
  FirstReason first_reason;
  bool unreadable = false;  ///< no log, so nothing was tried
};

UndoSheetController::UndoSheetController(BrindleAppController& app) : SheetController(app), renaming_(app.renaming()) {
  recover_interrupted_runs(defaultLogFolderPath());
  loadUserLogFiles();
}

std::string UndoSheetController::defaultLogFolderPath() {
  return default_log_folder();
}

void UndoSheetController::loadUserLogFiles() {
  logFiles_ = brindle::loadUserLogFiles(defaultLogFolderPath());
  selected_.reset();
}

std::string UndoSheetController::logs_label() const {
  return localized_format("TOTALLOGFILES", logFiles_.size());
}

void UndoSheetController::show_count(std::size_t count) {
  status_label_ = localized_format("TOTALNOSRENAMEDITEMSFOUND", count);
}

void UndoSheetController::show_broken_off_undo() {
  const BrokenOffUndo undo = broken_off_undo(currLogFilePath_);
  if (undo.entries > 0) status_label_ += "; " + localized_format("UNDOBROKENOFF", undo.restored, undo.entries);
}

void UndoSheetController::tableViewSelectionDidChange(std::optional<std::size_t> row) {
  if (isUndoing_) return;
  selected_ = row && *row < logFiles_.size() ? row : std::nullopt;
  if (selected_) {
    const LogRecord& record = logFiles_[*selected_];
    currLogFilePath_ = defaultLogFolderPath() + "/" + record.logFileName;
    totalFilesCanBeUndoFromLog_ = static_cast<std::size_t>(std::max(record.filesCount, 0));
    show_count(totalFilesCanBeUndoFromLog_);
    show_broken_off_undo();
  }
  tell();
}

std::string UndoSheetController::objectValue(std::string_view column, std::size_t row) const {
  if (row >= logFiles_.size()) return {};
  const LogRecord& record = logFiles_[row];
  if (column == "logFileName") return to_utf8(decode_file_name(record.logFileName));
  if (column == "dateCreated") return to_utf8(format_date(record.dateCreated, u"yyyy-MM-dd HH:mm:ss"));
  return column == "filesCount" ? std::to_string(record.filesCount) : std::string();
}

void UndoSheetController::sortDescriptorsDidChange(std::string_view column, bool ascending) {
  const std::string name = selected_ ? logFiles_[*selected_].logFileName : std::string();
  std::ranges::stable_sort(logFiles_, [&](const LogRecord& a, const LogRecord& b) {
    return ascending ? comes_before(a, b, column) : comes_before(b, a, column);
  });
  if (selected_) {
    const auto found = std::ranges::find(logFiles_, name, &LogRecord::logFileName);
    selected_ = static_cast<std::size_t>(found - logFiles_.begin());
  }
  tell();
}

void UndoSheetController::openLogFile() {
  if (isUndoing_) return;
  OpenRequest request;
  request.title = localized_format("SELECTLOGFILETITLE", getAppTitle());
  request.folder = getLogFilePath();
  request.folder.erase(std::min(request.folder.rfind('/'), request.folder.size()));
  request.extensions = {"xml"};
  const std::vector<std::string> chosen = ports().chooser.choose(request);
  if (chosen.empty()) return;
  if (!isFileVersionMatch(appVersionInPlist(chosen.front()).value_or(""))) {
    return show_alert(ports(), make_alert(undo_title, "UNDOFILESFOLDERSINCOMPATIBLE"), AlertStyle::critical);
  }
  currLogFilePath_ = chosen.front();
  selected_.reset();
  totalFilesCanBeUndoFromLog_ = 0;
  tell();
  when_idle([this] { verifyLogFile(); });
}

void UndoSheetController::begin(std::string_view label_key) {
  isUndoing_ = true;
  status_label_ = localized(label_key);
  tell();
}

void UndoSheetController::verifyLogFile() {
  begin("CHECKINGLOGFILE");
  const auto outcome = std::make_shared<Outcome>();
  const auto work = [path = currLogFilePath_, outcome](const JobControl&) {
    try {
      const Result<LogFile> log = readLogFile(path);
      outcome->result.entries = log.ok() ? log->entries.size() : 0;
      outcome->result.error = log.reason();
      if (!log.ok()) log_failure("readLogFile", log.reason());
    } catch (const std::exception& error) {
      log_failure("verifyLogFile", std::string(" ") + error.what());
      outcome->result.error = error.what();
    }
  };
  jobs().run_job({.job = Job::undo,
                  .work = work,
                  .finished = [this, outcome] { verified(*outcome); },
                  .afterwards = [this, outcome] { tell_verified(*outcome); }});
}

void UndoSheetController::verified(const Outcome& outcome) {
  isUndoing_ = false;
  totalFilesCanBeUndoFromLog_ = outcome.result.entries;
  show_count(totalFilesCanBeUndoFromLog_);
  show_broken_off_undo();
  tell();
}

void UndoSheetController::tell_verified(const Outcome& outcome) const {
  if (totalFilesCanBeUndoFromLog_ > 0) return;
  show_alert(ports(), make_alert(undo_title, "UNDOFILESFOLDERSINVALIDFILE"), AlertStyle::warning, outcome.result.error);
}

void UndoSheetController::undoRenaming() {
  if (isUndoing_) return;
  if (currLogFilePath_.empty()) return show_alert(ports(), make_alert(undo_title, "UNDOFILESFOLDERSNOLOGSELECTED"));
  if (totalFilesCanBeUndoFromLog_ < 1) return delete_log();
  when_idle([this] { start_undo(); });
}

void UndoSheetController::redo() {
  if (isUndoing_) return;
  when_idle([this] {
    begin("REDOINGITEMS");
    renaming_.redo([this] {
      isUndoing_ = false;
      status_label_.clear();
      currLogFilePath_.clear();
      totalFilesCanBeUndoFromLog_ = 0;
      loadUserLogFiles();
      tell();
    });
  });
}

void UndoSheetController::start_undo() {
  if (currLogFilePath_.empty()) return;  // deleted while this waited
  begin("UNDOINGITEMS");
  jobs().setStartTime();
  const auto outcome = std::make_shared<Outcome>();
  const auto work = [path = currLogFilePath_, outcome, &files = renaming_.files_for_undo()](const JobControl& control) {
    try {
      undo(path, files, control, *outcome);
    } catch (const std::exception& error) {
      log_failure("undoRenaming", error.what());
      outcome->result.error = error.what();
    }
  };
  jobs().run_job({.job = Job::undo,
                  .work = work,
                  .finished = [this, outcome] { undone(*outcome); },
                  .afterwards = [this, outcome] { tell_undone(*outcome); }});
}

// On the job's thread.
void UndoSheetController::undo(const std::string& path, FileList& files, const JobControl& control, Outcome& outcome) {
  const Result<LogFile> log = readLogFile(path);
  outcome.unreadable = !log.ok();
  outcome.result.log_path = path;
  outcome.result.error = log.reason();
  if (outcome.unreadable) return log_failure("readLogFile", log.reason());
  RestoredItems listed(files);
  const auto report = [&](const LogEntry& entry, UndoOutcome what, std::string_view reason) {
    outcome.first_reason.hear(entry, reason);
    if (what == UndoOutcome::moved)
      listed.moved(entry.target_folder, entry.target_name, entry.source_folder, entry.source_name);
  };
  outcome.result = brindle::undoRenaming(path, *log, control, report, {defaultLogFolderPath(), false});
}

void UndoSheetController::undone(const Outcome& outcome) {
  const UndoResult& result = outcome.result;
  isUndoing_ = false;
  status_label_ = localized_format("ITEMSRESTORED", result.restored);
  renaming_.show_undone(result.restored);
  jobs().showLastActionTimeTaken("UNDOINGTIME");
  tell();
}

void UndoSheetController::tell_undone(const Outcome& outcome) {
  const UndoResult& result = outcome.result;
  Alert alert = make_alert(undo_title, "UNDOTOTALNOSITEMSFOUND", result.entries);
  alert.message += localized_format("UNDOTOTALNOSITEMSRENAMED", result.restored);
  if (result.already > 0) alert.message += localized_format("UNDOTOTALNOSITEMSALREADY", result.already);
  alert.message += localized_format("UNDOTOTALNOSITEMDOESNOTEXISTS", result.left_alone());
  show_alert(ports(), std::move(alert), AlertStyle::informational, what_became_of_log(outcome));
  // A file that is no log goes as well, but only to where it can be got back from.
  if (result.put_away || (outcome.unreadable && move_to_trash(currLogFilePath_).ok())) drop_from_list();
}

std::string UndoSheetController::what_became_of_log(const Outcome& outcome) {
  const UndoResult& result = outcome.result;
  if (!result.error.empty()) return result.error;
  if (result.cancelled) return localized_format("UNDONOTREACHED", result.entries - result.reached, result.entries);
  if (!result.put_away) return outcome.first_reason.text() + "\n" + localized("UNDOLOGSTAYS");
  const std::string place = in_sentence(decode_file_name(result.log_path));
  return place.empty() ? std::string() : localized_format("UNDOLOGKEPTAT", std::string_view(place));
}

void UndoSheetController::cancel() {
  if (isUndoing_) jobs().cancelProcess();
}

void UndoSheetController::delete_log() {
  const Status status = brindle::deleteLogFile(currLogFilePath_);
  if (!status.ok()) {
    log_failure("deleteLogFile", status.reason());
    return show_alert(ports(), make_alert_of(undo_title, "", status.reason()));
  }
  drop_from_list();
}

// The selected log is gone from the disk.
void UndoSheetController::drop_from_list() {
  currLogFilePath_.clear();
  totalFilesCanBeUndoFromLog_ = 0;
  if (!selected_) return tell();
  const std::size_t row = *selected_;
  logFiles_.erase(logFiles_.begin() + static_cast<std::ptrdiff_t>(row));
  show_count(0);
  tableViewSelectionDidChange(logFiles_.empty() ? 0 : std::min(row, logFiles_.size() - 1));
}

void UndoSheetController::viewLogFileContent() {
  if (currLogFilePath_.empty()) return show_alert(ports(), make_alert("VIEWLOGFILETITLE", "VIEWLOGFILETITLEMESSAGE"));
  if (!ports().desktop.open_with_default_application(currLogFilePath_)) ports().desktop.beep();
}

void UndoSheetController::deleteLogFile() {
  if (isUndoing_) return;
  if (currLogFilePath_.empty()) return show_alert(ports(), make_alert(undo_title, "UNDOFILESFOLDERSNOLOGSELECTED"));
  Alert question = make_alert(undo_title, "UNDOFILESFOLDERSDELETECONFIRM");
  question.title = localized("DELETELOGTITLE");
  if (ask(ports(), std::move(question))) delete_log();
}

bool UndoSheetController::sheetClosed() {
  return !isUndoing_ && SheetController::sheetClosed();
}

}  // namespace brindle
