#include "texts/catalogue.h"

#include <algorithm>
#include <string>

#include "texts/plural_rule.h"

namespace brindle {
namespace {

std::string_view up_to_nul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

}  // namespace

// The file begins with seven numbers: a mark, a revision, how many texts, where the tables of originals and of
// translations stand, and two for a hash table that is not used here. A row of a table is a length and an offset.

std::uint32_t Catalogue::number_at(std::size_t offset) const {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(mo_[offset + i]);
  return number;
}

std::size_t Catalogue::size() const {
  return mo_.empty() ? 0 : number_at(8);
}

std::string_view Catalogue::text_at(std::size_t table_field, std::size_t place) const {
  const std::size_t row = number_at(table_field) + 8 * place;
  return mo_.substr(number_at(row + 4), number_at(row));
}

std::optional<std::string_view> Catalogue::find(std::string_view context, std::string_view english) const {
  if (english.empty()) return std::nullopt;
  std::string wanted(context);
  if (!context.empty()) wanted += '\4';
  wanted += english;
  std::size_t place = 0;  // of the first original that is not before it
  for (std::size_t count = size(); count > 0;) {
    const std::size_t half = count / 2;
    const bool is_before = up_to_nul(original(place + half)) < wanted;
    place += is_before ? half + 1 : 0;
    count = is_before ? count - half - 1 : half;
  }
  if (place == size() || up_to_nul(original(place)) != wanted) return std::nullopt;
  return translation(place);
}

std::string_view Catalogue::form(std::string_view forms, std::optional<std::uint64_t> number) const {
  std::size_t skip = number ? plural_form(header("Plural-Forms"), *number) : std::string_view::npos;
  for (std::size_t nul = forms.find('\0'); nul != std::string_view::npos && skip > 0; --skip, nul = forms.find('\0')) {
    forms.remove_prefix(nul + 1);
  }
  return up_to_nul(forms);
}

std::string_view Catalogue::header(std::string_view field) const {
  if (size() == 0) return {};
  for (std::string_view rest = translation(0); !rest.empty();) {
    const std::string_view text = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(text.size() + 1, rest.size()));
    if (text.starts_with(field) && text.substr(field.size()).starts_with(": ")) return text.substr(field.size() + 2);
  }
  return {};
}

}  // namespace brindle
