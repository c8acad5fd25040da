#pragma once

// The one table of the settings record: a row a key, in record order. Whatever reads, writes, resets, watches,
// compares, prints or parses settings walks this table, so a key is written down once. Constant data; any thread.

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

/// The tab that a key belongs to; tab 9 has no options of its own but `renameFile`.
enum class SettingTab : std::int8_t {
  sequence = 0,
  insert_delete,
  replace_remove,
  prefix_suffix,
  date_time,
  general_method,
  audio,
  photo,
  path,
  all_tabs,
  window,  ///< positions of the window's choices, and the list file
};

/// The kinds of rules: a method and a variant of it.
enum class RuleVariant : std::uint8_t {
  numeric,
  alphabetic,
  insert,
  delete_characters,
  replace,
  remove,
  remove_characters,
  as_string,
  as_date,
  date_time,
  general,
  id3_tag,
  photo,
  path_components,
};

/// Rule variants as bits.
using RuleSet = std::uint16_t;
constexpr RuleSet rule_bit(RuleVariant variant) {
  return static_cast<RuleSet>(1U << static_cast<unsigned>(variant));
}

/// Where a key's value lives. `appVersion` alone has no member: it is written from the program's version, never read
/// back.
using SettingMember =
    std::variant<std::monostate, bool RenameSettings::*, std::int32_t RenameSettings::*, Text RenameSettings::*,
                 Date RenameSettings::*, TextList RenameSettings::*, FieldList RenameSettings::*>;

struct SettingRow {
  std::string_view key;
  SettingMember member;
  SettingTab tab;
  bool counts_as_change;     ///< one of the 75 keys that the change signal follows
  RuleSet rules;             ///< the rule variants that carry the key
  std::string_view meaning;  ///< in plain words, for `brindle settings`
};

inline constexpr std::size_t setting_count = 174;
inline constexpr std::size_t watched_setting_count = 75;

/// All rows in record order, `appVersion` first and `renameFile` last.
std::span<const SettingRow, setting_count> settings_table();

/// The row of a key, or null. Constant time.
const SettingRow* find_setting(std::string_view key);
const SettingRow* find_setting(std::u16string_view key);

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
