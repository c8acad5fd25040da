#include "text/unicode_fold.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <array>
#include <cstdint>
#include <vector>

#include "platform/file_name.h"

namespace brindle {
namespace {

// The folds of the basic plane as differences, in pages of 256; most pages share the first, which changes nothing.
// Names in Greek or Cyrillic then fold as fast as a look-up.
class FoldTable {
 public:
  FoldTable() {
    differences_.resize(256);
    for (std::size_t page = 0; page < pages_.size(); ++page) add_page(page);
  }

  char16_t fold(char16_t unit) const {
    return static_cast<char16_t>(unit + differences_[pages_[unit >> 8U] + (unit & 0xFFU)]);
  }

 private:
  void add_page(std::size_t page) {
    std::array<char16_t, 256> differences{};
    bool changes = false;
    for (std::size_t i = 0; i < 256; ++i) {
      const auto c = static_cast<UChar32>(page * 256 + i);
      differences[i] = static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT) - c);
      changes = changes || differences[i] != 0;
    }
    if (!changes) return;
    pages_[page] = static_cast<std::uint16_t>(differences_.size());
    differences_.insert(differences_.end(), differences.begin(), differences.end());
  }

  std::array<std::uint16_t, 256> pages_{};
  std::vector<char16_t> differences_;
};

// Every simple fold beyond the basic plane stays beyond it, so both halves have a place to go.
char16_t fold_pair(char16_t high, char16_t low, bool want_low) {
  const UChar32 c = u_foldCase(U16_GET_SUPPLEMENTARY(high, low), U_FOLD_CASE_DEFAULT);
  return static_cast<char16_t>(want_low ? U16_TRAIL(c) : U16_LEAD(c));
}

}  // namespace

char16_t fold_beyond_ascii(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (is_high_surrogate(unit)) {
    const bool paired = index + 1 < text.size() && is_low_surrogate(text[index + 1]);
    return paired ? fold_pair(unit, text[index + 1], false) : unit;
  }
  if (is_low_surrogate(unit)) {
    const bool paired = index > 0 && is_high_surrogate(text[index - 1]);
    return paired ? fold_pair(text[index - 1], unit, true) : unit;
  }
  static const FoldTable table;
  return table.fold(unit);
}

std::u16string folded(std::u16string_view text) {
  std::u16string result(text.size(), u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) result[i] = fold_unit(text, i);
  return result;
}

char32_t fold_character(char32_t character) {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

bool differ_in_case_only(std::string_view a, std::string_view b) {
  return a != b && folded(decode_file_name(a)) == folded(decode_file_name(b));
}

}  // namespace brindle
