#include "cli/listing.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "cli/name_change.h"
#include "cli/rename_batch.h"
#include "cli/terminal_text.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "texts/remark_text.h"
#include "texts/shown_text.h"

namespace brindle {
namespace {

constexpr std::size_t indent = 2;
constexpr std::string_view arrow = " → ";
constexpr std::size_t arrow_width = 3;
// Keeps an arrow between two names that are read from right to left in its place.
constexpr std::string_view left_to_right_mark = "\u200E";

bool is_shown(const ItemRecord& record, bool all) {
  return all || record.status == ItemStatus::proposed || is_problem(record);
}

// Which name it is that it does not get; where no name could be made, the reason says enough.
void append_wanted_name(const FileList& files, std::size_t row, const Console& console, std::string& text) {
  const std::string_view wanted = files[row].status == ItemStatus::proposed ? files[row].proposed() : files.wanted(row);
  if (wanted.empty() || files[row].reason != 0) return;
  text += ": ";
  console.append_shown(wanted, text);
}

/// Rows put together by folder, folders in the order in which they turn up and the rows of each in theirs.
std::vector<std::uint32_t> rows_by_folder(const FileList& files, bool all) {
  std::vector<std::uint32_t> places(files.folders().size());  // first how many, then where the next one goes
  std::vector<FolderId> folders;
  for (const ItemRecord& record : files.items()) {
    if (is_shown(record, all) && places[record.folder]++ == 0) folders.push_back(record.folder);
  }
  std::uint32_t place = 0;
  for (const FolderId folder : folders) place += std::exchange(places[folder], place);
  std::vector<std::uint32_t> rows(place);
  for (std::uint32_t row = 0; row < files.size(); ++row) {
    if (is_shown(files[row], all)) rows[places[files[row].folder]++] = row;
  }
  return rows;
}

/// The terminal's form.
class GroupedListing {
 public:
  GroupedListing(const FileList& files, std::string_view folder, Console& console)
      : files_(files), folder_(folder), console_(console), style_(console.style()), text_(console.out().buffer()) {}

  void print(const std::vector<std::uint32_t>& rows);

 private:
  void print_heading(FolderId folder);
  void print_group(const std::uint32_t* first, const std::uint32_t* last);
  void print_row(std::size_t row, std::size_t column);
  void print_change(const ItemRecord& record, std::size_t column);
  void print_status(std::size_t row, std::size_t column);
  void append_marked(std::string_view name, const std::vector<NameRange>& ranges, std::string_view style);
  void append_old_name(std::size_t column, std::size_t right_width);

