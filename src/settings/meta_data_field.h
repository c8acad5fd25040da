#pragma once

// The fields that masks are made of. Plain data; any thread.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "plist/keyed_archive.h"

namespace brindle {

/// One field of a mask: a metadata value of the file, or a text of the user's own. Plain data; the object owns its
/// texts.
struct MetaDataField {
  std::u16string prefix;         ///< category: "EXIF", "IPTC - Description", "FILEINFO", "SEQUENCES", "CUSTOM", …
  std::u16string label;          ///< the name shown to the user: "Date"
  std::u16string tagCode;        ///< the token written in masks, angle brackets included: "<EXIF_Date>"
  std::u16string metadataCode;   ///< where the value comes from: an IPTC key, or key "@" subkey, or a decoder's name
  std::u16string metadataValue;  ///< what was read for the current file; neither archived nor compared

  /// The tokens of the fields, in the same order.
  static std::vector<std::u16string> getTagsList(const std::vector<MetaDataField>& fields) {
    std::vector<std::u16string> tags;
    tags.reserve(fields.size());
    for (const MetaDataField& field : fields) tags.push_back(field.tagCode);
    return tags;
  }

  /// Equal when the four archived texts are.
  friend bool operator==(const MetaDataField& a, const MetaDataField& b) {
    return a.tagCode == b.tagCode && a.prefix == b.prefix && a.label == b.label && a.metadataCode == b.metadataCode;
  }
};

using FieldList = std::vector<MetaDataField>;

/// How keyed archives hold a field: the four archived texts.
inline constexpr std::array<std::u16string_view, 4> meta_data_field_keys = {u"prefix", u"label", u"tagCode",
                                                                            u"metadataCode"};
inline constexpr TextClass meta_data_field_class = {u"MetaDataField", meta_data_field_keys};

/// The tokens of audio masks; any other entry of such a mask is a text of the user's own.
inline constexpr std::array<std::u16string_view, 8> audio_tokens = {
    u"<Artist>", u"<Year>", u"<Genre>", u"<Title>", u"<Album>", u"<Comments>", u"<TrackNumber>", u"<Composer>"};

}  // namespace brindle
