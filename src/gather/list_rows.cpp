#include "gather/list_rows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "platform/file_name.h"
#include "platform/translation.h"
#include "platform/xml_text.h"
#include "text/text_encoding.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::size_t longest_name = UINT16_MAX;  // what an item of the list can hold

// What ends a line: U+000A to U+000D, U+0085, U+2028 and U+2029.
constexpr std::array<std::string_view, 7> line_breaks = {"\n",       "\v",           "\f",          "\r",
                                                         "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};

// How long the line break is for which `touches` holds; 0 when there is none.
template <class Touches>
std::size_t line_break_size(Touches touches) {
  const auto* const found = std::find_if(line_breaks.begin(), line_breaks.end(), touches);
  return found == line_breaks.end() ? 0 : found->size();
}

std::string_view without_line_breaks(std::string_view field) {
  const auto begins = [&field](std::string_view mark) { return field.starts_with(mark); };
  const auto ends = [&field](std::string_view mark) { return field.ends_with(mark); };
  while (const std::size_t size = line_break_size(begins)) field.remove_prefix(size);
  while (const std::size_t size = line_break_size(ends)) field.remove_suffix(size);
  return field;
}

std::string_view without_carriage_returns(std::string_view field) {
  while (field.starts_with('\r')) field.remove_prefix(1);
  while (field.ends_with('\r')) field.remove_suffix(1);
  return field;
}

std::optional<ListRow> row_of(std::string_view line) {
  const std::size_t first = line.find('\t');
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = line.find('\t', first + 1);
  if (second == std::string_view::npos || line.find('\t', second + 1) != std::string_view::npos) return std::nullopt;
  return ListRow{without_line_breaks(line.substr(0, first)),
                 without_line_breaks(line.substr(first + 1, second - first - 1)),
                 without_carriage_returns(line.substr(second + 1))};
}

bool is_title(std::string_view field, const std::vector<std::u16string>& titles) {
  std::string plain;
  without_quotes(field, plain);  // a spreadsheet may have put them around every field
  const std::u16string text = folded(decode_utf8(plain));
  return std::any_of(titles.begin(), titles.end(), [&text](const auto& title) { return folded(title) == text; });
}

bool is_header(const ListRow& row, const ListTitles& titles) {
  return is_title(row.filename, titles.filename) || is_title(row.newFilename, titles.newFilename) ||
         is_title(row.location, titles.location);
}

char line_end_of(std::string_view text) {
  return text.find('\n') == std::string_view::npos ? '\r' : '\n';
}

}  // namespace

std::string list_text_fault(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
    return translated("it is UTF-16 text; save it as UTF-8 text with tabs");
  const auto line_at = [bytes](std::size_t end) {
    return std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), line_end_of(bytes)) + 1;
  };
  const std::size_t valid = valid_utf8_prefix(bytes);
  if (valid < bytes.size()) return translated("line {} is not valid UTF-8", line_at(valid));
  const std::size_t nul = bytes.find('\0');
  if (nul != std::string_view::npos) return translated("line {} holds a NUL character", line_at(nul));
  return {};
}

ListRows list_rows(std::string_view bytes, const ListTitles& titles) {
  if (bytes.starts_with(byte_order_mark)) bytes.remove_prefix(byte_order_mark.size());
  const char line_end = line_end_of(bytes);
  std::size_t end = bytes.find(line_end);
  if (end == std::string_view::npos) return {};
  const std::optional<ListRow> first = row_of(bytes.substr(0, end));
  if (!first) return {};
  ListRows list;
  const auto take = [&rows = list.rows](const std::optional<ListRow>& row) {
    if (row && is_entry_name(row->filename) && rows.size() <= list_line_limit) rows.push_back(*row);
  };
  if (!is_header(*first, titles)) take(first);
  while (end != std::string_view::npos) {
    bytes.remove_prefix(end + 1);
    end = bytes.find(line_end);
    const std::string_view line = bytes.substr(0, end);
    const std::optional<ListRow> row = row_of(line);
    if (!row && line.find_first_not_of(" \t\r") != std::string_view::npos) ++list.odd_lines;
    take(row);
  }
  return list;
}

bool holds_line_break(std::string_view text) {
  constexpr std::string_view first_bytes = "\n\v\f\r\xC2\xE2";
  for (std::size_t at = 0; (at = text.find_first_of(first_bytes, at)) != std::string_view::npos; ++at) {
    if (line_break_size([&](std::string_view mark) { return text.substr(at).starts_with(mark); }) > 0) return true;
  }
  return false;
}

bool is_entry_name(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.size() <= longest_name &&
         name.find('\0') == std::string_view::npos;
}

std::string disk_name(std::string_view field) {
  std::string name = disk_location(field);
  std::replace(name.begin(), name.end(), '/', ':');
  return name;
}

std::string disk_location(std::string_view field) {
  std::string bytes(field);
  restore_bytes(bytes);
  return bytes;
}

bool without_quotes(std::string_view field, std::string& plain) {
  plain = field;
  if (field.size() < 2 || !field.starts_with('"') || !field.ends_with('"')) return false;
  const std::string_view inner = field.substr(1, field.size() - 2);
  std::string result;
  for (std::size_t i = 0; i < inner.size(); ++i) {
    result.push_back(inner[i]);
    if (inner[i] == '"' && (++i == inner.size() || inner[i] != '"')) return false;
  }
  plain = result;
  return true;
}

}  // namespace brindle
