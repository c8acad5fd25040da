#pragma once

// How one setting stands in a settings record and in a rule: flags and numbers as decimal text, texts and the date as
// they are, lists as arrays or as keyed archives. Pure; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plist/property_value.h"
#include "settings/rename_settings.h"

namespace brindle {

/// A key of the settings table, which is ASCII, as property lists have it.
inline std::u16string key_text(std::string_view key) {
  return {key.begin(), key.end()};
}

PropertyValue stored(bool flag);
PropertyValue stored(std::int32_t number);

/// The text that a value of a scalar kind stands for: itself, a number in decimal ("5", also of a real without a
/// fraction), a flag as "1" or "0". None for dates, data, lists, and what is not a finite number.
std::optional<std::u16string> scalar_text(const PropertyValue& value);

// Taking a value back: false, with the member untouched, when the value is of a kind that the member cannot hold.

/// Flags and numbers come from a text's integer value (0 where it is none), and from a property list's own flags and
/// numbers, saturating at 32 bits. Texts come from every scalar: other programs write the numbers that people type in
/// as numbers.
bool restore(bool& flag, const PropertyValue& value);
bool restore(std::int32_t& number, const PropertyValue& value);
bool restore(Text& text, const PropertyValue& value);
bool restore(Date& date, const PropertyValue& value);

// Lists. A record holds all four as archives, a rule the photo fields as one and the others as arrays.

/// An array of texts.
PropertyValue array_of(const TextList& texts);

/// An array of dictionaries, each with the four archived texts "prefix", "label", "tagCode" and "metadataCode".
PropertyValue array_of(const FieldList& fields);

/// The texts of an array. None when the value is no array or holds anything else.
std::optional<TextList> texts_of(const PropertyValue& value);

/// The fields of an array of dictionaries, each of which has at least a "tagCode". A member that is a bare text is
/// taken as a token. None when the value is no array or holds anything else.
std::optional<FieldList> fields_of(const PropertyValue& value);

/// A field that stands for nothing but its token.
MetaDataField field_of_token(std::u16string_view token);

// The data of a keyed archive. Reading also takes the plain arrays that people write by hand.

PropertyValue archived(const TextList& texts);
PropertyValue archived(const FieldList& fields);
/// None when the value is neither an archive of such a list nor such a list.
std::optional<TextList> unarchived_texts(const PropertyValue& value);
std::optional<FieldList> unarchived_fields(const PropertyValue& value);

}  // namespace brindle
