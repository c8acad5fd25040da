#include "cli/rename_batch.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/path_arguments.h"
#include "cli/settings_files.h"
#include "gather/gather.h"
#include "gather/list_import.h"
#include "list/file_order.h"
#include "platform/cancellation.h"
#include "platform/file_name.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "run/preview.h"
#include "run/rename_row.h"
#include "run/second_look.h"
#include "texts/list_titles.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::size_t most_lines_a_reason = 10;

void tell_hidden(const std::vector<std::string>& paths, RenameBatch& batch, Console& console) {
  batch.left_out += paths.size();
  for (const std::string& path : paths)
    console.error(translated("{} is hidden and left out; --hidden takes it in", relative_path(path, batch.folder)));
}

void print_all_unreadable(const std::vector<UnreadablePath>& paths, const RenameBatch& batch, Console& console) {
  for (const UnreadablePath& unreadable : paths) {
    print_unreadable(console.out().buffer(), batch.files.folders().path(unreadable.path),
                     describe_error(unreadable.error));
    console.out().flush_if_full();
  }
}

// What cannot be read, reason by reason: the first of each by their names, the rest by their number.
void tell_unreadable(const CommandLine& line, const std::vector<UnreadablePath>& paths, RenameBatch& batch,
                     Console& console) {
  batch.left_out += paths.size();
  if (line.options.json) return print_all_unreadable(paths, batch, console);
  std::map<int, std::size_t> counts;
  for (const UnreadablePath& unreadable : paths) {
    if (++counts[unreadable.error] > most_lines_a_reason) continue;
    const std::string path = batch.files.folders().path(unreadable.path);
    console.error(
        fmt::format("{}: {}", relative_path(path, batch.folder), translated(describe_error(unreadable.error))));
  }
  for (const auto& [error, count] : counts) {
    if (count > most_lines_a_reason)
      console.error(
          translated("{} more like that: {}", count - most_lines_a_reason, translated(describe_error(error))));
  }
}

// A list of paths that was made wrong, or a space too many, is soon "/".
void refuse_whole_system(const CommandLine& line, const std::vector<std::string>& paths, const std::string& folder) {
  const bool would_rename =
      std::ranges::find(line.command->options, OptionId::no_preserve_root) != line.command->options.end();
  if (!would_rename || line.options.no_preserve_root) return;
  RealPaths real_paths(folder);
  const bool has_root = std::ranges::any_of(paths, [&](const std::string& path) {
    return (path.ends_with('/') || path.ends_with('.')) && real_paths.of(path).path == "/";
  });
  if (!has_root) return;
  throw UsageError(
      translated("one of the PATHs is /, which is everything on this machine; --no-preserve-root renames it all"));
}

void gather(const CommandLine& line, Console& console, RenameBatch& batch) {
  const std::vector<std::string> paths = read_paths(line, batch.folder, console);
  batch.paths = paths.size();
  const RenameSettings& settings = batch.request.settings;
  if (settings.isIncludeSubFolders) refuse_whole_system(line, paths, batch.folder);
  const GatherOptions options{settings.isFolders, settings.isIncludeSubFolders, line.options.hidden, false,
                              batch.folder};
  std::optional<ProgressLine> progress(std::in_place, console, translated("Found"));
  const GatherResult result = addFiles(batch.files, paths, options, &batch.disk_names, {&cancel_flag(), &*progress});
  progress.reset();
  tell_hidden(result.hidden_paths, batch, console);
  tell_unreadable(line, result.unreadable, batch, console);
}

bool has_paths(const CommandLine& line) {
  return !line.operands.empty() || !line.options.from.empty();
}

[[noreturn]] void ask_for_paths(const CommandLine& line) {
  throw UsageError(translated("say which files: brindle {} {}", line.command->word, line.command->synopsis));
}

FileRenameItem read_list(const std::string& file, bool folders, Console& console) {
  const std::int32_t type = folders ? 1 : 0;
  Result<FileRenameItem> item = file == "-" ? read_rename_list(read_input_text(file, console), type, list_titles())
                                            : loadRenameFile(file, type, list_titles());
  if (item.ok() && !item->paths.empty()) return *std::move(item);
  const std::string why = item.ok() || item.reason().empty() ? "" : fmt::format(" ({})", translated(item.reason()));
  throw UsageError(fmt::format("{}: {}{}", file == "-" ? translated("standard input") : file,
                               localized(item.ok() ? "RENAMEFROMFILEMESSAGE" : "UNABLETOOPENFILE"), why));
}

std::string lines(std::size_t count) {
  return translated_count(count, "{} line of the list", "{} lines of the list", count);
}

// Says how many lines of a list are of the other kind, or hidden.
void explain_left_out(std::size_t hidden, RenameBatch& batch, Console& console) {
  if (hidden > 0) console.error(translated("{} left out: hidden names; --hidden takes them in", lines(hidden)));
  if (const std::size_t others = batch.left_out - hidden; others > 0) {
    console.error(batch.is_folders() ? translated("{} left out: not folders; --files renames files", lines(others))
                                     : translated("{} left out: folders; --folders renames them", lines(others)));
  }
}

