#include <algorithm>
#include <cstdint>
#include <deque>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "gather/list_rows.h"
#include "platform/ascii.h"
#include "platform/file_name.h"
#include "platform/folder_handle.h"
#include "platform/path.h"
#include "platform/real_path.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

/// The names in one folder. Where the disk may ignore case, the folder is listed once to tell how a name is written.
class FolderNames {
 public:
  explicit FolderNames(const FolderHandle& folder) : folder_(folder) {}

  /// The name of the entry that `name` leads to, as the disk has it. None when there is none.
  std::optional<std::string> stored_name(const std::string& name) {
    if (!folder_ || !folder_.exists(name.c_str())) return std::nullopt;
    if (tells_case_apart(name)) return name;
    list();
    if (names_.contains(name)) return name;
    const auto found = by_folded_name_.find(folded(decode_file_name(name)));
    return found == by_folded_name_.end() ? name : found->second;
  }

 private:
  // One existing name that is not there in other letters settles it for the folder.
  bool tells_case_apart(const std::string& name) {
    if (is_exact_ || listed_) return is_exact_;
    const std::string other = in_other_letters(name);
    is_exact_ = other != name && !folder_.exists(other.c_str());
    return is_exact_;
  }

  void list() {
    if (listed_) return;
    listed_ = true;
    FolderReader reader;
    FolderEntry entry;
    for (reader.start(folder_); reader.next(entry);) {
      names_.emplace(entry.name);
      by_folded_name_.emplace(folded(decode_file_name(entry.name)), entry.name);
    }
  }

  const FolderHandle& folder_;
  bool is_exact_ = false;
  bool listed_ = false;
  std::unordered_set<std::string> names_;
  std::unordered_map<std::u16string, std::string> by_folded_name_;
};

/// A folder that lines name, its links resolved.
class ListedFolder {
 public:
  // The current folder has no part in what a list means, so only absolute locations are looked at.
  explicit ListedFolder(std::string location) : path_(std::move(location)) {
    if (!path_.starts_with('/')) return;
    RealPath real = RealPaths({}).of(path_ + "/.");
    if (real.error != 0) return;
    path_ = std::move(real.path);
    handle_ = FolderHandle::open_real(path_);
  }
  ListedFolder(const ListedFolder&) = delete;
  ListedFolder& operator=(const ListedFolder&) = delete;

  FoundItem find(const ListRow& row, TextArena& texts) {
    const std::string name = disk_name(row.filename);
    const std::optional<std::string> stored = names_.stored_name(name);
    const std::string& own = stored ? *stored : name;
    const std::string new_name = disk_name(row.newFilename);
    return {texts.keep(path_of(own)), stored ? texts.keep(new_name.empty() ? own : new_name) : std::string_view(),
            stored.has_value()};
  }

 private:
  std::string path_of(const std::string& name) const {
    return path_.empty() ? name : join_path(without_trailing_slashes(path_), name);
  }

  std::string path_;
  FolderHandle handle_;
  FolderNames names_{handle_};
};

/// The numbers of the rows, those of one location together.
std::vector<std::uint32_t> by_location(std::span<const ListRow> rows) {
  std::unordered_map<std::string_view, std::uint32_t> numbers;
  std::vector<std::uint32_t> location_of;
  location_of.reserve(rows.size());
  for (const ListRow& row : rows) {
    const auto next = static_cast<std::uint32_t>(numbers.size());
    location_of.push_back(numbers.try_emplace(row.location, next).first->second);
  }
  std::vector<std::uint32_t> order(rows.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return location_of[a] < location_of[b]; });
  return order;
}

std::vector<FoundItem> look_up(std::span<const ListRow> rows, TextArena& texts) {
  std::vector<FoundItem> found(rows.size());
  std::optional<ListedFolder> folder;
  std::string_view location;
  for (const std::uint32_t i : by_location(rows)) {
    if (!folder || location != rows[i].location) folder.emplace(disk_location(rows[i].location));
    location = rows[i].location;
    found[i] = folder->find(rows[i], texts);
  }
  return found;
}

/// The rows that name nothing on disk and have fields in quotes, with the quotes taken off.
struct UnquotedRows {
  std::deque<std::string> texts;
  std::vector<ListRow> rows;
  std::vector<std::size_t> numbers;  // in the rows they were made of

  void add(const ListRow& row, std::size_t number) {
    ListRow plain;
    const bool name = take(row.filename, plain.filename);
    const bool new_name = take(row.newFilename, plain.newFilename);
    const bool location = take(row.location, plain.location);
    if (!(name || new_name || location) || !is_entry_name(plain.filename)) return;
    rows.push_back(plain);
    numbers.push_back(number);
  }

 private:
  bool take(std::string_view field, std::string_view& plain) {
    const bool quoted = without_quotes(field, texts.emplace_back());
    plain = texts.back();
    return quoted;
  }
};

}  // namespace

std::vector<FoundItem> look_up_rows(std::span<const ListRow> rows, TextArena& texts) {
  std::vector<FoundItem> found = look_up(rows, texts);
  UnquotedRows unquoted;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!found[i].exists) unquoted.add(rows[i], i);
  }
  const std::vector<FoundItem> without = look_up(unquoted.rows, texts);
  for (std::size_t i = 0; i < without.size(); ++i) {
    const std::size_t number = unquoted.numbers[i];
    const bool leads_nowhere = rows[number].location.starts_with('"');  // no absolute path begins so
    if (without[i].exists || leads_nowhere) found[number] = without[i];
  }
  return found;
}

}  // namespace brindle