  const FileList& files_;
  std::string_view folder_;
  Console& console_;
  const Style& style_;
  std::string& text_;
  std::string old_name_;
  std::string new_name_;
  NameComparison comparison_;  // finds nothing where nothing is coloured
};

void GroupedListing::print(const std::vector<std::uint32_t>& rows) {
  const std::uint32_t* const end = rows.data() + rows.size();
  for (const std::uint32_t* first = rows.data(); first != end && !console_.out().closed();) {
    const FolderId folder = files_[*first].folder;
    const std::uint32_t* last =
        std::find_if(first, end, [&](std::uint32_t row) { return files_[row].folder != folder; });
    print_heading(folder);
    print_group(first, last);
    first = last;
  }
}

void GroupedListing::print_heading(FolderId folder) {
  const std::string path = files_.folders().path(folder);
  text_ += style_.heading;
  console_.append_shown(relative_path(path, folder_), text_);
  text_ += style_.plain;
  text_ += '\n';
}

void GroupedListing::print_group(const std::uint32_t* first, const std::uint32_t* last) {
  const std::size_t widest = std::max<std::size_t>(console_.width() / 2, 20) - indent;
  std::size_t column = 0;
  for (const std::uint32_t* row = first; row != last; ++row) {
    old_name_.clear();
    console_.append_shown(files_[*row].name(), old_name_);
    const std::size_t width = display_width(old_name_);
    if (width <= widest) column = std::max(column, width);
  }
  for (const std::uint32_t* row = first; row != last && !console_.out().closed(); ++row) {
    print_row(*row, column);
    console_.out().flush_if_full();
  }
}

void GroupedListing::print_row(std::size_t row, std::size_t column) {
  const ItemRecord& record = files_[row];
  old_name_.clear();
  console_.append_shown(record.name(), old_name_);
  if (record.status == ItemStatus::proposed && record.problem == Problem::none) {
    print_change(record, column);
    if (record.warning != Warning::none)
      text_.append(style_.faint).append("  ⚠ ").append(warning_text(files_, row)).append(style_.plain);
  } else {
    print_status(row, column);
  }
  text_ += '\n';
}

// Blanks have no colour of their own: what holds one is shown reversed.
void GroupedListing::append_marked(std::string_view name, const std::vector<NameRange>& ranges,
                                   std::string_view style) {
  std::size_t at = 0;
  for (const NameRange range : ranges) {
    const std::string_view part = name.substr(range.start, range.end - range.start);
    text_ += name.substr(at, range.start - at);
    text_ += style;
    if (part.find(' ') != std::string_view::npos) text_ += style_.reversed;
    text_ += part;
    text_ += style_.plain;
    at = range.end;
  }
  text_ += name.substr(at);
}

// Room up to the arrow, or a new line when what follows would not fit behind it.
void GroupedListing::append_old_name(std::size_t column, std::size_t right_width) {
  const std::size_t width = display_width(old_name_);
  const std::size_t at = std::max(width, column);
  if (indent + at + arrow_width + right_width <= console_.width()) {
    text_.append(at - width, ' ');
  } else {
    text_ += "\n   ";
  }
}

void GroupedListing::print_change(const ItemRecord& record, std::size_t column) {
  new_name_.clear();
  console_.append_shown(record.proposed(), new_name_);
  if (!style_.plain.empty()) comparison_.compare(old_name_, new_name_);
  const bool marks = has_right_to_left(old_name_) || has_right_to_left(new_name_);
  text_.append(indent, ' ');
  append_marked(old_name_, comparison_.removed(), style_.removed);
  if (marks) text_ += left_to_right_mark;
  append_old_name(column, display_width(new_name_));
  text_ += arrow;
  append_marked(new_name_, comparison_.added(), style_.added);
  if (marks) text_ += left_to_right_mark;
}

void GroupedListing::print_status(std::size_t row, std::size_t column) {
  const bool problem = is_problem(files_[row]);
  new_name_ = status_and_reason(files_, row);
  append_wanted_name(files_, row, console_, new_name_);
  text_.append(indent, ' ');
  text_ += problem ? std::string_view() : style_.faint;
  text_ += old_name_;
  append_old_name(column, display_width(new_name_));
  text_ += problem ? " ✗ " : "   ";
  text_ += problem ? style_.problem : std::string_view();
  text_ += new_name_;
  text_ += style_.plain;
}

/// The pipe's form, in the order of the list.
class PlainListing {
 public:
  PlainListing(const FileList& files, std::string_view folder, Console& console)
      : files_(files), folder_(folder), console_(console), text_(console.out().buffer()) {}

  void print(std::size_t row) {
    const ItemRecord& record = files_[row];
    enter(record.folder);
    text_ += prefix_;
    console_.append_shown(record.name(), text_);
    if (record.status == ItemStatus::proposed && record.problem == Problem::none) {
      text_ += " -> ";
      console_.append_shown(record.proposed(), text_);
    } else {
      text_ += ": ";
      text_ += status_and_reason(files_, row);
      append_wanted_name(files_, row, console_, text_);
    }
    text_ += '\n';
    console_.out().flush_if_full();
  }

