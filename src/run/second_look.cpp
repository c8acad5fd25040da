#include "run/second_look.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/file_name.h"
#include "run/name_table.h"
#include "text/hash.h"
#include "text/name_fold.h"
#include "text/string_utilities.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::uint32_t no_row = NameTable::no_row;

using NameOfRow = std::string_view (ItemRecord::*)() const;

/// Names of rows in their folders, each found by its own spelling and by any that is alike.
class NamesInFolders {
 public:
  struct Key {
    FolderId folder;
    std::string_view name;
    std::uint64_t hash;  // of the folded name
  };
  struct Found {
    std::uint32_t same = no_row;
    std::uint32_t alike = no_row;
  };

  NamesInFolders(const FileList& files, NameOfRow name, std::size_t rows) : files_(files), name_(name), rows_(rows) {}

  static Key key(FolderId folder, std::string_view name) {
    return {folder, name, folded_name_hash(name, (folder + std::uint64_t{1}) * 0x9E3779B97F4A7C15U)};
  }
  void prefetch(const Key& key) const { rows_.prefetch(key.hash); }

  Found find(const Key& key) const {
    const std::uint32_t first = rows_.find(key.hash, [&](std::uint32_t row) {
      return files_[row].folder == key.folder && are_alike(name_of(row), key.name);
    });
    if (first == no_row || name_of(first) == key.name) return {first, no_row};
    const std::uint32_t same = rows_.find(exact_hash(key), [&](std::uint32_t row) {
      return files_[row].folder == key.folder && name_of(row) == key.name;
    });
    return {same, first};
  }

  // The first of alike names stands under their common hash, each other under its own: however many there are, a
  // look-up goes past few.
  void add(const Key& key, const Found& found, std::uint32_t row) {
    rows_.add(found.alike == no_row ? key.hash : exact_hash(key), row);
  }

 private:
  std::string_view name_of(std::uint32_t row) const { return (files_[row].*name_)(); }
  static std::uint64_t exact_hash(const Key& key) { return hash_bytes(key.name, key.hash); }

  const FileList& files_;
  NameOfRow name_;
  NameTable rows_;
};

// Where the extension of a name begins, its dot included; the end where it has none.
std::size_t extension_start(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? name.size() : dot;
}

std::string filled_in(const std::string& pattern, int number) {
  std::string text = pattern;
  return text.replace(pattern.find("{}"), 2, std::to_string(number));
}

class Look {
 public:
  Look(FileList& files, const RunChoices& choices, DiskNames* disk_names, bool extensions_may_change)
      : files_(files),
        choices_(choices),
        disk_names_(disk_names),
        extensions_may_change_(extensions_may_change),
        pattern_(to_utf8(on_disk(choices.number_pattern))) {}

  SecondLookResult run();

 private:
  enum class State : std::uint8_t { stays, wants, held, gone };
  using Key = NamesInFolders::Key;
  using Found = NamesInFolders::Found;

  template <class Each>
  void for_each_key(NameOfRow name, std::uint8_t states, Each each);
  static constexpr std::uint8_t bit(State state) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(state));
  }

  void sort_out();
  Found as_on_disk(const Key& key, Found found, NameOfRow name, std::uint32_t sample);
  bool are_told_apart(FolderId folder, std::string_view a, std::string_view b, std::string_view sample);
  void list_present_names();
  void claim(std::uint32_t row, const Key& key);
  bool is_held(std::uint32_t row, const Key& key);
  void refuse(std::uint32_t row, std::uint32_t holder);
  void take_back(std::uint32_t row);
  void settle_clash(std::uint32_t row, std::uint32_t winner);
  void number(std::uint32_t row);
  bool is_free(FolderId folder, const std::string& name);
  void resolve();
  void resolve_chain(std::uint32_t row);
  void name_holders();
  void note_change(std::uint32_t row);
  SecondLookResult sum_up();

  FileList& files_;
  const RunChoices& choices_;
  DiskNames* disk_names_;
  bool extensions_may_change_;
  std::string pattern_;  // of numbers, in its on-disk form
  std::vector<State> states_;
  std::size_t candidates_ = 0;
  bool asks_list_ = false;                              // who has a name is looked up in the list
  std::optional<NamesInFolders> now_;                   // what items are called: those that stay, or all
  std::optional<NamesInFolders> then_;                  // what items are to be called
  std::vector<std::uint32_t> against_;                  // by row: the item that has, or gets, its name
  std::vector<std::uint8_t> told_apart_;                // by folder: what its disk is known to do
  std::unordered_map<std::uint64_t, int> next_number_;  // by the hash of folder and name
};

