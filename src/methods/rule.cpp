#include "methods/rule.h"

#include <optional>
#include <type_traits>
#include <utility>

#include "methods/method_table.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

void copy_carried(RuleVariant variant, const RenameSettings& from, RenameSettings& to) {
  for_each_rule_setting(variant, [&](const SettingRow& row) {
    std::visit(
        [&](auto member) {
          if constexpr (!std::is_same_v<decltype(member), std::monostate>) to.*member = from.*member;
        },
        row.member);
  });
}

}  // namespace

void Rule::reset_sequence() {
  number_sequence = -1;
  letter_sequence.clear();
}

std::optional<RuleVariant> variant_of(const Rule& rule) {
  return find_variant(rule.rule, rule.type);
}

NewRule getRule(RenameSettings& settings) {
  normalise(settings, Purpose::rule);
  const std::optional<RuleVariant> variant = chosen_variant(settings);
  if (!variant) {
    const std::optional<Refusal> refusal = find_missing_text(settings);
    return refusal ? NewRule(*refusal) : NewRule();
  }
  Rule rule;
  rule.rule = rule_names(*variant).rule;
  rule.type = rule_names(*variant).type;
  copy_carried(*variant, settings, rule.settings);
  select_variant(rule.settings, *variant);
  if (const std::optional<Refusal> refusal = find_missing_text(rule.settings)) return *refusal;
  return rule;
}

void setRule(RenameSettings& settings, const Rule& rule) {
  const std::optional<RuleVariant> variant = variant_of(rule);
  if (!variant) return;
  copy_carried(*variant, rule.settings, settings);
  select_variant(settings, *variant);
}

// The stored form.

namespace {

bool is_sequence(RuleVariant variant) {
  return rule_names(variant).method == Method::sequence;
}

std::u16string text_entry(const PropertyDictionary& dictionary, std::u16string_view key) {
  Text text;
  if (const PropertyValue* value = dictionary.find(key)) restore(text, *value);
  return text.value_or(u"");
}

constexpr std::u16string_view photo_fields_key = u"MetaDataList";
constexpr std::string_view photo_tags_key = "photoMetaDataList";

// Writing one carried value.

template <class Member>
void append_value(PropertyDictionary& dictionary, std::string_view key, const Member& member) {
  dictionary.append(key_text(key), stored(member));
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const Text& text) {
  if (text) dictionary.append(key_text(key), *text);
}
void append_value(PropertyDictionary& dictionary, std::string_view key, Date date) {
  dictionary.append(key_text(key), date);
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const TextList& texts) {
  dictionary.append(key_text(key), array_of(texts));
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const FieldList& fields) {
  if (key == photo_tags_key) {
    dictionary.append(key_text(key), array_of(MetaDataField::getTagsList(fields)));
    dictionary.append(photo_fields_key, archived(fields));
  } else {
    dictionary.append(key_text(key), array_of(fields));
  }
}

// Reading one; the member is empty before.

template <class Member>
void read_value(Member& member, const PropertyValue& value) {
  restore(member, value);
}
void read_value(TextList& texts, const PropertyValue& value) {
  texts = texts_of(value).value_or(TextList{});
}
void read_value(FieldList& fields, const PropertyValue& value) {
  fields = fields_of(value).value_or(FieldList{});
}

// A photo rule runs by its tokens; the fields beside them add what the editor shows, where they are the same.
void read_photo_fields(FieldList& fields, const PropertyValue& archive) {
  std::optional<FieldList> archived_fields = unarchived_fields(archive);
  if (!archived_fields) return;
  if (fields.empty() || MetaDataField::getTagsList(fields) == MetaDataField::getTagsList(*archived_fields)) {
    fields = std::move(*archived_fields);
  }
}

void clear_carried(RuleVariant variant, RenameSettings& settings) {
  for_each_rule_setting(variant, [&](const SettingRow& row) {
    visit_member(row, settings, [](auto& member) { member = std::remove_reference_t<decltype(member)>{}; });
  });
}

// Where the counter stands: letters as a text alone, since a number names none.
void read_sequence(Rule& rule, RuleVariant variant, const PropertyValue& value) {
  const auto* text = value.get_if<std::u16string>();
  if (variant == RuleVariant::alphabetic) {
    rule.letter_sequence = text ? *text : rule.letter_sequence;
  } else if (!text || !text->empty()) {
    restore(rule.number_sequence, value);
  }
}

constexpr bool is_heading(std::u16string_view key) {
  return key == u"rule" || key == u"type" || key == u"isActive";
}

// False when the entry means nothing to this variant.
bool read_entry(Rule& rule, RuleVariant variant, const PropertyEntry& entry) {
  if (variant == RuleVariant::photo && entry.key == photo_fields_key) return true;
  if (is_sequence(variant) && entry.key == u"sequence") {
    read_sequence(rule, variant, entry.value);
    return true;
  }
  const SettingRow* row = find_setting(std::u16string_view(entry.key));
  if (!row || (row->rules & rule_bit(variant)) == 0) return false;
  visit_member(*row, rule.settings, [&entry](auto& member) { read_value(member, entry.value); });
  return true;
}

}  // namespace

PropertyDictionary rule_to_dictionary(const Rule& rule) {
  PropertyDictionary dictionary;
  dictionary.append(u"rule", rule.rule);
  dictionary.append(u"type", rule.type);
  dictionary.append(u"isActive", stored(rule.isActive));
  if (const std::optional<RuleVariant> variant = variant_of(rule)) {
    for_each_rule_setting(*variant, [&](const SettingRow& row) {
      visit_member(row, rule.settings, [&](const auto& member) { append_value(dictionary, row.key, member); });
    });
    if (*variant == RuleVariant::numeric) dictionary.append(u"sequence", rule.number_sequence);
    if (*variant == RuleVariant::alphabetic) dictionary.append(u"sequence", rule.letter_sequence);
  }
  for (const PropertyEntry& entry : rule.other_entries) dictionary.append(entry.key, entry.value);
  return dictionary;
}

Rule rule_from_dictionary(const PropertyDictionary& dictionary) {
  Rule rule;
  rule.rule = text_entry(dictionary, u"rule");
  rule.type = text_entry(dictionary, u"type");
  rule.isActive = false;
  if (const PropertyValue* active = dictionary.find(u"isActive")) restore(rule.isActive, *active);
  const std::optional<RuleVariant> variant = variant_of(rule);
  if (variant) clear_carried(*variant, rule.settings);
  for (const PropertyEntry& entry : dictionary) {
    if (is_heading(entry.key)) continue;
    if (!variant || !read_entry(rule, *variant, entry)) rule.other_entries.append(entry.key, entry.value);
  }
  if (variant) {
    const PropertyValue* fields = dictionary.find(photo_fields_key);
    if (*variant == RuleVariant::photo && fields) read_photo_fields(rule.settings.photoMetaDataList, *fields);
    select_variant(rule.settings, *variant);
  }
  return rule;
}

}  // namespace brindle
