#include "run/run_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "list/open_folder.h"
#include "platform/file_name.h"
#include "text/hash.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::uint32_t no_holder = UINT32_MAX;

constexpr std::uint64_t high_bits = 0x8080808080808080U;
constexpr std::uint64_t case_bits = 0x2020202020202020U;

std::uint64_t word_at(const char* bytes, std::size_t size) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, size);
  return word;
}

// Bytes that are one letter in two cases get one value; others may share theirs, since names are compared afterwards.
// Nothing where a byte is not ASCII.
std::optional<std::uint64_t> hash_ascii(std::string_view name, FolderId folder) {
  std::uint64_t hash = (folder + 1) * 0x9E3779B97F4A7C15U ^ name.size();
  std::uint64_t all = 0;
  const auto take = [&](std::uint64_t word) {
    all |= word;
    hash = hash_detail::mix(hash ^ (word | case_bits), 0xA0761D6478BD642FU);
  };
  const char* at = name.data();
  std::size_t left = name.size();
  for (; left > 8; left -= 8, at += 8) take(word_at(at, 8));
  // Most names are long enough for the last bytes to be read as a word once more.
  take(name.size() >= 8 ? word_at(at + left - 8, 8) : word_at(at, left));
  if ((all & high_bits) != 0) return std::nullopt;
  return hash_detail::mix(hash, 0x8EBC6AF09C88C6E3U);
}

// Alike for names that differ in letter case alone, also where the one is ASCII and the other is not.
std::uint64_t hash_ignoring_case(std::string_view name, FolderId folder) {
  if (const auto hash = hash_ascii(name, folder)) return *hash;
  thread_local std::u16string text;
  thread_local std::string bytes;
  text.clear();
  append_decoded(name, text);
  bytes.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = fold_unit(text, i);
    bytes.push_back(static_cast<char>(unit & 0x7FU));
    if (unit >= 0x80) bytes.push_back(static_cast<char>(unit >> 7U & 0x7FU));
  }
  return *hash_ascii(bytes, folder);
}

/// The rows by folder and present name.
class Holders {
 public:
  Holders(const FileList& files, std::span<const std::uint32_t> rows, const IsOneEntry& is_one_entry)
      : files_(files), rows_(rows), is_one_entry_(is_one_entry) {
    slots_.resize(std::bit_ceil(rows.size() + rows.size() / 2 + 1));
  }

  /// For each row the place of the other one that has the name which it is to get; no_holder when there is none.
  std::vector<std::uint32_t> find_all() {
    for_each_hash(&ItemRecord::name, [this](std::uint32_t place, std::uint64_t hash) { put(place, hash); });
    std::vector<std::uint32_t> holders(rows_.size());
    for_each_hash(&ItemRecord::proposed,
                  [&](std::uint32_t place, std::uint64_t hash) { holders[place] = of_name_for(place, hash); });
    return holders;
  }

 private:
  // The table is larger than what the processor keeps near, so it is told early what will be needed.
  template <class Name, class Use>
  void for_each_hash(Name name, Use use) {
    constexpr std::uint32_t block = 32;
    std::array<std::uint64_t, block> hashes{};
    const auto count = static_cast<std::uint32_t>(rows_.size());
    for (std::uint32_t first = 0; first < count; first += block) {
      const std::uint32_t size = std::min(block, count - first);
      for (std::uint32_t i = 0; i < size; ++i) {
        const ItemRecord& record = files_[rows_[first + i]];
        hashes[i] = hash_ignoring_case((record.*name)(), record.folder);
        __builtin_prefetch(&slots_[start_of(hashes[i])]);
      }
      for (std::uint32_t i = 0; i < size; ++i) use(first + i, hashes[i]);
    }
  }

  std::size_t start_of(std::uint64_t hash) const { return hash & (slots_.size() - 1); }
  std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  void put(std::uint32_t place, std::uint64_t hash) {
    std::size_t slot = start_of(hash);
    while (slots_[slot] != 0) slot = next(slot);
    slots_[slot] = (hash >> 32U << 32U) | (place + 1);
  }

