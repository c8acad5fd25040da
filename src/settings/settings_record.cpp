#include "settings/settings_record.h"

#include <chrono>
#include <optional>
#include <utility>

#include "platform/app_info.h"
#include "settings/settings_table.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

std::optional<PropertyValue> record_value(bool flag) {
  return stored(flag);
}
std::optional<PropertyValue> record_value(std::int32_t number) {
  return stored(number);
}
std::optional<PropertyValue> record_value(Date date) {
  return PropertyValue(date);
}
std::optional<PropertyValue> record_value(const TextList& texts) {
  return archived(texts);
}
std::optional<PropertyValue> record_value(const FieldList& fields) {
  return archived(fields);
}
std::optional<PropertyValue> record_value(const Text& text) {
  return text ? std::optional<PropertyValue>(*text) : std::nullopt;
}

template <class List>
void take(List& list, std::optional<List> found) {
  if (found) list = std::move(*found);
}

template <class Member>
void take_value(Member& member, const PropertyValue& value) {
  restore(member, value);
}
void take_value(TextList& texts, const PropertyValue& value) {
  take(texts, unarchived_texts(value));
}
void take_value(FieldList& fields, const PropertyValue& value) {
  take(fields, unarchived_fields(value));
}

// Files keep whole seconds.
std::optional<Date> date_left_out(const RenameSettings& settings, const SettingsRecord& record) {
  const PropertyValue* value = record.find(u"dateTimeCustomDate");
  const Date* date = value == nullptr ? nullptr : value->get_if<Date>();
  const auto seconds = [](Date moment) { return std::chrono::floor<std::chrono::seconds>(moment); };
  if (date == nullptr || seconds(*date) == seconds(settings.dateTimeCustomDate)) return std::nullopt;
  return *date;
}

}  // namespace

SettingsRecord getCurrentSettings(const RenameSettings& settings) {
  SettingsRecord record;
  record.append(u"appVersion", key_text(appVersion()));
  for (const SettingRow& row : settings_table().subspan<1>()) {
    std::optional<PropertyValue> value;
    visit_member(row, settings, [&value](const auto& member) { value = record_value(member); });
    if (!value) break;
    record.append(key_text(row.key), std::move(*value));
  }
  return record;
}

void set_mode(RenameSettings& settings, bool folders) {
  settings.isFiles = !folders;
  settings.isFolders = folders;
  settings.fileFolderIndex = folders ? 1 : 0;
}

SettingsOutcome setSettings(RenameSettings& settings, const SettingsRecord& record) {
  for (const PropertyEntry& entry : record) {
    const SettingRow* row = find_setting(std::u16string_view(entry.key));
    if (!row || !is_restored(*row)) continue;
    visit_member(*row, settings, [&entry](auto& member) { take_value(member, entry.value); });
  }
  resetPhotoMask(settings);
  resetID3Mask(settings);
  return {.date_left_out = date_left_out(settings, record)};
}

bool uses_custom_date(const RenameSettings& settings) {
  constexpr std::int32_t custom_date = 2;
  return selected_method(settings) == Method::date_time && settings.dateTimeDateOptionIndex == custom_date;
}

}  // namespace brindle
