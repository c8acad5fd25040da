#include <poll.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/rename_batch.h"
#include "cli/settings_files.h"
#include "gather/list_export.h"
#include "platform/cancellation.h"
#include "platform/translation.h"
#include "texts/list_titles.h"

namespace brindle {
namespace {

constexpr std::string_view standard_output = "-";

std::optional<Refusal> refusal_of(const ExportOptions& options) {
  switch (check_export(options)) {
    case ExportRefusal::no_column:
      return Refusal{"EXPORTFILESTITLE", "EXPORTNOCOLUMN", ""};
    case ExportRefusal::nothing_to_say:
      return Refusal{"EXPORTFILESTITLE", "EXPORTFILESFAILED", ""};
    case ExportRefusal::none:
      break;
  }
  return std::nullopt;
}

bool reader_has_left() {
  pollfd standard_out{STDOUT_FILENO, POLLOUT, 0};
  return ::poll(&standard_out, 1, 0) == 1 && (standard_out.revents & POLLERR) != 0;
}

using Rows = std::vector<std::uint32_t>;

constexpr std::string_view no_place_in_list = to_translate("a list cannot hold a tab or a line break in a name");

void report_left_out(const CommandLine& line, const RenameBatch& batch, const Rows& left_out, Console& console) {
  if (left_out.empty()) return;
  console.error(
      translated("{} {} left out: {}", left_out.size(), batch.noun(left_out.size()), translated(no_place_in_list)));
  for (const std::uint32_t row : left_out) {
    const std::string path = batch.files.path(row);
    console.append_error_line("  ", relative_path(path, batch.folder));
    if (line.options.json) print_left_out(console.out().buffer(), path, no_place_in_list);
  }
}

void report(const CommandLine& line, const RenameBatch& batch, const Tally& tally, const Rows& left_out, double seconds,
            Console& console) {
  report_left_out(line, batch, left_out, console);
  if (line.options.json) {
    print_summary(console.out().buffer(), {"export", {tally.items, tally.proposed, 0}, {}, seconds});
    return;
  }
  report_problems(batch, {}, console);
  if (!console.quiet() && line.file != standard_output) {
    const std::size_t written = tally.items - left_out.size();
    console.out() << translated("{} {} written to {}.\n", written, batch.noun(written), console.shown(line.file));
  }
}

}  // namespace

ExitCode run_export(const CommandLine& line, Console& console) {
  const Stopwatch watch;
  const bool is_piped = line.file == standard_output;
  if (is_piped && line.options.json) {
    throw UsageError(translated("the list and --json cannot share standard output; name a file for the list"));
  }
  if (const auto refusal = refusal_of(line.options.columns)) return report_refusal(line, console, *refusal);
  RenameBatch batch;
  if (const auto answer = prepare_batch(line, console, batch, Demand::method_or_none)) return *answer;
  if (!is_piped && !may_write(line, console)) return is_cancelled() ? ExitCode::cancelled : ExitCode::done;
  const Result<Rows> exported = [&] {
    ProgressLine progress(console, translated("Writing"));
    const std::string path = is_piped ? "/dev/stdout" : line.file;
    return export_list(batch.files, line.options.columns, export_titles(), path, {&cancel_flag(), &progress});
  }();
  if (is_cancelled()) return ExitCode::cancelled;
  if (!exported.ok() && !(is_piped && reader_has_left())) throw UsageError(exported.reason());
  const Rows left_out = exported.ok() ? *exported : Rows();
  const Tally tally = count_rows(batch.files);
  report(line, batch, tally, left_out, watch.seconds(), console);
  return tally.problems() + batch.left_out + left_out.size() > 0 ? ExitCode::incomplete : ExitCode::done;
}

}  // namespace brindle
