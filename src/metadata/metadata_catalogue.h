#pragma once

// The fields that a photo mask is made of, in the groups and the order in which the mask editor shows them.

#include <string>
#include <string_view>
#include <vector>

#include "metadata/field_source.h"
#include "settings/meta_data_field.h"

namespace brindle {

struct MetadataGroup {
  std::u16string NAME;                ///< the group's title
  std::vector<MetaDataField> FIELDS;  ///< without values
};

/// All groups, built on first use. Immutable; any thread.
const std::vector<MetadataGroup>& metadata_catalogue();

/// The field of a token, or null for a token that is in no group. Constant time; any thread.
const MetaDataField* find_field(std::u16string_view token);

/// A token that is no field: the text between its brackets, "" for a token without brackets. `isCustomTag` tells
/// whether it had any.
std::u16string_view custom_text(std::u16string_view token, bool& isCustomTag);

/// The catalogue with the values of one file. An object belongs to one thread at a time.
class MetaDataList {
 public:
  MetaDataList() : groups_(metadata_catalogue()) {}

  const std::vector<MetadataGroup>& groups() const { return groups_; }

  /// Refreshes the value of every field whose source is IPTC or XMP, and empties all others. A field that cannot be
  /// read is a line in the program's messages, and empty.
  void resetMetaDataList(const FieldInputs& inputs);

  /// Sets the value of the field of a token, if there is one.
  void set_value(std::u16string_view token, std::u16string_view value);

 private:
  std::vector<MetadataGroup> groups_;
};

}  // namespace brindle
