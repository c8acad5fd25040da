#include "settings/settings_table.h"

#include <algorithm>
#include <array>

namespace brindle {
namespace {

// The words of the rows.
namespace rows {
using enum RuleVariant;
template <class... Variants>
constexpr RuleSet by(Variants... variants) {
  return (RuleSet{0} | ... | rule_bit(variants));
}
namespace owner {
using enum Method;
constexpr std::optional<Method> all_methods;
}  // namespace owner

constexpr std::array<SettingRow, setting_count> table = {{
    {"appVersion", std::monostate{}, owner::all_methods, SettingChange::quiet, by(),
     "version of the program that wrote the record"},
#define SETTING(type, key, default_value, method, change, rules, meaning) \
  {#key, &RenameSettings::key, owner::method, SettingChange::change, rules, meaning},
#include "settings/settings.def"
}};
static_assert(table.back().key == "renameFile", "a key behind the one that may be absent would not be stored");
}  // namespace rows
using rows::table;

// Open addressing, a third full: a key is found in one or two steps.
constexpr std::size_t slot_count = 512;
constexpr std::uint8_t empty_slot = 255;
static_assert(setting_count < empty_slot);

template <class Char>
constexpr std::size_t slot_of(std::basic_string_view<Char> key) {
  std::uint32_t hash = 2166136261U;
  for (const Char c : key) hash = (hash ^ static_cast<std::uint32_t>(c)) * 16777619U;
  return (hash ^ (hash >> 16U)) % slot_count;
}

constexpr std::array<std::uint8_t, slot_count> build_slots() {
  std::array<std::uint8_t, slot_count> slots{};
  slots.fill(empty_slot);
  for (std::size_t i = 0; i < table.size(); ++i) {
    std::size_t slot = slot_of(table[i].key);
    while (slots[slot] != empty_slot) slot = (slot + 1) % slot_count;
    slots[slot] = static_cast<std::uint8_t>(i);
  }
  return slots;
}
constexpr std::array<std::uint8_t, slot_count> slots = build_slots();

template <class Char>
const SettingRow* find_row(std::basic_string_view<Char> key) {
  for (std::size_t slot = slot_of(key); slots[slot] != empty_slot; slot = (slot + 1) % slot_count) {
    const SettingRow& row = table[slots[slot]];
    if (std::ranges::equal(row.key, key, [](char a, Char b) { return static_cast<Char>(a) == b; })) return &row;
  }
  return nullptr;
}

}  // namespace

std::span<const SettingRow, setting_count> settings_table() {
  return table;
}

const SettingRow* find_setting(std::string_view key) {
  return find_row(key);
}
const SettingRow* find_setting(std::u16string_view key) {
  return find_row(key);
}

std::string_view key_of(SettingMember member) {
  return std::ranges::find(table, member, &SettingRow::member)->key;
}

SettingSet compare_settings(const RenameSettings& a, const RenameSettings& b) {
  SettingSet different;
  for (std::size_t i = 0; i < table.size(); ++i) {
    std::visit(
        [&](auto member) {
          if constexpr (!std::is_same_v<decltype(member), std::monostate>) different[i] = a.*member != b.*member;
        },
        table[i].member);
  }
  return different;
}

const SettingSet& watched_settings() {
  static const SettingSet set = [] {
    SettingSet rows;
    for (std::size_t i = 0; i < table.size(); ++i) rows[i] = table[i].change == SettingChange::watched;
    return rows;
  }();
  return set;
}

}  // namespace brindle
