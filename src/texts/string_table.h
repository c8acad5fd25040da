#pragma once

// The texts shown to the user, by key, in the user's language, UTF-8: English (strings_english.cpp) or a language that
// has a catalogue (po/). Any thread, but the language is chosen once, at the start, before texts are asked for.

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "texts/catalogue.h"

namespace brindle {

struct Language {
  std::string_view code;  ///< ISO 639, with a country where that matters: "en", "pt_BR"
  std::string_view name;  ///< in itself: "English"
  Catalogue catalogue;    ///< English has none
};

/// English first, then those of the catalogues.
std::span<const Language> languages();

/// The language of a locale's name, such as "de_AT.UTF-8@euro", or null.
const Language* find_language(std::string_view locale);

/// The language that the environment asks for. As gettext has it: LC_ALL, LC_MESSAGES or LANG, the first that is not
/// empty, names the locale; unless that is "C" or "POSIX", the languages of LANGUAGE ("de_AT:en") come before it.
/// English when none of them is known.
const Language& language_of_environment();

/// The language of all texts from here on, those of platform/translation.h included; English until this is called.
void set_language(const Language& language);
const Language& current_language();

/// The text of a key; an unknown key is taken for an English sentence, as translated() does. Of texts that depend on a
/// number, the form for most numbers. The "&" of a mnemonic is left out.
std::string localized(std::string_view key);
/// The same with the "&" before the letter that is pressed with Alt, for what shows such letters.
std::string localized_with_mnemonic(std::string_view key);
/// The text of a key in each language, in the order of languages().
std::vector<std::string> localized_in_all_languages(std::string_view key);

/// What fills a placeholder.
using FormatArgument = std::variant<std::string_view, std::int64_t>;

/// `format` with its placeholders filled: "%@" and "%d" take the arguments in order, "%2$@" and "%2$d" one by its place
/// (from 1), so that a language may turn the order round; "%%" is "%". A placeholder without an argument stays as it
/// is.
std::string fill_format(std::string_view format, std::span<const FormatArgument> arguments);

/// The text of a key as a format. The first number among the arguments chooses the plural form.
std::string fill_localized(std::string_view key, std::span<const FormatArgument> arguments);

inline FormatArgument format_argument(std::string_view text) {
  return text;
}
template <std::integral I>
FormatArgument format_argument(I number) {
  return static_cast<std::int64_t>(number);
}

/// fill_localized with the arguments as they are: localized_format("TOTALFILESFOUND", 12).
template <class... Arguments>
std::string localized_format(std::string_view key, const Arguments&... arguments) {
  const std::initializer_list<FormatArgument> list = {format_argument(arguments)...};
  return fill_localized(key, {list.begin(), list.size()});
}

}  // namespace brindle
