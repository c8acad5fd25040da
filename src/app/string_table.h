#pragma once

// The texts shown to the user, by key. One table a language; English is complete and the only one so far. UTF-8
// throughout. Constant data: any thread.

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace brindle {

/// The text of a key; an unknown key is its own text.
std::string localized(std::string_view key);

/// What fills a placeholder.
using FormatArgument = std::variant<std::string_view, std::int64_t>;

/// `format` with its placeholders filled: "%@" and "%d" take the arguments in order, "%2$@" and "%2$d" one by its place
/// (from 1), so that a language may turn the order round; "%%" is "%". A placeholder without an argument stays as it
/// is.
std::string fill_format(std::string_view format, std::span<const FormatArgument> arguments);

inline FormatArgument format_argument(std::string_view text) {
  return text;
}
template <std::integral I>
FormatArgument format_argument(I number) {
  return static_cast<std::int64_t>(number);
}

/// The text of a key as a format: localized_format("TOTALFILESFOUND", 12).
template <class... Arguments>
std::string localized_format(std::string_view key, const Arguments&... arguments) {
  const std::initializer_list<FormatArgument> list = {format_argument(arguments)...};
  return fill_format(localized(key), {list.begin(), list.size()});
}

}  // namespace brindle
