#pragma once

// The one table of the settings record: a row a key, in record order, from settings.def. Whatever reads, writes,
// resets, watches, compares, prints or parses settings walks this table. Constant data; any thread.

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

#include "settings/rename_settings.h"

namespace brindle {

/// The kinds of rules: a method and a variant of it.
enum class RuleVariant : std::uint8_t {
#define RULE_KIND(kind) kind,
#include "settings/settings.def"
};

/// Rule variants as bits.
using RuleSet = std::uint32_t;
constexpr RuleSet rule_bit(RuleVariant variant) {
  return RuleSet{1} << static_cast<unsigned>(variant);
}

/// What a new value of a key is to the change signal.
enum class SettingChange : std::uint8_t {
  watched,  ///< counts as a change
  quiet,    ///< does not; the live preview still follows the options of the method that is shown
  shown,    ///< the key only repeats a choice, as a position of the window's buttons
};

/// Where a key's value lives. `appVersion` alone has no member: it is written from the program's version, never read
/// back.
using SettingMember =
    std::variant<std::monostate, bool RenameSettings::*, std::int32_t RenameSettings::*, Text RenameSettings::*,
                 Date RenameSettings::*, TextList RenameSettings::*, FieldList RenameSettings::*>;

struct SettingRow {
  std::string_view key;
  SettingMember member;
  std::optional<Method> method;  ///< whose option it is; none for all methods
  SettingChange change;
  RuleSet rules;             ///< the rule variants that carry the key
  std::string_view meaning;  ///< in plain words, for `brindle settings`
};

/// `appVersion`, and the rows of settings.def.
inline constexpr std::size_t setting_count = 1
// NOLINTNEXTLINE(bugprone-macro-parentheses): the signs make the sum
#define SETTING(type, key, default_value, method, change, rules, meaning) +1
#include "settings/settings.def"
    ;

/// All rows in record order, `appVersion` first and `renameFile` last.
std::span<const SettingRow, setting_count> settings_table();

/// The row of a key, or null. Constant time.
const SettingRow* find_setting(std::string_view key);
const SettingRow* find_setting(std::u16string_view key);

/// The key that lives in a member. Walks the table.
std::string_view key_of(SettingMember member);

/// The place of a row in the table.
inline std::size_t setting_index(const SettingRow& row) {
  return static_cast<std::size_t>(&row - settings_table().data());
}

/// Whether applying a record restores the key. The custom date is written and never restored.
constexpr bool is_restored(const SettingRow& row) {
  return !std::holds_alternative<std::monostate>(row.member) &&
         !std::holds_alternative<Date RenameSettings::*>(row.member);
}

/// Calls `visitor` with the row's member of `settings` (RenameSettings or const), when it has one.
template <class Settings, class Visitor>
void visit_member(const SettingRow& row, Settings& settings, Visitor&& visitor) {
  std::visit(
      [&](auto member) {
        if constexpr (!std::is_same_v<decltype(member), std::monostate>) visitor(settings.*member);
      },
      row.member);
}

/// Calls `visitor` with the row of each key that rules of the variant carry, in record order.
template <class Visitor>
void for_each_rule_setting(RuleVariant variant, Visitor&& visitor) {
  for (const SettingRow& row : settings_table()) {
    if ((row.rules & rule_bit(variant)) != 0) visitor(row);
  }
}

/// Rows by their place in the table.
using SettingSet = std::bitset<setting_count>;

/// The rows whose values differ.
SettingSet compare_settings(const RenameSettings& a, const RenameSettings& b);

/// The rows that count as a change.
const SettingSet& watched_settings();

}  // namespace brindle
