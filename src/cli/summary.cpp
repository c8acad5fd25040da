#include "cli/summary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>

#include "cli/listing.h"
#include "platform/translation.h"
#include "text/hash.h"

namespace brindle {
namespace {

// "; 2 unchanged; 1 cannot be (new name taken)".
std::string rest_of_sentence(const Tally& tally, std::string_view cannot) {
  std::string text;
  if (tally.unchanged > 0) text += translated("; {} unchanged", tally.unchanged);
  if (tally.problems() == 0) return text;
  std::vector<std::string> causes;
  const auto add_cause = [&](std::size_t count, std::string_view cause) {
    if (count == 0) return;
    causes.push_back(count == tally.problems() ? std::string(cause) : fmt::format("{} {}", count, cause));
  };
  add_cause(tally.taken, translated("new name taken"));
  add_cause(tally.missing, translated("not found"));
  add_cause(tally.failed, translated("for the reason given"));
  return text + fmt::format("; {} {} ({})", tally.problems(), cannot, fmt::join(causes, ", "));
}

// How many rows would get a name that an earlier row of the same folder gets.
std::size_t count_given_twice(const FileList& files) {
  std::vector<std::uint64_t> names;
  for (const ItemRecord& record : files.items()) {
    if (record.status != ItemStatus::proposed) continue;
    const std::uint64_t folder = (record.folder + std::uint64_t{1}) * 0x9E3779B97F4A7C15U;
    names.push_back(hash_bytes(record.proposed(), folder));
  }
  std::ranges::sort(names);
  return static_cast<std::size_t>(names.end() - std::unique(names.begin(), names.end()));
}

// In the order of the list; with a new start in each folder the run sorts it itself.
bool counts_items(const RenameSettings& settings) {
  if (selected_method(settings) == Method::sequence) return !settings.isAlphaNumericResetSequenceOnEachFolder;
  const bool numbers_photos = selected_method(settings) == Method::photo && settings.photoRenamingMask &&
                              settings.photoRenamingMask->find(u"<SEQUENCES_") != std::u16string::npos;
  return numbers_photos && !settings.isPhotoResetSequenceOnEachFolder;
}

bool counts_items(const RenameRequest& request) {
  if (!request.is_chain()) return counts_items(request.settings);
  return std::ranges::any_of(request.rules, [](const Rule& rule) { return counts_items(rule.settings); });
}

}  // namespace

std::string preview_sentence(const RenameBatch& batch, const Tally& tally) {
  return translated_count(tally.proposed, "{} of {} {} would be renamed{}", "{} of {} {} would be renamed{}",
                          tally.proposed, tally.items, batch.noun(tally.items),
                          rest_of_sentence(tally, translated("cannot be")));
}

std::string rename_sentence(const RenameBatch& batch, const Tally& tally) {
  std::string text = translated("{} of {} {} renamed{}", tally.renamed, tally.items, batch.noun(tally.items),
                                rest_of_sentence(tally, translated("could not be")));
  if (tally.proposed > 0) text += translated("; {} not reached", tally.proposed);
  return text;
}

void warn_of_surprises(const CommandLine& line, const RenameBatch& batch, Console& console) {
  if (const std::size_t twice = count_given_twice(batch.files); twice > 0) {
    console.note(translated_count(twice, "{} would get a name that another one gets too, and keep the old one.",
                                  "{} would get a name that another one gets too, and keep the old one.", twice));
  }
  const bool in_disk_order = line.options.sort == ListOrder::as_found && batch.files.size() > batch.paths;
  if (in_disk_order && counts_items(batch.request)) {
    console.note(
        translated("Counted in the order in which the disk lists them; --sort name or --sort folder counts by name."));
  }
}

void report_problems(const RenameBatch& batch, const std::vector<bool>& known, Console& console) {
  std::map<std::string, std::vector<std::size_t>> rows_by_reason;
  for (std::size_t row = 0; row < batch.files.size(); ++row) {
    const bool shown_before = !known.empty() && known[row];
    if (is_problem(batch.files[row]) && !shown_before)
      rows_by_reason[status_and_reason(batch.files, row)].push_back(row);
  }
  for (const auto& [reason, rows] : rows_by_reason) {
    console.error(translated("{} {} not renamed: {}", rows.size(), batch.noun(rows.size()), reason));
    for (const std::size_t row : rows) {
      const std::string path = batch.files.path(row);
      std::string line(relative_path(path, batch.folder));
      if (const std::string_view wanted = batch.files.wanted(row); !wanted.empty()) line.append(" -> ").append(wanted);
      console.append_error_line("  ", line);
    }
  }
}

}  // namespace brindle
