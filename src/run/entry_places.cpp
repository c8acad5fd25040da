#include "run/entry_places.h"

#include <sys/stat.h>

#include <algorithm>
#include <functional>

namespace brindle {
namespace {

constexpr std::size_t none = SIZE_MAX;

std::string joined(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.back() != '/') path += '/';
  return path.append(name);
}
std::string source_of(const LogEntry& entry) {
  return joined(entry.source_folder, entry.source_name);
}
std::string target_of(const LogEntry& entry) {
  return joined(entry.target_folder, entry.target_name);
}

bool has_entry(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0;
}

template <class Index, class Path>
const Index& filled(Index& index, const LogFile& log, Path path) {
  if (!index.empty()) return index;
  for (std::size_t i = 0; i < log.entries.size(); ++i) {
    if (log.entries[i].fault.empty()) index[path(log.entries[i])].push_back(i);
  }
  return index;
}

// The last of the rising numbers below `limit`; none when there is no such one.
std::size_t last_below(const std::vector<std::size_t>& numbers, std::size_t limit) {
  const auto end = std::ranges::lower_bound(numbers, limit);
  return end == numbers.begin() ? none : *(end - 1);
}

}  // namespace

const EntryPlaces::Index& EntryPlaces::by_target() {
  return filled(by_target_, log_, target_of);
}
const EntryPlaces::Index& EntryPlaces::by_source() {
  return filled(by_source_, log_, source_of);
}

bool EntryPlaces::is_back(std::size_t entry) const {
  if (progress_.get(entry) == UndoMark::restored) return true;
  return has_entry(source_of(log_.entries[entry])) && !has_entry(target_of(log_.entries[entry]));
}

std::string EntryPlaces::place_of(std::string_view folder, std::size_t entry) {
  std::string place(folder);
  for (;;) {
    std::size_t above = none;
    std::size_t above_size = 0;
    for (std::size_t size = place.size(); size != std::string::npos && size > 0; size = place.rfind('/', size - 1)) {
      const auto found = by_target().find(place.substr(0, size));
      const std::size_t last = found == by_target_.end() ? none : last_below(found->second, entry);
      if (last == none || (above != none && last < above) || !is_back(last)) continue;
      above = last;
      above_size = size;
    }
    if (above == none) return place;
    entry = above;
    place = source_of(log_.entries[above]) + place.substr(above_size);
  }
}

// The entry still to come whose old name is this one's new name.
std::size_t EntryPlaces::find_holder(std::size_t entry) {
  const auto found = by_source().find(target_of(log_.entries[entry]));
  return found == by_source_.end() ? none : last_below(found->second, entry);
}

bool EntryPlaces::gave_up_its_new_name(std::size_t entry) {
  enum : std::uint8_t { unknown, yes, no };
  answers_.resize(log_.entries.size());
  std::vector<std::size_t> chain;
  std::uint8_t answer = unknown;
  for (std::size_t at = entry; answer == unknown;) {
    if (at == none || !has_entry(source_of(log_.entries[at]))) {
      answer = no;
    } else if (answers_[at] != unknown) {
      answer = answers_[at];
    } else {
      chain.push_back(at);
      if (!has_entry(target_of(log_.entries[at]))) answer = yes;
      at = find_holder(at);
    }
  }
  for (const std::size_t at : chain) answers_[at] = answer;
  return answer == yes;
}

}  // namespace brindle