  std::uint32_t of_name_for(std::uint32_t place, std::uint64_t hash) const {
    const ItemRecord& record = files_[rows_[place]];
    std::uint32_t alike = no_holder;
    for (std::size_t slot = start_of(hash); slots_[slot] != 0; slot = next(slot)) {
      if (slots_[slot] >> 32U != hash >> 32U) continue;
      const auto candidate = static_cast<std::uint32_t>(slots_[slot]) - 1;
      const ItemRecord& holder = files_[rows_[candidate]];
      if (candidate == place || holder.folder != record.folder) continue;
      if (holder.name() == record.proposed()) return candidate;
      if (alike == no_holder && differ_in_case_only(holder.name(), record.proposed())) alike = candidate;
    }
    if (alike == no_holder) return no_holder;
    return is_one_entry_(record.folder, record.proposed_data, files_[rows_[alike]].name_data) ? alike : no_holder;
  }

  const FileList& files_;
  std::span<const std::uint32_t> rows_;
  const IsOneEntry& is_one_entry_;
  std::vector<std::uint64_t> slots_;  // the upper half of the hash, and the place + 1; 0 is free
};

/// Goes from each row to whoever must leave before it, and comes back.
class Arrangement {
 public:
  Arrangement(std::span<const std::uint32_t> rows, const std::vector<std::uint32_t>& holders)
      : rows_(rows), holders_(holders), states_(rows.size(), State::unseen) {
    order_.rows.reserve(rows.size());
  }

  RunOrder make() {
    for (std::uint32_t place = 0; place < rows_.size(); ++place) add(place);
    return std::move(order_);
  }

 private:
  enum class State : std::uint8_t { unseen, waiting, added };

  void add(std::uint32_t place) {
    for (; place != no_holder && states_[place] == State::unseen; place = holders_[place]) {
      states_[place] = State::waiting;
      waiting_.push_back(place);
    }
    if (place != no_holder && states_[place] == State::waiting) add_cycle(place);
    for (; !waiting_.empty(); waiting_.pop_back()) append(waiting_.back());
  }
  void add_cycle(std::uint32_t first) {
    const auto begin = std::find(waiting_.rbegin(), waiting_.rend(), first).base() - 1;
    order_.cycles.push_back(
        {static_cast<std::uint32_t>(order_.rows.size()), static_cast<std::uint32_t>(waiting_.end() - begin)});
    std::for_each(begin, waiting_.end(), [&](std::uint32_t place) { append(place); });
    waiting_.erase(begin, waiting_.end());
  }
  void append(std::uint32_t place) {
    order_.rows.push_back(rows_[place]);
    states_[place] = State::added;
  }

  std::span<const std::uint32_t> rows_;
  const std::vector<std::uint32_t>& holders_;
  std::vector<State> states_;
  std::vector<std::uint32_t> waiting_;
  RunOrder order_;
};

}  // namespace

CyclesAhead::CyclesAhead(std::span<const RowCycle> cycles, std::uint32_t place)
    : ahead_(std::ranges::lower_bound(cycles, place, {}, &RowCycle::first), cycles.end()) {}

const RowCycle* CyclesAhead::at(std::uint32_t place) {
  while (!ahead_.empty() && ahead_.front().first < place) ahead_ = ahead_.subspan(1);
  return !ahead_.empty() && ahead_.front().first == place ? &ahead_.front() : nullptr;
}

RunOrder order_of_run(const FileList& files, std::span<const std::uint32_t> rows, const IsOneEntry& is_one_entry) {
  const std::vector<std::uint32_t> holders = Holders(files, rows, is_one_entry).find_all();
  return Arrangement(rows, holders).make();
}

IsOneEntry ask_disk_for_one_entry(const FileList& files) {
  return [&files, open = std::make_shared<OpenFolder>()](FolderId folder, const char* name, const char* other) {
    open->open(files.folders(), folder);
    EntryFacts one;
    EntryFacts two;
    const FolderHandle& handle = open->handle();
    return handle && handle.look_up(name, one) && handle.look_up(other, two) && one.inode == two.inode &&
           one.device == two.device;
  };
}

}  // namespace brindle
