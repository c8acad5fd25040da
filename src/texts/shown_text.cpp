#include "texts/shown_text.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/file_name.h"
#include "platform/translation.h"

namespace brindle {
namespace {

constexpr char16_t first_isolate = u'\u2068';
constexpr char16_t end_of_isolate = u'\u2069';

// More than any script piles on a letter.
constexpr int most_marks = 8;

// They show nothing and turn the order of what follows.
constexpr auto direction_marks = std::to_array<std::pair<char16_t, std::u16string_view>>({
    {u'\u061C', u"‹ALM›"},
    {u'\u200E', u"‹LRM›"},
    {u'\u200F', u"‹RLM›"},
    {u'\u202A', u"‹LRE›"},
    {u'\u202B', u"‹RLE›"},
    {u'\u202C', u"‹PDF›"},
    {u'\u202D', u"‹LRO›"},
    {u'\u202E', u"‹RLO›"},
    {u'\u2066', u"‹LRI›"},
    {u'\u2067', u"‹RLI›"},
    {first_isolate, u"‹FSI›"},
    {end_of_isolate, u"‹PDI›"},
});

bool is_mark(char32_t c) {
  if (c < 0x300) return false;
  const auto type = u_charType(static_cast<UChar32>(c));
  return type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK;
}

// The picture of a character that has none of its own; the character itself for any other.
char16_t picture_of(char16_t unit) {
  if (unit < 0x20) return static_cast<char16_t>(0x2400 + unit);
  if (unit == 0x7F) return u'\u2421';
  if (unit == 0x85 || unit == u'\u2028' || unit == u'\u2029') return u'\u2424';
  const bool is_control = unit > 0x7F && unit < 0xA0;
  return is_control || (unit >= 0xEF80 && unit <= 0xEFFF) ? u'\uFFFD' : unit;
}

void append_shown(std::u16string& shown, char32_t c) {
  if (c > 0xFFFF) {
    shown += U16_LEAD(c);
    shown += U16_TRAIL(c);
    return;
  }
  const auto unit = static_cast<char16_t>(c);
  const auto* const mark = std::ranges::find(direction_marks, unit, &decltype(direction_marks)::value_type::first);
  if (mark != direction_marks.end()) {
    shown += mark->second;
  } else {
    shown += picture_of(unit);
  }
}

void append_number_of_marks(std::u16string& shown, int left_out) {
  if (left_out > 0) shown += decode_file_name(fmt::format("‹+{}›", left_out));
}

// `kept`: whether a character stays whatever it is.
template <class Kept>
std::u16string spelled_out(std::u16string_view text, Kept kept) {
  std::u16string shown;
  shown.reserve(text.size());
  int marks = 0;
  for (std::size_t at = 0; at < text.size();) {
    char32_t c = 0;
    U16_NEXT(text.data(), at, text.size(), c);
    if (is_mark(c)) {
      if (++marks > most_marks) continue;
    } else {
      append_number_of_marks(shown, std::exchange(marks, 0) - most_marks);
    }
    if (kept(c)) {
      shown += static_cast<char16_t>(c);
    } else {
      append_shown(shown, c);
    }
  }
  append_number_of_marks(shown, marks - most_marks);
  return shown;
}

}  // namespace

bool is_plain_line(std::u16string_view text) {
  // Below the first of the combining marks; which names of most scripts are not, and yet shown as they are.
  return std::ranges::all_of(text, [](char16_t c) { return c >= 0x20 && c < 0x300 && (c < 0x7F || c >= 0xA0); });
}

std::u16string in_one_line(std::u16string_view text) {
  if (is_plain_line(text)) return std::u16string(text);
  return spelled_out(text, [](char32_t) { return false; });
}

std::u16string in_lines(std::u16string_view text) {
  return spelled_out(text, [](char32_t c) { return c == U'\n' || c == first_isolate || c == end_of_isolate; });
}

std::string in_sentence(std::u16string_view text) {
  if (is_plain_line(text)) return to_utf8(text);
  return to_utf8(first_isolate + in_one_line(text) + end_of_isolate);
}

std::string reason_in_words(std::string_view english) {
  const std::string_view whole = sentence_for(english);
  const std::size_t colon = english.find(": ");
  if (whole != english || colon == std::string_view::npos) return std::string(whole);
  return translated(english.substr(0, colon)) + ": " + reason_in_words(english.substr(colon + 2));
}

}  // namespace brindle