void import_list(const CommandLine& line, Console& console, RenameBatch& batch) {
  if (!line.operands.empty() || !line.options.from.empty()) {
    throw UsageError(translated("a list names the items itself; leave the PATHs out"));
  }
  const Text& file = batch.request.settings.renameFile;
  if (!file || file->empty())
    throw UsageError(translated("the method is to rename from a list; --list FILE says which"));
  std::string path;
  if (!encode_path(*file, path)) throw UsageError(translated("{} cannot be the path of a list", to_utf8(*file)));
  const FileRenameItem item = read_list(path, batch.is_folders(), console);
  ProgressLine progress(console, translated("Found"));
  const ImportResult result =
      importFiles(batch.files, item, line.options.hidden, batch.disk_names, {&cancel_flag(), &progress});
  batch.paths = batch.files.size();
  if (result.cancelled) return;
  if (item.odd_lines > 0) {
    console.note(translated("{} passed over: not three fields with tabs between them", lines(item.odd_lines)));
  }
  batch.left_out = item.paths.size() - batch.files.size();
  explain_left_out(result.hidden_paths, batch, console);
}

void sort_list(FileList& files, ListOrder order) {
  if (order == ListOrder::name) sort_by_name(files);
  if (order == ListOrder::folder) sort_by_location(files);
}

std::string_view why_empty(const RenameRequest& request) {
  if (request.is_from_list()) return to_translate("no items in the list");
  const RenameSettings& settings = request.settings;
  if (settings.isFolders && settings.isIncludeSubFolders) {
    return to_translate("no folders below the PATHs (--no-subfolders renames the PATHs themselves)");
  }
  if (settings.isFolders) return to_translate("none of the PATHs is a folder");
  if (!settings.isIncludeSubFolders)
    return to_translate("no files among the PATHs (folders are not looked into; --folders renames them)");
  return to_translate("no files in the PATHs (--folders renames folders, --hidden takes hidden names)");
}

void report_nothing_done(const CommandLine& line, Console& console, const RenameBatch& batch, double seconds) {
  if (line.options.json)
    print_summary(console.out().buffer(), {line.command->word, {batch.files.size(), 0, 0}, {}, seconds});
}

ExitCode report_empty(Console& console, const RenameBatch& batch) {
  if (batch.left_out == 0) console.note(translated("Nothing to rename: {}", translated(why_empty(batch.request))));
  return batch.left_out > 0 ? ExitCode::incomplete : ExitCode::done;
}

}  // namespace

ExitCode report_refusal(const CommandLine& line, Console& console, const Refusal& refusal) {
  const std::string text = describe(refusal);
  if (line.options.json) print_refusal(console.out().buffer(), refusal, text);
  console.error(text);
  return ExitCode::refused;
}

bool is_problem(const ItemRecord& record) {
  if (record.problem != Problem::none) return true;
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

// A row that has a proposed name, and none of its own.
std::size_t& Tally::of_proposed(const ItemRecord& record) {
  if (record.carries_new_name) return proposed;
  switch (record.problem) {
    case Problem::none:
      return withheld;
    case Problem::clash:
      return clashing;
    case Problem::taken:
      return taken;
    default:
      return failed;
  }
}

Tally count_rows(const FileList& files) {
  Tally tally;
  tally.items = files.size();
  for (const ItemRecord& record : files.items()) {
    switch (record.status) {
      case ItemStatus::proposed:
        ++tally.of_proposed(record);
        break;
      case ItemStatus::renaming_ok:
        ++tally.renamed;
        break;
      case ItemStatus::file_already_exists:
      case ItemStatus::folder_already_exists:
        ++(record.problem == Problem::clash ? tally.clashing : tally.taken);
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
  if (is_folders()) return form_for(count, "folder", "folders");
  return form_for(count, "file", "files");
}

namespace {

// The new names, unless a list has brought them or none were asked for.
void make_names(const CommandLine& line, Console& console, RenameBatch& batch) {
  if (!says_how(line)) return;
  const RunChoices& choices = batch.request.choices;
  if (batch.request.is_from_list()) {
    look_again(batch.files, choices, &batch.disk_names, false);
    return;
  }
  RenamePlan plan = batch.request.plan();
  ProgressLine progress(console, translated("Naming"));
  preview(batch.files, plan, batch.disk_names, {&cancel_flag(), &progress}, choices);
}

std::optional<ExitCode> try_to_prepare(const CommandLine& line, Console& console, RenameBatch& batch, Demand demand) {
  auto request = make_request(line, current_time(), demand);
  if (const auto* refusal = std::get_if<Refusal>(&request)) return report_refusal(line, console, *refusal);
  batch.request = std::get<RenameRequest>(std::move(request));
  note_date_left_out(batch.request.date_left_out, console);
  batch.folder = current_folder();
  if (batch.request.is_from_list()) {
    import_list(line, console, batch);
  } else if (has_paths(line)) {
    gather(line, console, batch);
  } else {
    ask_for_paths(line);
  }
  if (batch.files.empty() && !is_cancelled()) return report_empty(console, batch);
  sort_list(batch.files, line.options.sort);
  make_names(line, console, batch);
  return is_cancelled() ? std::optional(ExitCode::cancelled) : std::nullopt;
}

// Whether a --set or a profile may choose the method that needs no PATHs.
bool may_name_list(const Options& options) {
  return !options.list.empty() || !options.profile.empty() || !options.set.empty();
}

}  // namespace

std::optional<ExitCode> prepare_batch(const CommandLine& line, Console& console, RenameBatch& batch, Demand demand) {
  const Stopwatch watch;
  if (!has_paths(line) && !may_name_list(line.options)) ask_for_paths(line);
  const std::optional<ExitCode> answer = try_to_prepare(line, console, batch, demand);
  if (answer) report_nothing_done(line, console, batch, watch.seconds());
  return answer;
}

}  // namespace brindle
