#include "cli/option_value.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "cli/exit_code.h"
#include "cli/pattern_pieces.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "plist/iso_date.h"

namespace brindle {
namespace {

std::optional<std::int32_t> whole_number(std::string_view text) {
  std::int32_t number = 0;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::int32_t> place_of(std::string_view word, std::string_view choices) {
  const auto words = split_choices(choices);
  const auto found = std::ranges::find(words, word);
  return found == words.end() ? std::nullopt : std::optional(static_cast<std::int32_t>(found - words.begin()));
}

bool is_letters(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= 'a' && c <= 'z'; });
}

class Reading {
 public:
  Reading(std::string_view name, std::string_view form, std::string_view text)
      : name_(name), form_(form), text_(text) {}

  OptionValue read(ValueKind kind) const {
    OptionValue value;
    value.text = decode_file_name(text_);
    switch (kind) {
      case ValueKind::none:
      case ValueKind::text:
        break;
      case ValueKind::number:
        value.number = demand(whole_number(text_), to_translate("a whole number"));
        break;
      case ValueKind::letters:
        demand(is_letters(text_) ? std::optional(true) : std::nullopt, to_translate("letters from a to z"));
        break;
      case ValueKind::choice:
        value.number = demand(place_of(text_, form_), form_);
        break;
      case ValueKind::moment:
        value.date = demand(date_of_iso_text(text_), to_translate("a date such as 2026-11-21 or 2026-11-21T10:00"));
        break;
      case ValueKind::pattern_or_none:
        if (text_ == "none") break;
        [[fallthrough]];
      case ValueKind::pattern:
        value.pieces = demand(split_pattern(value.text),
                              to_translate("up to three parts with separators between, such as yyyy-MM-dd"));
        break;
    }
    return value;
  }

 private:
  template <class T>
  T demand(std::optional<T> value, std::string_view wanted) const {
    if (value) return *std::move(value);
    const bool is_operand = name_ == form_;
    throw UsageError(translated("{}{} is {}, not {}", is_operand ? "" : "--", name_, translated(wanted),
                                text_.empty() ? translated("empty") : std::string(text_)));
  }

  std::string_view name_;
  std::string_view form_;
  std::string_view text_;
};

}  // namespace

std::vector<std::string_view> split_choices(std::string_view choices) {
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t bar = choices.find('|');
    words.push_back(choices.substr(0, bar));
    if (bar == std::string_view::npos) return words;
    choices.remove_prefix(bar + 1);
  }
}

OptionValue read_value(ValueKind kind, std::string_view name, std::string_view form, std::string_view text) {
  return Reading(name, form, text).read(kind);
}

}  // namespace brindle
