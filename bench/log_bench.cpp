// The rename log and the journal: what a run pays an item to be undone, and to be safe until then. Files are written in
// the current folder, so on the disk one stands on; saveLog and seal bring them there.

#include <unistd.h>

#include <filesystem>

#include "log/journal.h"
#include "log/rename_log.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

constexpr std::string_view folder = "/home/anna/Pictures/Holiday";

std::string path_here(const std::string& name) {
  return std::filesystem::current_path() / name;
}

std::string write_log(const std::vector<std::string>& names) {
  RenameLogWriter log;
  Status status = log.createLogFile(path_here("Log bench-#.xml"), "FILES");
  for (const std::string& name : names) log.addLogEntry(folder, name, folder, "x" + name);
  if (status.ok()) status = log.saveLog();
  return status.ok() ? log.saved_path() : std::string();
}

void write_a_log(benchmark::State& state) {
  const auto names = sample_names(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const std::string path = write_log(names);
    if (path.empty()) return state.SkipWithError("the log could not be written");
    state.PauseTiming();
    unlink(path.c_str());
    state.ResumeTiming();
  }
  report_time_an_item(state, names.size());
}

void read_a_log(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::string path = write_log(sample_names(count));
  for (auto _ : state) {
    const Result<LogFile> log = readLogFile(path);
    if (!log.ok() || log->entries.size() != count) return state.SkipWithError("the log could not be read");
  }
  unlink(path.c_str());
  report_time_an_item(state, count);
}

void write_a_journal(benchmark::State& state) {
  const auto names = sample_names(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    JournalWriter journal;
    Status status = journal.create(path_here("bench.journal"), {});
    journal.add_folder(1, folder);
    for (const std::string& name : names) journal.add(1, name, "x" + name, 1);
    if (status.ok()) status = journal.seal();
    for (std::size_t at = 0; at < names.size(); ++at) {
      journal.mark(at, JournalMark::begun);
      journal.mark(at, JournalMark::done);
    }
    journal.remove();
    if (!status.ok()) return state.SkipWithError("the journal could not be written");
  }
  report_time_an_item(state, names.size());
}

constexpr std::int64_t few = 100'000;
constexpr std::int64_t many = 1'000'000;
BENCHMARK(write_a_log)->Arg(few)->Arg(many)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(read_a_log)->Arg(few)->Arg(many)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(write_a_journal)->Arg(few)->Arg(many)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace brindle::bench
