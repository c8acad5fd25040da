#include "cli/rename_batch.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "cli/cancellation.h"
#include "cli/json_report.h"
#include "cli/listing.h"
#include "cli/path_arguments.h"
#include "files/gather.h"
#include "pipeline/file_order.h"
#include "pipeline/preview.h"

namespace brindle {
namespace {

Date now() {
  return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

std::string_view name_of(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

bool is_hidden(std::string_view path) {
  return name_of(path).starts_with('.');
}

// Says why PATHs are not in the list: those that begin with ".", and in folders mode those that do not exist.
std::size_t explain_left_out(const std::vector<std::string>& paths, const CommandLine& line, const RenameBatch& batch,
                             std::size_t hidden_paths, Console& console) {
  std::size_t left_out = 0;
  for (const std::string& path : paths) {
    const bool hidden = hidden_paths > 0 && !line.options.hidden && is_hidden(path);
    struct stat facts {};
    const int missing = !hidden && batch.is_folders() && ::lstat(path.c_str(), &facts) != 0 ? errno : 0;
    if (!hidden && missing == 0) continue;
    ++left_out;
    const std::string_view shown = relative_path(path, batch.folder);
    console.error(hidden ? fmt::format("{} is hidden and left out; --hidden takes it in", shown)
                         : fmt::format("{}: {}", shown, std::strerror(missing)));
  }
  return left_out;
}

void gather(const CommandLine& line, Console& console, RenameBatch& batch) {
  const std::vector<std::string> paths = read_paths(line, batch.folder);
  batch.paths = paths.size();
  const RenameSettings& settings = batch.request.settings;
  const GatherOptions options{settings.isFolders, settings.isIncludeSubFolders, line.options.hidden, false};
  ProgressLine progress(console, "Found");
  const GatherResult result = addFiles(batch.files, paths, options, &batch.disk_names, {&cancel_flag(), &progress});
  if (result.hidden_paths > 0 || batch.is_folders()) {
    batch.left_out = explain_left_out(paths, line, batch, result.hidden_paths, console);
  }
}

void sort_list(FileList& files, ListOrder order) {
  if (order == ListOrder::name) sort_by_name(files);
  if (order == ListOrder::folder) sort_by_location(files);
}

std::string_view why_empty(const RenameSettings& settings) {
  if (settings.isFolders && settings.isIncludeSubFolders) {
    return "no folders below the PATHs (--no-subfolders renames the PATHs themselves)";
  }
  if (settings.isFolders) return "none of the PATHs is a folder";
  if (!settings.isIncludeSubFolders)
    return "no files among the PATHs (folders are not looked into; --folders renames them)";
  return "no files in the PATHs (--folders renames folders, --hidden takes hidden names)";
}

void report_nothing_done(const CommandLine& line, Console& console, const RenameBatch& batch, double seconds) {
  if (line.options.json)
    print_summary(console.out().buffer(), {line.command->word, {batch.files.size(), 0, 0}, {}, seconds});
}

ExitCode report_empty(Console& console, const RenameBatch& batch) {
  if (batch.left_out == 0) console.note(fmt::format("Nothing to rename: {}", why_empty(batch.request.settings)));
  return batch.left_out > 0 ? ExitCode::incomplete : ExitCode::done;
}

ExitCode report_refusal(const CommandLine& line, Console& console, const Refusal& refusal) {
  const std::string text = describe(refusal);
  if (line.options.json) print_refusal(console.out().buffer(), refusal, text);
  console.error(text);
  return ExitCode::refused;
}

}  // namespace

bool is_problem(const ItemRecord& record) {
  switch (record.status) {
    case ItemStatus::file_already_exists:
    case ItemStatus::folder_already_exists:
    case ItemStatus::file_not_found:
    case ItemStatus::folder_not_found:
      return true;
    case ItemStatus::no_changes:
      return record.reason != 0;
    default:
      return false;
  }
}

Tally count_rows(const FileList& files) {
  Tally tally;
  tally.items = files.size();
  for (const ItemRecord& record : files.items()) {
    switch (record.status) {
      case ItemStatus::proposed:
        ++tally.proposed;
        break;
      case ItemStatus::renaming_ok:
        ++tally.renamed;
        break;
      case ItemStatus::file_already_exists:
      case ItemStatus::folder_already_exists:
        ++tally.taken;
        break;
      case ItemStatus::file_not_found:
      case ItemStatus::folder_not_found:
        ++tally.missing;
        break;
      default:
        ++(is_problem(record) ? tally.failed : tally.unchanged);
        break;
    }
  }
  return tally;
}

std::string_view RenameBatch::noun(std::size_t count) const {
  if (is_folders()) return count == 1 ? "folder" : "folders";
  return count == 1 ? "file" : "files";
}

namespace {

std::optional<ExitCode> try_to_prepare(const CommandLine& line, Console& console, RenameBatch& batch) {
  auto request = make_request(line, now());
  if (const auto* refusal = std::get_if<Refusal>(&request)) return report_refusal(line, console, *refusal);
  batch.request = std::get<RenameRequest>(std::move(request));
  batch.folder = current_folder();
  gather(line, console, batch);
  if (batch.files.empty() && !is_cancelled()) return report_empty(console, batch);
  sort_list(batch.files, line.options.sort);
  RenamePlan plan = batch.request.plan();
  ProgressLine progress(console, "Naming");
  preview(batch.files, plan, batch.disk_names, {&cancel_flag(), &progress});
  return is_cancelled() ? std::optional(ExitCode::cancelled) : std::nullopt;
}

}  // namespace

std::optional<ExitCode> prepare_batch(const CommandLine& line, Console& console, RenameBatch& batch) {
  const Stopwatch watch;
  if (line.operands.empty() && line.options.from.empty()) {
    throw UsageError(fmt::format("say which files: brindle {} {}", line.command->word, line.command->synopsis));
  }
  const std::optional<ExitCode> answer = try_to_prepare(line, console, batch);
  if (answer) report_nothing_done(line, console, batch, watch.seconds());
  return answer;
}

}  // namespace brindle
