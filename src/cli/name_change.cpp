#include "cli/name_change.h"

#include <algorithm>

#include "cli/terminal_text.h"

namespace brindle {
namespace {

// What differs lies between a common beginning and a common end.
struct Frame {
  NameRange old_part;
  NameRange new_part;
};

Frame find_frame(std::string_view old_name, std::string_view new_name) {
  const std::size_t shorter = std::min(old_name.size(), new_name.size());
  std::size_t start = 0;
  while (start < shorter && old_name[start] == new_name[start]) ++start;
  start = std::min(character_start(old_name, start), character_start(new_name, start));
  std::size_t same_end = 0;
  while (same_end < shorter - start &&
         old_name[old_name.size() - same_end - 1] == new_name[new_name.size() - same_end - 1]) {
    ++same_end;
  }
  const auto splits = [&](std::string_view name) {
    return character_start(name, name.size() - same_end) != name.size() - same_end;
  };
  while (same_end > 0 && (splits(old_name) || splits(new_name))) --same_end;
  return {{start, old_name.size() - same_end}, {start, new_name.size() - same_end}};
}

void split_characters(std::string_view name, NameRange part, std::vector<NameRange>& characters) {
  characters.clear();
  for (std::size_t start = part.start; start < part.end;) {
    std::size_t end = start + 1;
    while (end < part.end && character_start(name, end) != end) ++end;
    characters.push_back({start, end});
    start = end;
  }
}

void append_range(std::vector<NameRange>& ranges, NameRange range) {
  if (!ranges.empty() && ranges.back().end == range.start) {
    ranges.back().end = range.end;
  } else if (range.start != range.end) {
    ranges.push_back(range);
  }
}

// Beyond this, or with less than a third in common, letters that happen to agree would only be noise.
constexpr std::size_t close_limit = 80;

std::string_view text_of(std::string_view name, NameRange range) {
  return name.substr(range.start, range.end - range.start);
}

}  // namespace

void NameComparison::compare(std::string_view old_name, std::string_view new_name) {
  removed_.clear();
  added_.clear();
  const Frame frame = find_frame(old_name, new_name);
  split_characters(old_name, frame.old_part, old_characters_);
  split_characters(new_name, frame.new_part, new_characters_);
  const std::size_t longer = std::max(old_characters_.size(), new_characters_.size());
  if (longer <= close_limit) compare_closely(old_name, new_name);
  const bool worth_it = longer <= close_limit && std::size_t{common_.front()} * 3 >= longer;
  if (worth_it) return;
  removed_.clear();
  added_.clear();
  append_range(removed_, frame.old_part);
  append_range(added_, frame.new_part);
}

// The longest sequence of characters that both have keeps its looks.
void NameComparison::compare_closely(std::string_view old_name, std::string_view new_name) {
  old_ = old_name;
  new_ = new_name;
  measure();
  const std::size_t width = new_characters_.size() + 1;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < old_characters_.size() || j < new_characters_.size()) {
    const bool both = i < old_characters_.size() && j < new_characters_.size();
    if (both && text_of(old_, old_characters_[i]) == text_of(new_, new_characters_[j])) {
      ++i;
      ++j;
    } else if (!both ? i < old_characters_.size() : common_[(i + 1) * width + j] >= common_[i * width + j + 1]) {
      append_range(removed_, old_characters_[i++]);
    } else {
      append_range(added_, new_characters_[j++]);
    }
  }
}

void NameComparison::measure() {
  const std::size_t width = new_characters_.size() + 1;
  common_.assign((old_characters_.size() + 1) * width, 0);
  for (std::size_t i = old_characters_.size(); i-- > 0;) {
    for (std::size_t j = new_characters_.size(); j-- > 0;) {
      const bool same = text_of(old_, old_characters_[i]) == text_of(new_, new_characters_[j]);
      const std::uint8_t skipped = std::max(common_[(i + 1) * width + j], common_[i * width + j + 1]);
      common_[i * width + j] = same ? static_cast<std::uint8_t>(common_[(i + 1) * width + j + 1] + 1) : skipped;
    }
  }
}

}  // namespace brindle
