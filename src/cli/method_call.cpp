#include "cli/method_call.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "cli/exit_code.h"
#include "methods/method_table.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "plist/iso_date.h"

namespace brindle {
namespace {

bool is_letter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

std::u16string_view take(std::u16string_view& rest, std::size_t size) {
  const std::u16string_view taken = rest.substr(0, size);
  rest.remove_prefix(taken.size());
  return taken;
}

std::size_t part_size(std::u16string_view text) {
  return std::min(text.find_first_not_of(text.front()), text.size());
}

// Up to the next letter that is not quoted.
std::size_t separator_size(std::u16string_view text) {
  bool quoted = false;
  const auto end = std::ranges::find_if(text, [&](char16_t c) {
    if (c == u'\'') quoted = !quoted;
    return !quoted && is_letter(c);
  });
  return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

std::optional<std::array<std::u16string, 5>> split_pattern(std::u16string_view pattern) {
  std::array<std::u16string, 5> pieces = {u"None", u"", u"None", u"", u"None"};
  if (pattern.empty() || !is_letter(pattern.front())) return std::nullopt;
  for (std::size_t i = 0; i < pieces.size() && !pattern.empty(); ++i) {
    const bool is_part = i % 2 == 0;
    pieces[i] = take(pattern, is_part ? part_size(pattern) : separator_size(pattern));
  }
  return pattern.empty() ? std::optional(pieces) : std::nullopt;
}

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

namespace {

bool has_option(const MethodCall& call, std::string_view name) {
  return std::ranges::any_of(call.options, [&](const auto& given) { return given.first->name == name; });
}

bool operands_replaced(const MethodCall& call) {
  return std::ranges::any_of(call.options, [](const auto& given) { return given.first->replaces_operands; });
}

// "--before or --after", from "before|after".
std::string listed_options(std::string_view names) {
  std::string text;
  for (const std::string_view name : split_choices(names)) {
    text += fmt::format("{}--{}", text.empty() ? "" : translated(" or "), name);
  }
  return text;
}

void check_operands(const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (operands_replaced(call)) {
    const auto& option =
        std::ranges::find_if(call.options, [](const auto& each) { return each.first->replaces_operands; });
    if (call.operands.empty()) return;
    throw UsageError(translated("{}: --{} stands instead of {}; give one of them", method.word, option->first->name,
                                method.operands.front().name));
  }
  if (call.operands.size() == method.operands.size()) return;
  const MethodOperand& missing = method.operands[call.operands.size()];
  throw UsageError(translated("{} needs {}, {} (brindle {} --help shows examples)", method.word, missing.name,
                              translated(missing.help), method.word));
}

void check_group(const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (method.required_group == 0) return;
  const auto in_group = [&](const MethodOption& option) {
    return option.groups.find(method.required_group) != std::string_view::npos;
  };
  if (std::ranges::any_of(call.options, [&](const auto& given) { return in_group(*given.first); })) return;
  std::string names;
  for (const MethodOption& option : method.options) {
    if (in_group(option)) names += fmt::format("{}--{}", names.empty() ? "" : ", ", option.name);
  }
  throw UsageError(
      translated("{} needs one of {} (brindle {} --help shows examples)", method.word, names, method.word));
}

void check_needs(const MethodCall& call) {
  for (const auto& [option, value] : call.options) {
    if (option->needs.empty()) continue;
    const auto names = split_choices(option->needs);
    if (std::ranges::any_of(names, [&](std::string_view name) { return has_option(call, name); })) continue;
    throw UsageError(
        translated("{}: --{} goes with {}", call.method->word, option->name, listed_options(option->needs)));
  }
}

}  // namespace

bool has_its_operands(const MethodCall& call) {
  return call.operands.size() == call.method->operands.size() || operands_replaced(call);
}

void check_call(const MethodCall& call) {
  check_operands(call);
  check_group(call);
  check_needs(call);
}

void add_option(MethodCall& call, const MethodOption& option, OptionValue value) {
  for (auto& [given, given_value] : call.options) {
    if (given == &option) {
      given_value = std::move(value);
      return;
    }
    if (given->groups.find_first_of(option.groups) != std::string_view::npos) {
      throw UsageError(translated("{}: give either --{} or --{}", call.method->word, given->name, option.name));
    }
  }
  call.options.emplace_back(&option, std::move(value));
}

void fill_settings(RenameSettings& settings, const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (method.fill != nullptr) method.fill(settings, {});
  for (std::size_t i = 0; i < call.operands.size(); ++i) method.operands[i].fill(settings, call.operands[i]);
  RuleVariant variant = method.variant;
  // In the order of the table, so that the order on the command line does not matter.
  for (const MethodOption& option : method.options) {
    const auto given = std::ranges::find(call.options, &option, &std::pair<const MethodOption*, OptionValue>::first);
    if (given == call.options.end()) continue;
    option.fill(settings, given->second);
    variant = option.variant.value_or(variant);
  }
  select_variant(settings, variant);
}

}  // namespace brindle
