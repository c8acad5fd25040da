#include "run/run_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <string>
#include <string_view>

#include "list/open_folder.h"
#include "platform/file_name.h"
#include "text/hash.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::uint32_t nobody = UINT32_MAX;

bool is_ascii(std::string_view name) {
  return std::ranges::all_of(name, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// Bytes that are one letter in two cases get one value; others may share theirs, since names are compared afterwards.
std::uint64_t hash_ascii(std::string_view name, FolderId folder) {
  std::array<char, 256> lowered;
  const std::size_t size = std::min(name.size(), lowered.size());
  for (std::size_t i = 0; i < size; ++i) lowered[i] = static_cast<char>(name[i] | 0x20);
  return hash_bytes({lowered.data(), size}, folder);
}

// Alike for names that differ in letter case alone, also where the one is ASCII and the other is not.
std::uint64_t hash_ignoring_case(std::string_view name, FolderId folder) {
  if (is_ascii(name)) return hash_ascii(name, folder);
  thread_local std::u16string text;
  thread_local std::string bytes;
  text.clear();
  append_decoded(name, text);
  bytes.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = fold_unit(text, i);
    bytes.push_back(static_cast<char>(unit & 0xFFU));
    if (unit >= 0x80) bytes.push_back(static_cast<char>(unit >> 8U));
  }
  return hash_ascii(bytes, folder);
}

/// The rows by folder and present name.
class Holders {
 public:
  Holders(const FileList& files, std::span<const std::uint32_t> rows, const IsOneEntry& is_one_entry)
      : files_(files), rows_(rows), is_one_entry_(is_one_entry) {
    slots_.resize(std::bit_ceil(rows.size() + rows.size() / 2 + 1));
    for (std::uint32_t place = 0; place < rows.size(); ++place) put(place);
  }

  /// The place of the other row that has the name which this one is to get.
  std::uint32_t of_name_for(std::uint32_t place) const {
    const ItemRecord& record = files_[rows_[place]];
    const std::uint64_t hash = hash_ignoring_case(record.proposed(), record.folder);
    std::uint32_t alike = nobody;
    for (std::size_t slot = start_of(hash); slots_[slot] != 0; slot = next(slot)) {
      if (slots_[slot] >> 32U != hash >> 32U) continue;
      const auto candidate = static_cast<std::uint32_t>(slots_[slot]) - 1;
      const ItemRecord& holder = files_[rows_[candidate]];
      if (candidate == place || holder.folder != record.folder) continue;
      if (holder.name() == record.proposed()) return candidate;
      if (alike == nobody && differ_in_case_only(holder.name(), record.proposed())) alike = candidate;
    }
    if (alike == nobody) return nobody;
    return is_one_entry_(record.folder, record.proposed_data, files_[rows_[alike]].name_data) ? alike : nobody;
  }

 private:
  std::size_t start_of(std::uint64_t hash) const { return hash & (slots_.size() - 1); }
  std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  void put(std::uint32_t place) {
    const ItemRecord& record = files_[rows_[place]];
    const std::uint64_t hash = hash_ignoring_case(record.name(), record.folder);
    std::size_t slot = start_of(hash);
    while (slots_[slot] != 0) slot = next(slot);
    slots_[slot] = (hash >> 32U << 32U) | (place + 1);
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
    for (; place != nobody && states_[place] == State::unseen; place = holders_[place]) {
      states_[place] = State::waiting;
      waiting_.push_back(place);
    }
    if (place != nobody && states_[place] == State::waiting) add_cycle(place);
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

RunOrder order_of_run(const FileList& files, std::span<const std::uint32_t> rows, const IsOneEntry& is_one_entry) {
  std::vector<std::uint32_t> holders(rows.size());
  {
    const Holders by_name(files, rows, is_one_entry);
    for (std::uint32_t place = 0; place < rows.size(); ++place) holders[place] = by_name.of_name_for(place);
  }
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
