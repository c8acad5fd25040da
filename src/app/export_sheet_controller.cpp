#include "app/export_sheet_controller.h"

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include "platform/file_name.h"
#include "texts/list_titles.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::string_view export_title = "EXPORTFILESTITLE";

struct Outcome {
  std::string error;
  std::vector<std::uint32_t> left_out;
  bool cancelled = false;
};

// How many items are not in the list, and the first of them.
std::string describe_left_out(const FileList& files, const std::vector<std::uint32_t>& rows) {
  if (rows.empty() || rows.front() >= files.size()) return {};
  const std::string path = to_utf8(FileSystemItem::getDisplayFilePath(decode_file_name(files.path(rows.front()))));
  return localized_format("EXPORTLEFTOUT", rows.size(), path);
}

}  // namespace

ExportSheetController::~ExportSheetController() {
  ports().main_thread.cancel_timer(timer_);
}

void ExportSheetController::setOptions(const ExportOptions& options) {
  if (isExporting_) return;
  options_ = options;
  tell();
}

void ExportSheetController::start_export() {
  if (isExporting_) return;
  isExporting_ = true;
  timer_ = ports().main_thread.start_timer(std::chrono::seconds(1), [this] {
    timer_ = 0;
    export_list_now();
  });
  tell();
}

void ExportSheetController::export_list_now() {
  const ExportRefusal refusal = check_export(options_);
  if (refusal != ExportRefusal::none) {
    const bool no_column = refusal == ExportRefusal::no_column;
    show_alert(ports(), make_alert(export_title, no_column ? "EXPORTNOCOLUMN" : "EXPORTFILESFAILED"),
               AlertStyle::critical);
    return finish();
  }
  SaveRequest request;
  request.title = localized("EXPORTFILELISTTITLE");
  request.name = "export.txt";
  request.extension = "txt";
  request.other_extensions = true;
  const std::optional<std::string> path = ports().chooser.choose(request);
  if (!path || !can_begin()) return finish();
  when_idle([this, path = *path] { write(path); });
}

void ExportSheetController::write(const std::string& path) {
  const auto outcome = std::make_shared<Outcome>();
  const auto work = [&files = model().files(), options = options_, path, outcome](const JobControl& control) {
    try {
      const auto exported = export_list(files, options, export_titles(), path, control);
      outcome->error = exported.reason();
      if (exported.ok()) outcome->left_out = *exported;
    } catch (const std::exception& error) {
      outcome->error = error.what();
    }
    outcome->cancelled = control.cancelled();
  };
  const auto tell = [this, outcome] {
    if (!outcome->cancelled) tell_outcome(outcome->error, describe_left_out(model().files(), outcome->left_out));
  };
  jobs().run_job({.job = Job::exporting, .work = work, .finished = [this] { finish(); }, .afterwards = tell});
}

void ExportSheetController::tell_outcome(const std::string& error, const std::string& left_out) const {
  const bool is_written = error.empty();
  show_alert(ports(), make_alert(export_title, is_written ? "EXPORTFILESEXPORTEDSUCCESS" : "EXPORTFILESEXPORTEDFAILED"),
             is_written ? AlertStyle::informational : AlertStyle::critical, is_written ? left_out : error);
}

void ExportSheetController::finish() {
  isExporting_ = false;
  tell();
}

void ExportSheetController::cancel() {
  if (timer_ == 0) return jobs().cancelProcess();
  ports().main_thread.cancel_timer(timer_);
  timer_ = 0;
  finish();
}

bool ExportSheetController::sheetClosed() {
  return !isExporting_ && SheetController::sheetClosed();
}

}  // namespace brindle
