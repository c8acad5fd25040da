
#include "cli/commands.h"
#include "cli/json_report.h"
#include "cli/listing.h"
#include "cli/rename_batch.h"
#include "cli/summary.h"
#include "platform/translation.h"

namespace brindle {
namespace {

void print_json(const RenameBatch& batch, const Tally& tally, double seconds, Console& console) {
  ItemPrinter printer(batch.files, console.out().buffer());
  for (std::size_t row = 0; row < batch.files.size() && !console.out().closed(); ++row) {
    printer.print(row);
    console.out().flush_if_full();
  }
  print_summary(console.out().buffer(), {"preview", {tally.items, tally.proposed, 0}, {}, seconds});
}

void print_for_people(const CommandLine& line, const RenameBatch& batch, const Tally& tally, Console& console) {
  print_listing(batch.files, batch.folder, line.options.all, console);
  console.out() << preview_sentence(batch, tally) << ".";
  if (tally.proposed > 0) {
    console.out() << (console.out_is_terminal() ? "\n" : " ")
                  << translated("To do it, write rename instead of preview.");
  }
  console.out() << "\n";
  console.out().flush();
  warn_of_surprises(line, batch, console);
}

}  // namespace

ExitCode run_preview(const CommandLine& line, Console& console) {
  const Stopwatch watch;
  RenameBatch batch;
  if (const auto answer = prepare_batch(line, console, batch)) return *answer;
  const Tally tally = count_rows(batch.files);
  if (line.options.json) {
    print_json(batch, tally, watch.seconds(), console);
  } else if (!console.quiet()) {
    print_for_people(line, batch, tally, console);
  } else {
    report_problems(batch, {}, console);
  }
  return tally.problems() + batch.left_out > 0 ? ExitCode::incomplete : ExitCode::done;
}

}  // namespace brindle