// The names are hashed some rows before they are looked up: in a list of a million each look-up would wait for memory.
template <class Each>
void Look::for_each_key(NameOfRow name, std::uint8_t states, Each each) {
  constexpr std::size_t ahead = 16;
  std::array<std::pair<std::uint32_t, Key>, ahead> keys;
  std::size_t filled = 0;
  const auto flush = [&] {
    for (std::size_t i = 0; i < filled; ++i) each(keys[i].first, keys[i].second);
    filled = 0;
  };
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    if ((states & bit(states_[row])) == 0) continue;
    const ItemRecord& record = files_[row];
    keys[filled] = {row, NamesInFolders::key(record.folder, (record.*name)())};
    now_->prefetch(keys[filled].second);
    if (then_) then_->prefetch(keys[filled].second);
    if (++filled == ahead) flush();
  }
  flush();
}

void Look::sort_out() {
  states_.reserve(files_.size());
  bool some_are_held = false;
  for (const ItemRecord& record : files_.items()) {
    const bool is_held = record.problem == Problem::taken;
    states_.push_back(record.carries_new_name           ? State::wants
                      : is_held                         ? State::held
                      : record.problem == Problem::gone ? State::gone
                                                        : State::stays);
    some_are_held = some_are_held || is_held;
    if (record.carries_new_name || is_held) ++candidates_;
  }
  asks_list_ = disk_names_ == nullptr || some_are_held;
  if (asks_list_) against_.assign(files_.size(), no_row);
}

bool Look::are_told_apart(FolderId folder, std::string_view a, std::string_view b, std::string_view sample) {
  if (disk_names_ == nullptr) return true;
  if (told_apart_.empty()) told_apart_.resize(files_.folders().size());
  const unsigned shift = differ_in_case_only(a, b) ? 0 : 2;
  std::uint8_t& known = told_apart_[folder];
  if ((known >> shift & 1U) == 0) {
    disk_names_->enter(folder, 1);
    known |= static_cast<std::uint8_t>((disk_names_->tells_apart(a, b, sample) ? 3U : 1U) << shift);
  }
  return (known >> shift & 2U) != 0;
}

// On a disk that does not tell them apart, an alike name is the same.
Look::Found Look::as_on_disk(const Key& key, Found found, NameOfRow name, std::uint32_t sample) {
  if (found.same != no_row || found.alike == no_row) return found;
  if (are_told_apart(key.folder, key.name, (files_[found.alike].*name)(), files_[sample].name())) return found;
  return {found.alike, no_row};
}

void Look::list_present_names() {
  const std::uint8_t listed = asks_list_ ? bit(State::stays) | bit(State::wants) | bit(State::held) : bit(State::stays);
  const std::size_t rows = asks_list_ ? files_.size() : files_.size() - candidates_;
  now_.emplace(files_, &ItemRecord::name, rows);
  for_each_key(&ItemRecord::name, listed,
               [&](std::uint32_t row, const Key& key) { now_->add(key, now_->find(key), row); });
}

void Look::refuse(std::uint32_t row, std::uint32_t holder) {
  against_[row] = holder;
  states_[row] = State::stays;
  take_back(row);
  if (choices_.on_problem == OnProblem::number) number(row);
}

// The row keeps its name, because the other is taken: in the way that the test against the disk says it.
void Look::take_back(std::uint32_t row) {
  const ItemRecord& record = files_[row];
  const bool is_seen_on_disk = disk_names_ != nullptr && !differ_in_case_only(record.name(), record.proposed());
  if (is_seen_on_disk) files_.set_status(row, already_exists(record.type()));
  files_.set_problem(row, Problem::taken);
}

// Whether another item has the name for good, or an entry that is not listed. Where its holder wants another, resolve()
// finds out who would leave.
bool Look::is_held(std::uint32_t row, const Key& key) {
  const Found found = as_on_disk(key, now_->find(key), &ItemRecord::name, row);
  const bool is_neighbour = found.alike != no_row && found.alike != row && states_[found.alike] == State::stays;
  if (is_neighbour) files_.set_warning(row, Warning::alike, files_[found.alike].name_data);
  if (!asks_list_ || (disk_names_ != nullptr && states_[row] == State::wants)) return false;
  const std::uint32_t holder = found.same == row ? no_row : found.same;
  if (holder == no_row && states_[row] == State::wants) return false;
  const bool leaves = holder != no_row && (states_[holder] == State::wants || states_[holder] == State::held);
  against_[row] = holder;
  if (!leaves || (!choices_.permute && choices_.on_problem == OnProblem::number)) {
    refuse(row, holder);
    return true;
  }
  states_[row] = State::held;
  files_.set_status(row, ItemStatus::proposed);
  return false;
}

void Look::settle_clash(std::uint32_t row, std::uint32_t winner) {
  states_[row] = State::stays;
  if (choices_.on_problem == OnProblem::number) return number(row);
  if (asks_list_) against_[row] = winner;
  files_.set_problem(row, Problem::clash, files_[winner].name_data);
  files_.set_warning(winner, Warning::contested, files_[row].name_data);
}

// One item's turn: the first in order gets a name.
void Look::claim(std::uint32_t row, const Key& key) {
  if (is_held(row, key)) return;
  const Found found = as_on_disk(key, then_->find(key), &ItemRecord::proposed, row);
  if (found.same != no_row) return settle_clash(row, found.same);
  if (found.alike != no_row) {
    files_.set_warning(row, Warning::alike, files_[found.alike].name_data);
    files_.set_warning(found.alike, Warning::alike, files_[row].name_data);
  }
  then_->add(key, found, row);
}