 private:
  void enter(FolderId folder) {
    if (folder == current_) return;
    current_ = folder;
    const std::string path = files_.folders().path(folder);
    const std::string_view shown = relative_path(path, folder_);
    prefix_.clear();
    if (shown != ".") console_.append_shown(shown, prefix_);
    if (shown != "." && shown != "/") prefix_ += '/';
  }

  const FileList& files_;
  std::string_view folder_;
  Console& console_;
  std::string& text_;
  FolderId current_ = FolderTable::none;
  std::string prefix_;
};

}  // namespace

std::string_view relative_path(std::string_view path, std::string_view folder) {
  if (folder.empty()) return path;
  if (path == folder) return ".";
  const std::size_t size = folder == "/" ? 0 : folder.size();
  const bool below = path.size() > size + 1 && path.starts_with(folder) && path[size] == '/';
  return below ? path.substr(size + 1) : path;
}

std::string status_and_reason(const FileList& files, std::size_t row) {
  if (files[row].status == ItemStatus::proposed) return problem_text(files, row);
  std::string text = translated(to_utf8(status_text(files[row].status)));
  const std::string_view reason = files.reason(row);
  if (!reason.empty()) text.append(": ").append(reason_in_words(reason));
  return text;
}

void print_listing(const FileList& files, std::string_view folder, bool all, Console& console) {
  if (console.out_is_terminal()) {
    GroupedListing(files, folder, console).print(rows_by_folder(files, all));
    return;
  }
  PlainListing listing(files, folder, console);
  for (std::size_t row = 0; row < files.size() && !console.out().closed(); ++row) {
    if (is_shown(files[row], all)) listing.print(row);
  }
}

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
  add_cause(tally.clashing, translated("another gets the name"));
  add_cause(tally.taken, translated("new name taken"));
  add_cause(tally.missing, translated("not found"));
  add_cause(tally.failed, translated("for the reason given"));
  return text + fmt::format("; {} {} ({})", tally.problems(), cannot, fmt::join(causes, ", "));
}

/// Problems that one thing helps against.
struct Remedy {
  Problem problem;
  std::optional<Holder> holder;  // of a taken name; none: any
  std::string_view title;
  std::string_view advice;
};
constexpr std::string_view numbers_them = to_translate("--on-problem number numbers them.");
constexpr auto remedies = std::to_array<Remedy>({
    {Problem::clash, {}, to_translate("Their name goes to an earlier one"), numbers_them},
    {Problem::taken, Holder::leaves, to_translate("Their name becomes free in the same run"),
     to_translate("--permute renames in an order that works.")},
    {Problem::taken, Holder::stays, to_translate("Their name is that of an item that stays"), numbers_them},
    {Problem::taken, Holder::unlisted, to_translate("Their name is there already"), numbers_them},
    {Problem::unwritable,
     {},
     to_translate("Their name cannot be on this disk"),
     to_translate("Make it shorter, or leave out what it cannot hold.")},
    {Problem::gone, {}, to_translate("Not there any more"), to_translate("See which files are meant.")},
    {Problem::no_access, {}, to_translate("Not to be renamed"), to_translate("See who owns them and their folder.")},
});

bool is_helped(const ItemRecord& record, const Remedy& remedy) {
  return record.problem == remedy.problem && (!remedy.holder || record.holder == *remedy.holder);
}

void tell_remedies(const RenameBatch& batch, Console& console) {
  for (const Remedy& remedy : remedies) {
    const auto helped =
        std::ranges::count_if(batch.files.items(), [&](const ItemRecord& record) { return is_helped(record, remedy); });
    if (helped == 0) continue;
    console.note(fmt::format("{}: {}. {}", translated(remedy.title), helped, translated(remedy.advice)));
  }
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
  if (tally.withheld > 0) {
    return translated("Nothing would be renamed, since not all of it can be{}",
                      rest_of_sentence(tally, translated("cannot be")));
  }
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
  if (console.out_is_terminal() && find_option(*line.command, "on-problem") != nullptr) tell_remedies(batch, console);
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
