#include "metadata/field_source.h"

#include <array>

#include "metadata/code_tables.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "text/number_text.h"
#include "text/string_utilities.h"
#include "text/text_case.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

std::vector<std::u16string> texts_of(const PropertyValue::Array& members) {
  std::vector<std::u16string> texts;
  for (const PropertyValue& member : members) {
    if (const auto* const text = member.get_if<std::u16string>()) texts.push_back(*text);
  }
  return texts;
}

std::u16string joined_by_commas(const std::vector<std::u16string>& texts) {
  std::u16string all;
  for (const std::u16string& text : texts) {
    if (&text != &texts.front()) all.push_back(u',');
    all.append(text);
  }
  return all;
}

std::u16string with_texts(const std::vector<std::u16string>& codes, std::u16string_view (*text_of)(std::u16string_view),
                          std::string_view operation) {
  std::u16string all = joined_by_commas(codes);
  for (const std::u16string& code : codes) {
    const std::u16string_view text = text_of(code);
    if (text.empty()) {
      log_remark(operation, "there is no text for the code " + to_utf8(code));
      break;
    }
    all = replaceString(all, code, text, 1, -1, true);
  }
  return all;
}

std::u16string formatted(const XmpTexts& xmp, const DateFormatter& format) {
  const std::optional<std::u16string>& text = xmp[XmpEntry::date_created];
  if (!text) return {};
  const std::optional<Date> date = dateFromString(*text);
  return date ? format.format(*date) : *text;
}

}  // namespace

FieldSource::FieldSource(std::u16string_view metadataCode) {
  const std::size_t at = metadataCode.find(u'@');
  key_ = metadataCode.substr(0, at);
  if (at == std::u16string_view::npos) return;
  const std::u16string_view rest = metadataCode.substr(at + 1);
  if (rest.find(u'@') == std::u16string_view::npos) subkey_ = rest;
}

std::optional<XmpEntry> FieldSource::xmp_entry() const {
  if (key_ == u"CopyrightStatus") return XmpEntry::marked;
  if (key_ == u"CopyrightInfoURL") return XmpEntry::web_statement;
  if (key_ == u"Date_Created" || key_ == u"TimeCreated") return XmpEntry::date_created;
  return std::nullopt;
}

std::u16string FieldSource::missing_value(const FieldInputs& inputs) const {
  if (key_ == u"CopyrightStatus") return getCopyrightStatus(inputs.xmp);
  if (key_ == u"CopyrightInfoURL") return getCopyrightInfoURL(inputs.xmp);
  if (key_ == u"Date_Created") return getDateCreated(inputs.xmp, inputs.date_format);
  if (key_ == u"TimeCreated") return getTimeCreated(inputs.xmp, inputs.time_format);
  return {};
}

std::u16string FieldSource::text_value(const std::u16string& text) const {
  return key_ == u"Urgency" ? getUrgency(text) : text;
}

std::u16string FieldSource::list_value(const PropertyValue::Array& members) const {
  const std::vector<std::u16string> texts = texts_of(members);
  if (key_ == u"Scene") return getScene(texts);
  if (key_ == u"SubjectReference") return getSubjectCode(texts);
  return joined_by_commas(texts);
}

std::u16string FieldSource::value(const FieldInputs& inputs) const {
  const PropertyValue* value = inputs.iptc.find(key_);
  if (value == nullptr) return missing_value(inputs);
  if (const auto* const text = value->get_if<std::u16string>()) return text_value(*text);
  if (const auto* const members = value->get_if<PropertyValue::Array>()) return list_value(*members);
  const auto* const dictionary = value->get_if<PropertyDictionary>();
  const PropertyValue* const inner = dictionary != nullptr && subkey_ ? dictionary->find(*subkey_) : nullptr;
  const auto* const text = inner == nullptr ? nullptr : inner->get_if<std::u16string>();
  return text == nullptr ? std::u16string() : *text;
}

std::u16string getUrgency(std::u16string_view value) {
  static constexpr std::array<std::u16string_view, 9> names = {
      u"None", u"High", u"Normal + 3", u"Normal + 2", u"Normal + 1", u"Normal", u"Normal - 1", u"Normal - 2", u"Low"};
  const auto number = static_cast<std::uint32_t>(integer_value(value));
  return std::u16string(number < names.size() ? names[number] : value);
}

std::u16string getScene(const std::vector<std::u16string>& codes) {
  return with_texts(codes, scene_text, "getScene");
}

std::u16string getSubjectCode(const std::vector<std::u16string>& codes) {
  return with_texts(codes, subject_text, "getSubjectCode");
}

std::u16string getCopyrightStatus(const XmpTexts& xmp) {
  const std::optional<std::u16string>& marked = xmp[XmpEntry::marked];
  if (!marked) return u"Unknown";
  std::u16string upper;
  append_upper_case(trimmed(*marked), upper);
  return upper == u"TRUE" ? u"Copyrighted" : u"Public Domain";
}

std::u16string getCopyrightInfoURL(const XmpTexts& xmp) {
  return xmp[XmpEntry::web_statement].value_or(u"");
}

std::u16string getDateCreated(const XmpTexts& xmp, const DateFormatter& dateFormat) {
  return formatted(xmp, dateFormat);
}

std::u16string getTimeCreated(const XmpTexts& xmp, const DateFormatter& timeFormat) {
  return formatted(xmp, timeFormat);
}

}  // namespace brindle