bool Look::is_free(FolderId folder, const std::string& name) {
  const Key key = NamesInFolders::key(folder, name);
  const Found now = now_->find(key);
  const Found then = then_->find(key);
  if (now.same != no_row || now.alike != no_row || then.same != no_row || then.alike != no_row) return false;
  if (disk_names_ == nullptr) return true;
  disk_names_->enter(folder, 1);
  return !disk_names_->exists(name);
}

// Numbers once passed over are taken for good, so the search goes on from the last one.
void Look::number(std::uint32_t row) {
  const ItemRecord& record = files_[row];
  const std::string wanted(record.proposed());
  const std::size_t end = record.is_folder() ? wanted.size() : extension_start(wanted);
  std::size_t limit = 255;
  if (disk_names_ != nullptr) {
    disk_names_->enter(record.folder, 1);
    limit = disk_names_->name_limit();
  }
  int& next = next_number_.try_emplace(NamesInFolders::key(record.folder, wanted).hash, 2).first->second;
  std::string name;
  do {
    name = wanted.substr(0, end) + filled_in(pattern_, next++) + wanted.substr(end);
  } while (name.size() <= limit && !is_free(record.folder, name));
  if (name.size() > limit) return files_.refuse_unwritable(row, NameFault::too_long, name, limit);
  files_.promise(row, name);
  states_[row] = State::wants;
  if (asks_list_) against_[row] = no_row;
  const Key key = NamesInFolders::key(record.folder, record.proposed());
  then_->add(key, then_->find(key), row);
}

// The item gets its name exactly when the one that has it leaves: along the chain to its free end, or round a cycle.
void Look::resolve_chain(std::uint32_t row) {
  std::vector<std::uint32_t> chain;
  std::uint32_t at = row;
  while (states_[at] == State::held) {
    chain.push_back(at);
    states_[at] = State::wants;  // so that a cycle ends where it began
    at = against_[at];
  }
  while (!chain.empty() && states_[at] == State::stays) {
    refuse(chain.back(), at);
    at = chain.back();
    chain.pop_back();
  }
}

void Look::resolve() {
  if (!asks_list_) return;
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    if (states_[row] == State::held) resolve_chain(row);
  }
}

// Now that it is known who leaves, or would: without permutations that is no help. An item that lost its name to one
// that does not get it either wants a taken one.
void Look::name_holders() {
  if (!asks_list_) return;
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    std::uint32_t other = against_[row];
    if (other == no_row) continue;
    if (states_[row] == State::wants && !choices_.permute) take_back(row);
    if (files_[row].problem == Problem::clash && !files_[other].carries_new_name) {
      other = against_[other];
      take_back(row);
    }
    if (files_[row].problem != Problem::taken || other == no_row) continue;
    files_.set_holder(row, states_[other] == State::wants ? Holder::leaves : Holder::stays);
  }
}

void Look::note_change(std::uint32_t row) {
  const ItemRecord& record = files_[row];
  const std::string_view old_name = record.name();
  const std::string_view new_name = record.proposed();
  const bool keeps_extension = record.is_folder() || extensions_may_change_ ||
                               old_name.substr(extension_start(old_name)) == new_name.substr(extension_start(new_name));
  if (!keeps_extension) files_.set_warning(row, Warning::extension);
  if (new_name.front() == '.' && old_name.front() != '.') files_.set_warning(row, Warning::hidden);
}

SecondLookResult Look::sum_up() {
  SecondLookResult result;
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    const ItemRecord& record = files_[row];
    if (record.carries_new_name) note_change(row);
    if (record.carries_new_name) ++result.promised;
    if (record.problem != Problem::none || record.has_failed()) ++result.problems;
    if (record.warning != Warning::none) ++result.warnings;
  }
  if (choices_.on_problem != OnProblem::none || result.problems == 0) return result;
  for (std::uint32_t row = 0; row < files_.size(); ++row) files_.withhold(row);
  result.promised = 0;
  return result;
}

SecondLookResult Look::run() {
  sort_out();
  if (candidates_ == 0) return sum_up();
  list_present_names();
  // A name that was numbered stands there beside the one it was to be.
  then_.emplace(files_, &ItemRecord::proposed,
                choices_.on_problem == OnProblem::number ? 2 * candidates_ : candidates_);
  for_each_key(&ItemRecord::proposed, bit(State::wants) | bit(State::held),
               [&](std::uint32_t row, const Key& key) { claim(row, key); });
  resolve();
  name_holders();
  return sum_up();
}

}  // namespace

SecondLookResult look_again(FileList& files, const RunChoices& choices, DiskNames* disk_names,
                            bool extensions_may_change) {
  return Look(files, choices, disk_names, extensions_may_change).run();
}

}  // namespace brindle
