#pragma once

// Where the value of a metadata field comes from, and the decoders that make a text of it. Pure; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/xmp_text.h"
#include "plist/property_value.h"
#include "text/date_format.h"

namespace brindle {

/// What was read of one file, and how to write its dates. Refers to its parts.
struct FieldInputs {
  const PropertyDictionary& iptc;
  const XmpTexts& xmp;
  const DateFormatter& date_format;
  const DateFormatter& time_format;
};

/// A field's `metadataCode`, taken apart once: a key of the IPTC dictionary, or a key "@" a key of the dictionary
/// there, or a name that stands for a decoder.
class FieldSource {
 public:
  explicit FieldSource(std::u16string_view metadataCode);

  /// "" for what is not there. Throws std::runtime_error when a date pattern cannot be used.
  std::u16string value(const FieldInputs& inputs) const;

  /// The XMP entry that value() looks at when the IPTC dictionary lacks the key; none for most fields.
  std::optional<XmpEntry> xmp_entry() const;
  const std::u16string& key() const { return key_; }

 private:
  std::u16string text_value(const std::u16string& text) const;
  std::u16string list_value(const PropertyValue::Array& members) const;
  std::u16string missing_value(const FieldInputs& inputs) const;

  std::u16string key_;
  std::optional<std::u16string> subkey_;
};

/// "5" is "Normal", "1" is "High" and so on; anything but the numbers 0 to 8 stays as it is.
std::u16string getUrgency(std::u16string_view value);

/// The codes joined by ",", each replaced by its text. A code that is not in the table is a line in the program's
/// messages and ends the replacing: it and the codes behind it stay.
std::u16string getScene(const std::vector<std::u16string>& codes);
std::u16string getSubjectCode(const std::vector<std::u16string>& codes);

/// "Copyrighted", "Public Domain", or "Unknown" when the file does not say.
std::u16string getCopyrightStatus(const XmpTexts& xmp);
std::u16string getCopyrightInfoURL(const XmpTexts& xmp);

/// The date of creation in that format; as written when it is no date with a zone.
std::u16string getDateCreated(const XmpTexts& xmp, const DateFormatter& dateFormat);
std::u16string getTimeCreated(const XmpTexts& xmp, const DateFormatter& timeFormat);

}  // namespace brindle
