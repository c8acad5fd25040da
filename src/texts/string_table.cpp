#include "texts/string_table.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <optional>

namespace brindle {
namespace {

bool is_just_one(std::int64_t number) {
  return number == 1;
}

constexpr auto known_languages = std::to_array<Language>({
    {"en", "English", is_just_one, english_strings},
    {"de", "Deutsch", is_just_one, german_strings},
});

std::atomic<const Language*> language_in_use = &known_languages.front();

const StringEntry* find_entry(const Language& language, std::string_view key) {
  for (const StringSection section : language.strings().all()) {
    const auto found = std::ranges::lower_bound(section, key, {}, &StringEntry::key);
    if (found != section.end() && found->key == key) return &*found;
  }
  return nullptr;
}

std::string_view text_in(const Language& language, std::string_view key, std::optional<std::int64_t> number = {}) {
  const StringEntry* entry = find_entry(language, key);
  if (entry == nullptr || entry->text.empty()) return key;
  return number && !entry->one.empty() && language.is_one(*number) ? entry->one : entry->text;
}

std::string_view variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

std::string_view locale_of_messages() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (const std::string_view value = variable(name); !value.empty()) return value;
  }
  return {};
}

// The language of a locale's name, such as "de_AT.UTF-8@euro"; "C" and "POSIX" speak none.
const Language* find_language(std::string_view locale) {
  const std::string_view code = locale.substr(0, locale.find_first_of("_.@-"));
  const auto found = std::ranges::find(known_languages, code, &Language::code);
  return found == known_languages.end() ? nullptr : &*found;
}

bool speaks_no_language(std::string_view locale) {
  const std::string_view name = locale.substr(0, locale.find('.'));
  return name.empty() || name == "C" || name == "POSIX";
}

std::string text_of(const FormatArgument& argument) {
  const auto* number = std::get_if<std::int64_t>(&argument);
  return number ? std::to_string(*number) : std::string(std::get<std::string_view>(argument));
}

// A placeholder at the start of `format`, which begins with "%".
struct Placeholder {
  std::size_t length = 0;
  std::optional<std::size_t> place;  // from 1
};

std::optional<Placeholder> placeholder_at(std::string_view format) {
  Placeholder found;
  std::size_t place = 0;
  const auto [end, error] = std::from_chars(format.data() + 1, format.data() + format.size(), place);
  std::size_t at = 1;
  if (error == std::errc() && end != format.data() + format.size() && *end == '$') {
    found.place = place;
    at = static_cast<std::size_t>(end - format.data()) + 1;
  }
  if (at >= format.size() || (format[at] != '@' && format[at] != 'd')) return std::nullopt;
  found.length = at + 1;
  return found;
}

}  // namespace

std::span<const Language> languages() {
  return known_languages;
}

const Language& language_of_environment() {
  const std::string_view locale = locale_of_messages();
  if (speaks_no_language(locale)) return known_languages.front();
  for (std::string_view wishes = variable("LANGUAGE"); !wishes.empty();) {
    const std::size_t end = std::min(wishes.find(':'), wishes.size());
    if (const Language* language = find_language(wishes.substr(0, end))) return *language;
    wishes.remove_prefix(std::min(end + 1, wishes.size()));
  }
  const Language* language = find_language(locale);
  return language == nullptr ? known_languages.front() : *language;
}

void set_language(const Language& language) {
  language_in_use = &language;
}

const Language& current_language() {
  return *language_in_use;
}

std::string localized(std::string_view key) {
  return std::string(text_in(current_language(), key));
}

std::vector<std::string> localized_in_all_languages(std::string_view key) {
  std::vector<std::string> texts;
  texts.reserve(known_languages.size());
  for (const Language& language : known_languages) texts.emplace_back(text_in(language, key));
  return texts;
}

std::string fill_localized(std::string_view key, std::span<const FormatArgument> arguments) {
  std::optional<std::int64_t> number;
  for (const FormatArgument& argument : arguments) {
    const auto* value = std::get_if<std::int64_t>(&argument);
    if (value != nullptr && !number) number = *value;
  }
  return fill_format(text_in(current_language(), key, number), arguments);
}

std::string fill_format(std::string_view format, std::span<const FormatArgument> arguments) {
  std::string text;
  std::size_t next = 0;
  for (std::size_t i = 0; i < format.size();) {
    const std::string_view rest = format.substr(i);
    const auto placeholder = rest.front() == '%' ? placeholder_at(rest) : std::nullopt;
    std::size_t index = arguments.size();
    if (placeholder) index = (placeholder->place ? *placeholder->place : ++next) - 1;
    if (index < arguments.size()) {
      text += text_of(arguments[index]);
      i += placeholder->length;
    } else {
      text += rest.front();
      i += rest.starts_with("%%") ? 2 : 1;
    }
  }
  return text;
}

}  // namespace brindle
