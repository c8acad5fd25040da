#include "settings/stored_value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "plist/keyed_archive.h"
#include "plist/scalar_text.h"
#include "text/number_text.h"

namespace brindle {
namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

std::optional<std::u16string> text_of_real(double number) {
  constexpr double exact = 9007199254740992.0;  // 2^53: up to there a whole number is one
  if (!std::isfinite(number)) return std::nullopt;
  if (std::abs(number) < exact && std::trunc(number) == number) return decimal_text(static_cast<std::int64_t>(number));
  return key_text(real_text(number));
}

std::optional<std::int32_t> number_of(const PropertyValue& value) {
  if (const auto* text = value.get_if<std::u16string>()) return integer_value(*text);
  if (const auto* flag = value.get_if<bool>()) return *flag ? 1 : 0;
  if (const auto* number = value.get_if<std::int64_t>()) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(*number, lowest, highest));
  }
  if (const auto* number = value.get_if<double>()) {
    return std::isnan(*number) ? 0 : static_cast<std::int32_t>(std::clamp<double>(*number, lowest, highest));
  }
  return std::nullopt;
}

std::u16string text_at(const PropertyDictionary& dictionary, std::u16string_view key) {
  const PropertyValue* value = dictionary.find(key);
  return value ? scalar_text(*value).value_or(u"") : std::u16string();
}

PropertyDictionary dictionary_of(const MetaDataField& field) {
  PropertyDictionary dictionary;
  dictionary.append(u"prefix", field.prefix);
  dictionary.append(u"label", field.label);
  dictionary.append(u"tagCode", field.tagCode);
  dictionary.append(u"metadataCode", field.metadataCode);
  return dictionary;
}

std::optional<MetaDataField> field_of(const PropertyValue& value) {
  if (const auto* token = value.get_if<std::u16string>()) return field_of_token(*token);
  const auto* dictionary = value.get_if<PropertyDictionary>();
  if (!dictionary || !dictionary->find(u"tagCode")) return std::nullopt;
  return MetaDataField{text_at(*dictionary, u"prefix"), text_at(*dictionary, u"label"),
                       text_at(*dictionary, u"tagCode"), text_at(*dictionary, u"metadataCode"), u""};
}

// The members of an array, each read by `read`; none as soon as one cannot be read.
template <class Member>
std::optional<std::vector<Member>> members_of(const PropertyValue& value,
                                              std::optional<Member> (*read)(const PropertyValue&)) {
  const auto* array = value.get_if<PropertyValue::Array>();
  if (!array) return std::nullopt;
  std::vector<Member> members;
  members.reserve(array->size());
  for (const PropertyValue& element : *array) {
    std::optional<Member> member = read(element);
    if (!member) return std::nullopt;
    members.push_back(std::move(*member));
  }
  return members;
}

// What an archive holds; any other value as it is, and what is no archive as a text, which is no list.
PropertyValue unarchived(const PropertyValue& value) {
  const auto* data = value.get_if<PropertyValue::Data>();
  if (!data) return value;
  return unarchive_value({reinterpret_cast<const char*>(data->data()), data->size()}, meta_data_field_class)
      .value_or(PropertyValue());
}

}  // namespace

PropertyValue stored(bool flag) {
  return flag ? u"1" : u"0";
}
PropertyValue stored(std::int32_t number) {
  return decimal_text(number);
}

std::optional<std::u16string> scalar_text(const PropertyValue& value) {
  if (const auto* text = value.get_if<std::u16string>()) return *text;
  if (const auto* flag = value.get_if<bool>()) return *flag ? u"1" : u"0";
  if (const auto* number = value.get_if<std::int64_t>()) return decimal_text(*number);
  const auto* number = value.get_if<double>();
  return number ? text_of_real(*number) : std::nullopt;
}

bool restore(std::int32_t& number, const PropertyValue& value) {
  const std::optional<std::int32_t> found = number_of(value);
  number = found.value_or(number);
  return found.has_value();
}

bool restore(bool& flag, const PropertyValue& value) {
  std::int32_t number = flag ? 1 : 0;
  const bool restored = restore(number, value);
  flag = number != 0;
  return restored;
}

bool restore(Text& text, const PropertyValue& value) {
  std::optional<std::u16string> found = scalar_text(value);
  if (found) text = std::move(*found);
  return found.has_value();
}
bool restore(Date& date, const PropertyValue& value) {
  const Date* found = value.get_if<Date>();
  if (found) date = *found;
  return found != nullptr;
}

PropertyValue array_of(const TextList& texts) {
  return PropertyValue::Array(texts.begin(), texts.end());
}

PropertyValue array_of(const FieldList& fields) {
  PropertyValue::Array array;
  array.reserve(fields.size());
  for (const MetaDataField& field : fields) array.emplace_back(dictionary_of(field));
  return array;
}

std::optional<TextList> texts_of(const PropertyValue& value) {
  return members_of(value, scalar_text);
}
std::optional<FieldList> fields_of(const PropertyValue& value) {
  return members_of(value, field_of);
}

MetaDataField field_of_token(std::u16string_view token) {
  const bool bracketed = token.size() >= 2 && token.front() == u'<' && token.back() == u'>';
  const std::u16string_view inside = bracketed ? token.substr(1, token.size() - 2) : token;
  return {u"CUSTOM", std::u16string(token), std::u16string(token), std::u16string(inside), u""};
}

PropertyValue archived(const TextList& texts) {
  return archive_value(array_of(texts));
}
PropertyValue archived(const FieldList& fields) {
  std::vector<PropertyDictionary> objects;
  objects.reserve(fields.size());
  for (const MetaDataField& field : fields) objects.push_back(dictionary_of(field));
  return archive_objects(meta_data_field_class.name, objects);
}
std::optional<TextList> unarchived_texts(const PropertyValue& value) {
  return members_of(unarchived(value), scalar_text);
}
std::optional<FieldList> unarchived_fields(const PropertyValue& value) {
  return members_of(unarchived(value), field_of);
}

}  // namespace brindle
