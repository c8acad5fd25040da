#include "metadata/xmp_text.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/ascii.h"
#include "platform/byte_source.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

constexpr std::uint64_t file_limit = std::uint64_t{4} << 30U;
constexpr std::size_t piece_size = 256U << 10U;
constexpr std::uint64_t xmp_value_limit = 64U << 10U;
constexpr std::uint64_t nowhere = UINT64_MAX;

struct Tag {
  std::string_view text;
  bool any_case = false;
  std::uint64_t found = nowhere;
};

// An opening and a closing tag for each entry.
using Tags = std::array<Tag, 2 * xmp_entry_count>;

constexpr Tags all_tags = {{{"<xmpRights:Marked>", true},
                            {"</xmpRights:Marked>", true},
                            {"<xmpRights:WebStatement>"},
                            {"</xmpRights:WebStatement>"},
                            {"<photoshop:DateCreated>"},
                            {"</photoshop:DateCreated>"}}};
constexpr std::size_t longest_tag = 25;

bool equal(std::string_view bytes, const Tag& tag) {
  return tag.any_case ? equal_ignoring_case(bytes, tag.text) : bytes == tag.text;
}

// No tag begins with anything else: most of a picture's "<" are told apart by one look.
bool may_begin_tag(char second) {
  return second == 'x' || second == 'X' || second == 'p' || second == '/';
}

class TagSearch {
 public:
  TagSearch(const RegularFile& file, XmpEntries entries) : file_(file), tags_(all_tags) {
    for (std::size_t i = 0; i < tags_.size(); ++i) {
      if (entries.wanted[i / 2]) missing_.push_back(&tags_[i]);
    }
  }

  void run() {
    std::vector<char> buffer(piece_size);
    std::uint64_t offset = 0;
    while (!missing_.empty()) {
      const std::size_t size = file_.read_at(offset, buffer.data(), buffer.size());
      if (size < 2) return;
      search({buffer.data(), size}, offset);
      if (size < buffer.size()) return;
      offset += size - longest_tag;  // a tag may lie across the end
    }
  }

  std::optional<std::u16string> between(std::size_t entry) const {
    const Tag& open = tags_[2 * entry];
    const Tag& close = tags_[2 * entry + 1];
    if (open.found == nowhere || close.found == nowhere) return std::nullopt;
    const std::uint64_t start = open.found + open.text.size();
    if (close.found < start || close.found - start > xmp_value_limit) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(close.found - start), '\0');
    bytes.resize(file_.read_at(start, bytes.data(), bytes.size()));
    return decode_text(bytes);
  }

 private:
  void search(std::string_view piece, std::uint64_t offset) {
    std::size_t at = piece.find('<');
    for (; at < piece.size() - 1 && !missing_.empty(); at = piece.find('<', at + 1)) {
      if (may_begin_tag(piece[at + 1])) compare(piece.substr(at), offset + at);
    }
  }

  void compare(std::string_view rest, std::uint64_t offset) {
    const auto found = std::find_if(missing_.begin(), missing_.end(),
                                    [rest](const Tag* tag) { return equal(rest.substr(0, tag->text.size()), *tag); });
    if (found == missing_.end()) return;
    (*found)->found = offset;
    missing_.erase(found);
  }

  const RegularFile& file_;
  Tags tags_;
  std::vector<Tag*> missing_;
};

}  // namespace

bool XmpEntries::any() const {
  return std::find(wanted.begin(), wanted.end(), true) != wanted.end();
}

XmpTexts find_xmp_texts(const std::string& path, XmpEntries entries) {
  XmpTexts texts;
  if (!entries.any()) return texts;
  const RegularFile file = RegularFile::open(path);
  if (!file || file.size() > file_limit) return texts;
  TagSearch search(file, entries);
  search.run();
  for (std::size_t i = 0; i < xmp_entry_count; ++i) texts.entries[i] = search.between(i);
  return texts;
}

}  // namespace brindle
