#pragma once

// The one table of the rename methods. What the programs know of a method stands in its row, and the row in the
// method's own file. Constant data; any thread.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "methods/rename_operation.h"
#include "settings/settings_table.h"

namespace brindle {

/// An option of a rule as a person reads it. Labels, and values that are words, are keys of the string table.
struct RuleRow {
  std::string_view label;
  std::string_view word;  ///< empty: `text` is the value
  std::u16string text;
};

/// Gathers the rows of one rule.
class RuleRows {
 public:
  explicit RuleRows(const RenameSettings& rule_settings) : settings(rule_settings) {}

  void text(std::string_view label, std::u16string_view value) { rows_.push_back({label, {}, std::u16string(value)}); }
  void text(std::string_view label, Text RenameSettings::*value) { text(label, text_of(settings.*value)); }
  void text_if_any(std::string_view label, Text RenameSettings::*value) {
    if (!is_blank(settings.*value)) text(label, value);
  }
  void text_if(bool RenameSettings::*on, std::string_view label, Text RenameSettings::*value) {
    if (settings.*on) text(label, value);
  }
  void word(std::string_view label, std::string_view key) { rows_.push_back({label, key, {}}); }
  void flag(std::string_view label, bool value) { word(label, value ? "TRUE" : "FALSE"); }
  void flag(std::string_view label, bool RenameSettings::*value) { flag(label, settings.*value); }
  void number(std::string_view label, std::int32_t value) { text(label, decimal_text(value)); }
  void list(std::string_view label, const TextList& members);

  std::vector<RuleRow> take() { return std::move(rows_); }

  const RenameSettings& settings;

 private:
  std::vector<RuleRow> rows_;
};

/// A variant of a method, and what files call it.
struct RuleKind {
  RuleVariant variant;
  std::u16string_view type;
};

/// What an option becomes where it is absent, before a run or a rule.
struct AbsentOption {
  Text RenameSettings::*text;
  std::u16string_view value = {};
};

/// A text that must be there; the title and the message of the alert otherwise. It is asked for only while `option` has
/// the value and `flag` is on, where these are given.
struct Requirement {
  Text RenameSettings::*text;
  std::string_view title;
  std::string_view message;
  std::int32_t RenameSettings::*option = nullptr;
  std::int32_t value = 0;
  bool RenameSettings::*flag = nullptr;
};

enum class Purpose : std::uint8_t { run, rule };

struct MethodRow {
  Method method;
  std::string_view title;                ///< key of the string table
  std::string_view icon;                 ///< name of a drawing
  std::u16string_view rule = {};         ///< what files call the method
  std::span<const RuleKind> kinds = {};  ///< the one that an unknown type stands for is last; none: no rules
  std::span<const AbsentOption> absent = {};
  std::span<const Requirement> required = {};  ///< in the order of asking
  /// The step that the options ask for; null when they choose nothing. `now` is the start of the run.
  std::shared_ptr<const RenameStep> (*step)(const RenameSettings& settings, Date now) = nullptr;
  /// The options of a rule in reading order.
  void (*add_rows)(RuleRows& rows, RuleVariant variant) = nullptr;
  /// What the options are of, if anything; null for the only kind.
  std::optional<RuleVariant> (*chosen)(const RenameSettings& settings) = nullptr;
  /// Brings the choices in line with a variant, by the keys that its rules carry. May be null, as the others below.
  void (*select)(RenameSettings& settings, RuleVariant variant) = nullptr;
  /// Gives options that are out of range their nearest usable value.
  void (*normalise)(RenameSettings& settings, Purpose purpose) = nullptr;
  bool RenameSettings::*restarts_in_folder = nullptr;  ///< counters start anew in every folder
};

/// All methods, by the number that `selectedTab` holds.
std::span<const MethodRow* const> method_table();
const MethodRow& method_row(Method method);

/// The method of a kind of rules, and its stored name.
struct RuleNames {
  Method method;
  std::u16string_view rule;
  std::u16string_view type;
};
RuleNames rule_names(RuleVariant variant);

/// The kind of rules with these names. The method's decides: a type that it does not know stands for the last of its
/// variants. None for an unknown method.
std::optional<RuleVariant> find_variant(std::u16string_view rule, std::u16string_view type);

/// What the selected tab is of, without a look at whether its options are usable.
std::optional<RuleVariant> chosen_variant(const RenameSettings& settings);

/// Selects the tab of a variant and sets the choices that belong to it: which of the method's variants, and the flags
/// of its option. The keys that the variant carries are expected to be in place.
void select_variant(RenameSettings& settings, RuleVariant variant);

/// Sets the flag of an option, by its index, and clears the others.
void select_flag(RenameSettings& settings, std::span<bool RenameSettings::*const> flags, std::int32_t index);

/// The step that these parameters are, whatever the moment.
template <class Parameters>
std::shared_ptr<const RenameStep> step_of(const RenameSettings& settings, Date /*now*/) {
  return std::make_shared<const Parameters>(settings);
}

}  // namespace brindle
