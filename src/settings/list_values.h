#pragma once

// Lists of texts and of mask fields as property-list values. Pure; any thread.

#include <optional>
#include <vector>

#include "plist/property_value.h"
#include "settings/rename_settings.h"

namespace brindle {

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

// The form of the four lists in a settings record, and of the field list of a photo rule: the data of a keyed archive.
// Everything that writes or reads that form goes through these four functions. Reading also takes the plain arrays that
// people write by hand.

PropertyValue archived(const TextList& texts);
PropertyValue archived(const FieldList& fields);
/// None when the value is neither an archive of such a list nor such a list.
std::optional<TextList> unarchived_texts(const PropertyValue& value);
std::optional<FieldList> unarchived_fields(const PropertyValue& value);

}  // namespace brindle
