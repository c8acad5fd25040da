#include "plist/flag_value.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace brindle {
namespace {

bool means_yes(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
  if (text.starts_with(u'+') || text.starts_with(u'-')) text.remove_prefix(1);
  text.remove_prefix(std::min(text.find_first_not_of(u'0'), text.size()));
  constexpr std::u16string_view yes = u"123456789YyTt";
  return !text.empty() && yes.find(text.front()) != std::u16string_view::npos;
}

}  // namespace

std::optional<bool> flag_value(const PropertyValue& value) {
  if (const bool* flag = value.get_if<bool>()) return *flag;
  if (const std::int64_t* number = value.get_if<std::int64_t>()) return *number != 0;
  if (const double* number = value.get_if<double>()) return *number != 0;
  if (const std::u16string* text = value.get_if<std::u16string>()) return means_yes(*text);
  return std::nullopt;
}

}  // namespace brindle
