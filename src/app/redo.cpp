// Redo: the renaming that was undone last is done again.

#include <memory>
#include <utility>

#include "app/renaming_controller.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "run/logged_list.h"
#include "run/recovery.h"
#include "run/restored_items.h"
#include "run/undone_logs.h"
#include "settings/preferences.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::string_view redo_title = "REDOTITLE";

// The first row that does not get its new name, and why.
std::string first_fault(const FileList& files) {
  for (std::size_t row = 0; row < files.size(); ++row) {
    const ItemRecord& record = files[row];
    const bool needs_none = record.status == ItemStatus::no_changes && record.reason == 0;
    if (record.carries_new_name || record.status == ItemStatus::renaming_ok || needs_none) continue;
    std::string reason = reason_in_words(files.reason(row));
    if (reason.empty()) reason = localized(to_utf8(status_text(record.status)));
    return localized_format("ITEMANDREASON", in_sentence(decode_file_name(files.path(row))), reason);
  }
  return {};
}

}  // namespace

/// A redo under way, with a list of its own: the window's may hold other items.
struct RenamingController::Redo {
  std::string log;
  std::string log_folder;
  std::function<void()> done;
  FileList files;
  DiskNames disk_names;
  LoggedPreview preview;
  bool folders = false;
  std::string error;
  ApplyResult result;
  bool is_over = false;  // the run came to its end
};

void RenamingController::redo(std::function<void()> done) {
  const auto redo = std::make_shared<Redo>();
  redo->done = std::move(done);
  redo->log_folder = default_log_folder();
  const std::vector<std::string> logs = undone_logs(redo->log_folder);
  if (logs.empty()) {
    show_alert(model_.ports(), make_alert(redo_title, "REDONOTHING"), AlertStyle::informational);
    return end_redo(*redo);
  }
  redo->log = logs.front();
  JobCall call;
  call.job = Job::loading;
  call.work = [redo](const JobControl& control) { look_at(*redo, control); };
  call.afterwards = [this, redo] { ask_to_redo(redo); };
  if (!jobs_.run_job(std::move(call))) end_redo(*redo);
}

// On the job's thread.
void RenamingController::look_at(Redo& redo, const JobControl& control) {
  const Result<LogFile> log = readLogFile(redo.log);
  redo.error = log.reason();
  if (!log.ok()) return;
  redo.folders = is_log_of_folders(*log);
  redo.preview = preview_log(*log, LogDirection::forth, redo.files, redo.disk_names, control,
                             logs_since_undo(redo.log, redo.log_folder));
}

void RenamingController::ask_to_redo(const std::shared_ptr<Redo>& redo) {
  if (!redo->error.empty()) {
    show_alert(model_.ports(), make_alert_of(redo_title, "", redo->error));
    return end_redo(*redo);
  }
  const std::size_t count = redo->files.renameable_count();
  if (redo->preview.cancelled) return end_redo(*redo);
  if (count == 0) {
    show_alert(model_.ports(), make_alert(redo_title, "REDONOTHINGLEFT"), AlertStyle::informational,
               first_fault(redo->files));
    return end_redo(*redo);
  }
  Alert question = make_alert(redo_title, redo->folders ? "REDOMESSAGEFOLDERS" : "REDOMESSAGEFILES");
  question.informative_text = localized_format("RENAMEABLECOUNT", count);
  if (const std::string fault = first_fault(redo->files); !fault.empty()) question.informative_text += "\n" + fault;
  if (!model_.ask_about_list(std::move(question))) return end_redo(*redo);
  JobCall call;
  call.job = Job::rename;
  call.work = [this, redo](const JobControl& control) { rename_again(*redo, control); };
  call.finished = [this, redo] { show_redone(*redo); };
  call.afterwards = [this, redo] { tell_redone(*redo); };
  if (!jobs_.run_job(std::move(call))) end_redo(*redo);
}

// On the job's thread. The list of the window follows what the new log says.
void RenamingController::rename_again(Redo& redo, const JobControl& control) {
  redo.result = applyRenames(redo.files, redo_options(redo.folders, redo.log_folder), control);
  redo.is_over = true;
  if (redo.result.log_path.empty()) return;
  const Result<LogFile> log = readLogFile(redo.result.log_path);
  if (!log.ok()) return;
  RestoredItems listed(model_.files());
  for (const LogEntry& entry : log->entries)
    listed.moved(entry.source_folder, entry.source_name, entry.target_folder, entry.target_name);
}

void RenamingController::show_redone(const Redo& redo) {
  if (!redo.is_over) recover(redo.log_folder);
  WindowState& state = model_.state();
  state.isHasFilesForRenaming = state.isHasFilesForRenaming && model_.files().renameable_count() > 0;
  state.count_label =
      localized_format(redo.folders ? "TOTALNOSFOLDERSRENAMED" : "TOTALNOSFILESRENAMED", redo.result.renamed);
}

void RenamingController::tell_redone(const Redo& redo) {
  const ApplyResult& result = redo.result;
  const bool is_whole = redo.preview.unusable == 0 && is_all_redone(redo.files);
  if (!result.error.empty() || !redo.is_over) {
    const std::string_view key = result.log_failed ? "REDOWITHOUTLOG" : "LOGSAVEFAILED";
    show_alert(model_.ports(), make_alert(redo_title, key), AlertStyle::warning, result.error);
  } else if (is_whole) {
    drop_redone_log(redo.log, redo.log_folder, result.renamed == redo.files.size());
  } else if (!result.cancelled) {
    show_alert(model_.ports(), make_alert(redo_title, "REDOLEFT", redo.files.size() - result.renamed),
               AlertStyle::warning, first_fault(redo.files));
  }
  end_redo(redo);
}

void RenamingController::end_redo(const Redo& redo) {
  model_.ports().desktop.focus_list();
  if (redo.done) redo.done();
}

}  // namespace brindle
