#include "list/file_order.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <span>
#include <tuple>
#include <vector>

#include "platform/file_name.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr bool is_digit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// A run of digits becomes: the byte '0' (so that numbers stand among other characters where digits do), how many digits
// it has without leading zeros, and these. Longer numbers are larger, equally long ones compare digit by digit. No byte
// of a key is zero.
void append_number_head(std::size_t digits, std::string& key) {
  key.push_back('0');
  for (; digits >= 254; digits -= 254) key.push_back('\xFF');
  key.push_back(static_cast<char>(digits + 1));
}

std::size_t append_number(std::u16string_view text, std::size_t i, std::string& key) {
  while (i < text.size() && text[i] == u'0') ++i;
  std::size_t end = i;
  while (end < text.size() && is_digit(text[end])) ++end;
  append_number_head(end - i, key);
  for (; i < end; ++i) key.push_back(static_cast<char>(text[i]));
  return end;
}

void append_key(std::u16string_view text, std::string& key) {
  const std::u16string name = folded(text);
  std::size_t plain = 0;
  for (std::size_t i = 0; i < name.size();) {
    if (!is_digit(name[i])) {
      ++i;
      continue;
    }
    key += to_utf8(std::u16string_view(name).substr(plain, i - plain));
    plain = i = append_number(name, i, key);
  }
  key += to_utf8(std::u16string_view(name).substr(plain));
}

// Most names are ASCII: one pass over the bytes, no conversion.
bool append_ascii_key(std::string_view name, std::string& key) {
  const std::size_t old_size = key.size();
  for (std::size_t i = 0; i < name.size();) {
    const auto c = static_cast<unsigned char>(name[i]);
    if (c >= 0x80) {
      key.resize(old_size);
      return false;
    }
    if (c < '0' || c > '9') {
      key.push_back(static_cast<char>(c >= 'A' && c <= 'Z' ? c + 0x20 : c));
      ++i;
      continue;
    }
    while (i < name.size() && name[i] == '0') ++i;
    const std::size_t begin = i;
    while (i < name.size() && name[i] >= '0' && name[i] <= '9') ++i;
    append_number_head(i - begin, key);
    key.append(name, begin, i - begin);
  }
  return true;
}

/// Keys one after the other, each ended by the start of the next.
class SortKeys {
 public:
  SortKeys(std::size_t count, std::size_t name_bytes) {
    starts_.reserve(count + 1);
    bytes_.reserve(name_bytes + 2 * count);  // a number in a name makes its key two bytes longer
  }
  void add(std::string_view name) {
    starts_.push_back(bytes_.size());
    append_sort_key(name, bytes_);
  }
  void add(const AppendRowKey& append_key, std::size_t row) {
    starts_.push_back(bytes_.size());
    append_key(row, bytes_);
  }
  void end() { starts_.push_back(bytes_.size()); }

  std::size_t size(std::uint32_t i) const { return starts_[i + 1] - starts_[i]; }
  std::string_view operator[](std::uint32_t i) const { return std::string_view(bytes_).substr(starts_[i], size(i)); }
  /// Eight bytes of a key as a number that orders as they do; zeros behind its end (no key holds a zero).
  std::uint64_t eight_bytes(std::uint32_t i, std::size_t offset) const {
    const std::string_view key = (*this)[i].substr(std::min(offset, size(i)));
    if (key.size() >= 8) {
      std::uint64_t word = 0;
      std::memcpy(&word, key.data(), 8);
      return __builtin_bswap64(word);
    }
    std::uint64_t word = 0;
    for (std::size_t k = 0; k < 8; ++k)
      word = (word << 8U) | (k < key.size() ? static_cast<unsigned char>(key[k]) : 0U);
    return word;
  }

 private:
  std::string bytes_;
  std::vector<std::size_t> starts_;
};

/// A row with eight bytes of its key, so that comparing touches no other memory.
struct SortRow {
  std::uint64_t part = 0;
  std::uint32_t row = 0;
};

// Sorts by the keys' bytes from `offset` on; rows with equal keys keep their order. Rows that agree in eight bytes are
// sorted among themselves by the next eight.
void sort_rows(std::span<SortRow> rows, const SortKeys& keys, std::size_t offset) {
  for (SortRow& row : rows) row.part = keys.eight_bytes(row.row, offset);
  std::sort(rows.begin(), rows.end(),
            [](const SortRow& a, const SortRow& b) { return a.part != b.part ? a.part < b.part : a.row < b.row; });
  for (std::size_t begin = 0; begin < rows.size();) {
    std::size_t end = begin + 1;
    while (end < rows.size() && rows[end].part == rows[begin].part) ++end;
    // A zero as the last byte: these keys are at their end.
    if (end - begin > 1 && (rows[begin].part & 0xFFU) != 0)
      sort_rows(rows.subspan(begin, end - begin), keys, offset + 8);
    begin = end;
  }
}

std::vector<std::uint32_t> order_by(const SortKeys& keys, std::size_t count) {
  std::vector<SortRow> rows(count);
  for (std::uint32_t row = 0; row < rows.size(); ++row) rows[row].row = row;
  sort_rows(rows, keys, 0);
  std::vector<std::uint32_t> order(rows.size());
  std::transform(rows.begin(), rows.end(), order.begin(), [](const SortRow& row) { return row.row; });
  return order;
}

std::vector<std::uint32_t> order_by_name(const FileList& files) {
  std::size_t name_bytes = 0;
  for (const ItemRecord& record : files.items()) name_bytes += record.name_size;
  SortKeys keys(files.size(), name_bytes);
  for (const ItemRecord& record : files.items()) keys.add(record.name());
  keys.end();
  return order_by(keys, files.size());
}

}  // namespace

void append_sort_key(std::string_view name, std::string& key) {
  if (!append_ascii_key(name, key)) append_key(decode_file_name(name), key);
}

int compareFiles(std::u16string_view a, std::u16string_view b) {
  std::string key_a;
  std::string key_b;
  append_key(a, key_a);
  append_key(b, key_b);
  return key_a.compare(key_b);
}

void sort_by_keys(FileList& files, const AppendRowKey& append_key, bool ascending) {
  const auto count = static_cast<std::uint32_t>(files.size());
  // Downwards is upwards from the last row to the first, read from its end: so equal rows keep their order.
  SortKeys keys(count, 0);
  for (std::uint32_t i = 0; i < count; ++i) keys.add(append_key, ascending ? i : count - 1 - i);
  keys.end();
  std::vector<std::uint32_t> order = order_by(keys, count);
  if (!ascending) {
    std::reverse(order.begin(), order.end());
    for (std::uint32_t& row : order) row = count - 1 - row;
  }
  files.reorder(std::move(order));
}

void sort_by_name(FileList& files) {
  files.reorder(order_by_name(files));
}

void sort_by_location(FileList& files) {
  const std::vector<std::uint32_t> by_name = order_by_name(files);
  const std::vector<std::uint32_t> ranks = folder_ranks(files);
  // Counting sort: stable, so the order by name stays within each folder.
  std::vector<std::uint32_t> starts(files.folders().size() + 1);
  for (const ItemRecord& record : files.items()) ++starts[ranks[record.folder] + 1];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::vector<std::uint32_t> order(by_name.size());
  for (const std::uint32_t row : by_name) order[starts[ranks[files[row].folder]]++] = row;
  files.reorder(std::move(order));
}

}  // namespace brindle
