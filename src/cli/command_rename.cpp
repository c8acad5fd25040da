#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/log_folder.h"
#include "cli/rename_batch.h"
#include "cli/rename_command.h"
#include "platform/cancellation.h"
#include "platform/translation.h"
#include "run/apply.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

void print_preview(const CommandLine& line, const RenameBatch& batch, const Tally& tally, std::string_view how_to_do_it,
                   Console& console) {
  print_listing(batch.files, batch.folder, line.options.all, console);
  console.out() << preview_sentence(batch, tally) << ".";
  if (tally.proposed > 0) console.out() << (console.out_is_terminal() ? "\n" : " ") << translated(how_to_do_it);
  console.out() << "\n";
  console.out().flush();
  warn_of_surprises(line, batch, console);
}

/// The full paths of a list's rows at one moment, packed.
class PathRecord {
 public:
  explicit PathRecord(const FileList& files) {
    ends_.reserve(files.size());
    for (std::size_t row = 0; row < files.size(); ++row) {
      paths_ += files.path(row);
      ends_.push_back(paths_.size());
    }
  }
  std::string_view operator[](std::size_t row) const {
    const std::size_t start = row == 0 ? 0 : ends_[row - 1];
    return std::string_view(paths_).substr(start, ends_[row] - start);
  }

 private:
  std::string paths_;
  std::vector<std::size_t> ends_;
};

class RenameCommand {
 public:
  RenameCommand(const CommandLine& line, Console& console, const RenamingSource& source)
      : line_(line), options_(line.options), console_(console), source_(source) {}

  ExitCode run();

 private:
  void show_preview();
  bool is_wanted();
  bool goes_on_without_log(const std::string& error);
  ApplyOptions apply_options() const;
  ApplyResult apply();
  void print_json(const PathRecord& old_paths, const ApplyResult& result);
  void print_for_people(const ApplyResult& result, const std::vector<bool>& known_problems);
  ExitCode answer(const ApplyResult& result) const;
  std::vector<bool> problems_shown() const;
  ExitCode give_up(ExitCode code);

  const CommandLine& line_;
  const Options& options_;
  Console& console_;
  const RenamingSource& source_;
  Stopwatch watch_;
  RenameBatch batch_;
  Tally before_;
  Tally after_;
};

ExitCode RenameCommand::run() {
  if (!options_.yes && !console_.in_is_terminal()) {
    throw UsageError(
        translated("{} asks before it renames, and standard input is no terminal; --yes renames without asking",
                   line_.command->word));
  }
  finish_interrupted_runs(console_);
  if (const auto answer = source_.prepare(batch_)) return *answer;
  before_ = count_rows(batch_.files);
  show_preview();
  if (before_.proposed == 0) {
    const ExitCode code = give_up(ExitCode::done);
    if (source_.done) source_.done(batch_, {});
    return code;
  }
  if (!is_wanted()) return give_up(is_cancelled() ? ExitCode::cancelled : ExitCode::done);
  put_in_order_of_run(batch_.files, apply_options());  // so that what is remembered of the rows stays theirs
  const std::vector<bool> known_problems = problems_shown();
  std::optional<PathRecord> old_paths;
  if (options_.json) old_paths.emplace(batch_.files);
  const ApplyResult result = apply();
  after_ = count_rows(batch_.files);
  if (old_paths) {
    print_json(*old_paths, result);
  } else {
    print_for_people(result, known_problems);
  }
  if (source_.done) source_.done(batch_, result);
  return answer(result);
}

void RenameCommand::show_preview() {
  if (options_.json || console_.quiet()) return;
  print_listing(batch_.files, batch_.folder, options_.all, console_);
  console_.out() << preview_sentence(batch_, before_) << ".\n";
  console_.out().flush();
  warn_of_surprises(line_, batch_, console_);
}

bool RenameCommand::is_wanted() {
  if (options_.yes) return !is_cancelled();
  const std::string question =
      localized(batch_.is_folders() ? "ITEMRENAMINGMESSAGEFOLDERS" : "ITEMRENAMINGMESSAGEFILES") + " [y/N]";
  const bool count_is_shown = !options_.json && !console_.quiet();
  return console_.ask(count_is_shown ? question : preview_sentence(batch_, before_) + ". " + question);
}

// The end of a run that renamed nothing.
ExitCode RenameCommand::give_up(ExitCode code) {
  if (options_.json) {
    ItemPrinter printer(batch_.files, console_.out().buffer());
    for (std::size_t row = 0; row < batch_.files.size(); ++row) printer.print(row, batch_.files.path(row));
    print_summary(console_.out().buffer(),
                  {line_.command->word, {before_.items, before_.proposed, 0}, {}, watch_.seconds()});
  } else if (console_.quiet()) {
    report_problems(batch_, {}, console_);
  }
  if (before_.proposed > 0) console_.note(translated("Nothing was renamed."));
  const bool incomplete = before_.problems() + batch_.left_out > 0;
  return code == ExitCode::done && incomplete ? ExitCode::incomplete : code;
}

