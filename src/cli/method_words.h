#pragma once

// The rename methods as words: each with its operands and options, and what they mean to the settings record.
// Constant data; any thread.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/rename_settings.h"
#include "settings/settings_table.h"

namespace brindle {

/// The candidate that a mistyped word was most likely meant to be; empty when none is near.
std::string_view closest_word(std::string_view word, std::span<const std::string_view> candidates);

/// Something to type, and what comes of it.
struct Example {
  std::string_view words;   ///< as typed in a shell, after "brindle" or, for a method, from its word on
  std::string_view before;  ///< for a method: a name …
  std::string_view after;   ///< … and what becomes of it
};

/// What a value has to look like.
enum class ValueKind : std::uint8_t {
  none,             ///< the option takes no value
  text,             ///< any text
  number,           ///< a whole number of 32 bits
  letters,          ///< letters from a to z, at least one
  choice,           ///< one of the words of the option's value, "a|b|c"
  moment,           ///< a date in ISO 8601
  pattern,          ///< up to three parts of a date or time with separators between them
  pattern_or_none,  ///< the same, or "none"
};

/// A value that was read.
struct OptionValue {
  std::u16string text;      ///< as typed
  std::int32_t number = 0;  ///< of a number; of a choice, the place of the word from 0
  Date date{};
  /// Of a pattern: part, separator, part, separator, part; absent parts are "None". All empty for "none".
  std::array<std::u16string, 5> pieces;
};

using FillSettings = void (*)(RenameSettings& settings, const OptionValue& value);

struct MethodOption {
  std::string_view name;   ///< without the dashes
  std::string_view value;  ///< how help calls its value
  ValueKind kind = ValueKind::none;
  std::string_view help;
  FillSettings fill = nullptr;
  std::string_view groups = {};                       ///< options that share a letter exclude each other
  std::string_view needs = {};                        ///< it says nothing without one of these, "before|after"
  bool replaces_operands = false;                     ///< stands for the operands, which must then not be there
  std::optional<RuleVariant> variant = std::nullopt;  ///< the method's variant, when this option changes it
};

struct MethodOperand {
  std::string_view name;  ///< as help shows it: "TEXT"
  ValueKind kind = ValueKind::text;
  std::string_view help;
  FillSettings fill = nullptr;
};

struct MethodWord {
  std::string_view word;
  std::string_view summary;                 ///< half a line
  std::string_view about;                   ///< what else a person should know; may be empty
  RuleVariant variant;                      ///< also names the tab
  std::span<const MethodOperand> operands;  ///< all of them are required
  std::span<const MethodOption> options;
  char required_group = 0;      ///< one of the options of this group must be there
  FillSettings fill = nullptr;  ///< what the word alone means, before its operands and options; may be null
  std::span<const Example> examples;
};

std::span<const MethodWord> method_words();

/// The words alone.
std::vector<std::string_view> words_of_methods();

/// The row of a method's word, or null.
const MethodWord* find_method(std::string_view word);
const MethodOption* find_option(const MethodWord& method, std::string_view name);

}  // namespace brindle
