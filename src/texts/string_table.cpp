#include "texts/string_table.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <optional>

#include "platform/translation.h"
#include "texts/strings_english.h"

namespace brindle {
namespace {

std::vector<Language> known_languages() {
  std::vector<Language> known = {{"en", "English", {}}};
  for (const std::string_view mo : compiled_catalogues()) {
    const Catalogue catalogue(mo);
    known.push_back({catalogue.header("Language"), catalogue.header("X-Language-Name"), catalogue});
  }
  return known;
}

std::atomic<const Language*> language_in_use = nullptr;

const EnglishText* find_text(std::string_view key) {
  const auto texts = english_texts();
  const auto found = std::ranges::lower_bound(texts, key, {}, &EnglishText::key);
  return found == texts.end() || found->key != key || found->text.empty() ? nullptr : &*found;
}

// `english` is for 1 where there is an `other`, the English for all other numbers.
std::string_view text_in(const Language& language, std::string_view context, std::string_view english,
                         std::string_view other, std::optional<std::uint64_t> number) {
  const auto forms = language.catalogue.find(context, english);
  if (forms) return language.catalogue.form(*forms, number);
  return other.empty() || number == 1U ? english : other;
}

std::string_view text_in(const Language& language, std::string_view key, std::optional<std::int64_t> number = {}) {
  const EnglishText* row = find_text(key);
  if (row == nullptr) return text_in(language, {}, key, {}, {});
  if (row->one.empty()) return text_in(language, key, row->text, {}, {});
  return text_in(language, key, row->one, row->text,
                 number ? std::optional(static_cast<std::uint64_t>(*number)) : std::nullopt);
}

std::string_view translate(std::string_view english, std::string_view other, std::uint64_t number) {
  return text_in(current_language(), {}, english, other, other.empty() ? std::nullopt : std::optional(number));
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
  static const std::vector<Language> known = known_languages();
  return known;
}

const Language* find_language(std::string_view locale) {
  const std::string_view with_country = locale.substr(0, locale.find_first_of(".@"));
  for (const std::string_view code : {with_country, with_country.substr(0, with_country.find_first_of("_-"))}) {
    const auto found = std::ranges::find(languages(), code, &Language::code);
    if (found != languages().end()) return &*found;
  }
  return nullptr;
}

const Language& language_of_environment() {
  const std::string_view locale = locale_of_messages();
  if (speaks_no_language(locale)) return languages().front();
  for (std::string_view wishes = variable("LANGUAGE"); !wishes.empty();) {
    const std::size_t end = std::min(wishes.find(':'), wishes.size());
    if (const Language* language = find_language(wishes.substr(0, end))) return *language;
    wishes.remove_prefix(std::min(end + 1, wishes.size()));
  }
  const Language* language = find_language(locale);
  return language == nullptr ? languages().front() : *language;
}

void set_language(const Language& language) {
  language_in_use = &language;
  set_translation(translate);
}

const Language& current_language() {
  const Language* language = language_in_use;
  return language == nullptr ? languages().front() : *language;
}

std::string localized(std::string_view key) {
  std::string text = localized_with_mnemonic(key);
  // In a sentence that came with its values "&" may be part of a name.
  const std::size_t mark = text.find('&');
  if (mark < text.size() && text[mark + 1] != ' ' && find_text(key) != nullptr) text.erase(mark, 1);
  return text;
}

std::string localized_with_mnemonic(std::string_view key) {
  return std::string(text_in(current_language(), key));
}

std::vector<std::string> localized_in_all_languages(std::string_view key) {
  std::vector<std::string> texts;
  texts.reserve(languages().size());
  for (const Language& language : languages()) texts.emplace_back(text_in(language, key));
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
