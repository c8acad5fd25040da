#include "text/text_case.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

#include "text/unicode_fold.h"

namespace brindle {
namespace {

char16_t ascii_upper(char16_t unit) {
  return static_cast<char16_t>(unit - (unit >= u'a' && unit <= u'z' ? 32 : 0));
}
char16_t ascii_lower(char16_t unit) {
  return static_cast<char16_t>(unit + (unit >= u'A' && unit <= u'Z' ? 32 : 0));
}

bool is_ascii(std::u16string_view text) {
  char16_t all = 0;
  for (const char16_t unit : text) all = static_cast<char16_t>(all | unit);
  return all < 0x80;
}

template <class Map>
void append_ascii(std::u16string_view text, Map map, std::u16string& out) {
  const std::size_t start = out.size();
  out.append(text);
  std::transform(text.begin(), text.end(), out.begin() + static_cast<std::ptrdiff_t>(start), map);
}

// No full mapping makes more than three units of one.
template <class Map>
void append_mapped(std::u16string_view text, Map map, std::u16string& out) {
  if (text.size() > std::numeric_limits<std::int32_t>::max() / 3) throw std::bad_alloc();
  const std::size_t start = out.size();
  const auto length = static_cast<std::int32_t>(text.size());
  out.resize(start + 3 * text.size());
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t size = map(out.data() + start, 3 * length, text.data(), length, "", &status);
  out.resize(start + static_cast<std::size_t>(size));
}

bool is_word_boundary(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

// The rest is cut from the lower-cased word, not lower-cased alone: a final sigma shows by what comes before it.
void append_proper_word(std::u16string_view word, std::u16string& out) {
  const bool is_pair = word.size() > 1 && is_high_surrogate(word[0]) && is_low_surrogate(word[1]);
  const std::u16string_view first = word.substr(0, is_pair ? 2 : 1);
  std::u16string upper;
  append_upper_case(first, upper);
  const std::size_t start = out.size();
  append_lower_case(first, out);
  const std::size_t first_size = out.size() - start;
  out.resize(start);
  append_lower_case(word, out);
  out.replace(start, first_size, upper);
}

}  // namespace

void append_upper_case(std::u16string_view text, std::u16string& out) {
  return is_ascii(text) ? append_ascii(text, ascii_upper, out) : append_mapped(text, u_strToUpper, out);
}

void append_lower_case(std::u16string_view text, std::u16string& out) {
  return is_ascii(text) ? append_ascii(text, ascii_lower, out) : append_mapped(text, u_strToLower, out);
}

void append_proper_case(std::u16string_view text, std::u16string& out) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto* const word_end = std::find_if(text.begin() + i, text.end(), is_word_boundary);
    const std::size_t end = static_cast<std::size_t>(word_end - text.begin());
    if (end > i) append_proper_word(text.substr(i, end - i), out);
    i = end;
    while (i < text.size() && is_word_boundary(text[i])) out.push_back(text[i++]);
  }
}

}  // namespace brindle