bool RenameCommand::goes_on_without_log(const std::string& error) {
  if (options_.yes || !console_.in_is_terminal()) {
    console_.error(translated("{}; nothing was renamed, since it could not be undone", error));
    return false;
  }
  console_.error(error);
  const std::string question =
      fmt::format("{} {} / {} [c/A]", localized("LOGCREATEFAILED"), localized("CONTINUE"), localized("ABORT"));
  return console_.ask(question, "cC");
}

ApplyOptions RenameCommand::apply_options() const {
  const RenameSettings& settings = batch_.request.settings;
  ApplyOptions options;
  options.isFolders = settings.isFolders;
  options.isIncludeSubFolders = settings.isIncludeSubFolders;
  options.method = selected_method(settings);
  options.generalOptionIndex = settings.generalOptionIndex;
  options.is_chain = batch_.request.is_chain();
  options.permute = batch_.request.choices.permute;
  return options;
}

ApplyResult RenameCommand::apply() {
  ApplyOptions options = apply_options();
  ApplyResult result;
  Result<std::string> log_folder = make_log_folder();
  result.error = log_folder.reason();
  result.log_failed = !log_folder.ok();
  const auto attempt = [&] {
    ProgressLine progress(console_, translated("Renaming"));
    return applyRenames(batch_.files, options, {&cancel_flag(), &progress});
  };
  if (log_folder.ok()) {
    options.log_folder = *log_folder;
    result = attempt();
  }
  if (!result.log_failed || !goes_on_without_log(result.error)) return result;
  options.without_log = true;
  return attempt();
}

std::vector<bool> RenameCommand::problems_shown() const {
  if (console_.quiet()) return {};
  std::vector<bool> problems(batch_.files.size());
  for (std::size_t row = 0; row < problems.size(); ++row) problems[row] = is_problem(batch_.files[row]);
  return problems;
}

void RenameCommand::print_json(const PathRecord& old_paths, const ApplyResult& result) {
  ItemPrinter printer(batch_.files, console_.out().buffer());
  for (std::size_t row = 0; row < batch_.files.size() && !console_.out().closed(); ++row) {
    printer.print(row, old_paths[row]);
    console_.out().flush_if_full();
  }
  print_summary(
      console_.out().buffer(),
      {line_.command->word, {after_.items, before_.proposed, after_.renamed}, result.log_path, watch_.seconds()});
  if (!result.error.empty() && !result.log_failed) console_.error(result.error);
}

void RenameCommand::print_for_people(const ApplyResult& result, const std::vector<bool>& known_problems) {
  report_problems(batch_, known_problems, console_);
  if (!result.error.empty() && !result.log_failed) console_.error(result.error);
  const bool was_given_up = result.log_failed && after_.renamed == 0;  // and that has been said
  if (console_.quiet() || was_given_up) return;
  console_.out() << (result.cancelled ? translated("Cancelled: ") : "") << rename_sentence(batch_, after_) << ".\n";
  if (!result.log_path.empty()) {
    console_.out() << translated("Log: ") << console_.shown(result.log_path) << "\n";
    if (after_.renamed > 0) console_.out() << translated("brindle undo takes it back.") << "\n";
  }
}

ExitCode RenameCommand::answer(const ApplyResult& result) const {
  if (result.cancelled) return ExitCode::cancelled;
  const bool complete = after_.problems() + after_.proposed + batch_.left_out == 0 && result.error.empty();
  return complete ? ExitCode::done : ExitCode::incomplete;
}

}  // namespace

ExitCode show_preview(const CommandLine& line, Console& console, const RenameBatch& batch,
                      std::string_view how_to_do_it) {
  const Tally tally = count_rows(batch.files);
  if (line.options.json) {
    ItemPrinter printer(batch.files, console.out().buffer());
    for (std::size_t row = 0; row < batch.files.size() && !console.out().closed(); ++row) {
      printer.print(row);
      console.out().flush_if_full();
    }
  } else if (!console.quiet()) {
    print_preview(line, batch, tally, how_to_do_it, console);
  } else {
    report_problems(batch, {}, console);
  }
  return tally.problems() + batch.left_out > 0 ? ExitCode::incomplete : ExitCode::done;
}

ExitCode rename_batch(const CommandLine& line, Console& console, const RenamingSource& source) {
  return RenameCommand(line, console, source).run();
}

ExitCode run_preview(const CommandLine& line, Console& console) {
  const Stopwatch watch;
  RenameBatch batch;
  if (const auto answer = prepare_batch(line, console, batch)) return *answer;
  const ExitCode code = show_preview(line, console, batch, to_translate("To do it, write rename instead of preview."));
  if (line.options.json) {
    const Tally tally = count_rows(batch.files);
    print_summary(console.out().buffer(), {"preview", {tally.items, tally.proposed, 0}, {}, watch.seconds()});
  }
  return code;
}

ExitCode run_rename(const CommandLine& line, Console& console) {
  const RenamingSource source{[&](RenameBatch& batch) { return prepare_batch(line, console, batch); }, nullptr};
  return rename_batch(line, console, source);
}

}  // namespace brindle
