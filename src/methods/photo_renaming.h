#pragma once

// Photo metadata: a name put together from what the picture says about itself, by a mask of tokens. Parameters are
// immutable; any number of threads may use them.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "metadata/field_source.h"
#include "metadata/image_parts.h"
#include "metadata/image_properties.h"
#include "metadata/metadata_catalogue.h"
#include "metadata/xmp_text.h"
#include "methods/rename_operation.h"
#include "text/date_format.h"
#include "text/date_pattern.h"
#include "text/search_text.h"

namespace brindle {

/// The arguments as the settings hold them. "/" becomes ":" in all texts but the date parts, the tags and the
/// extensions.
struct PhotoArguments {
  std::u16string_view photoRenamingMask = {};  ///< empty: no item takes part; decides what is read of a file
  bool isPhotoRenamingSeperator = false;
  std::u16string_view photoRenamingSeperator = {};  ///< between values; never behind a text of the user's own
  bool isPhotoRenamingColonReplace = false;         ///< every ":" of a value becomes photoRenamingColonReplace
  std::u16string_view photoRenamingColonReplace = {};
  DateParts parts = {};                                    ///< photoDatePart1 … photoTimePart3
  std::u16string_view photoPaddingMask = {};               ///< its first characters fill the number up to its length
  std::span<const std::u16string> tags = {};               ///< the tokens of the mask, in order
  std::span<const std::u16string> allowedExtensions = {};  ///< of the items that take part: ".JPG", upper case
};

/// What the method needs to know of one file.
struct PhotoMetadata {
  ImageProperties image;
  XmpTexts xmp;
};

class PhotoParameters {
 public:
  explicit PhotoParameters(const PhotoArguments& arguments);

  /// Whether an item whose name has this extension (no dot, any case) gets a name from the mask. All others are left
  /// alone.
  bool takes_part(std::u16string_view extension) const;
  /// Whether names need anything out of the files: then read() is worth doing ahead.
  bool reads_files() const { return parts_.exif || parts_.iptc || parts_.size; }
  /// Reads what the mask needs, and no more. Never fails: an unreadable file has no values. Throws only std::bad_alloc.
  PhotoMetadata read(const std::string& path) const;

  /// Puts the name together in name.result, from name.base. Throws std::runtime_error when a date pattern cannot be
  /// used.
  void write_name(const PhotoMetadata& metadata, std::int32_t numberSequence, WorkingName& name) const;

 private:
  enum class Part : std::uint8_t { filename, date, time, make, model, dimensions, comment, number, field, custom };
  struct Token {
    Part part;
    std::u16string text;                ///< the user's own text
    std::optional<FieldSource> source;  ///< of a field
  };
  struct Values;

  Token token_of(std::u16string_view tag) const;
  static bool is_written_by_camera(Part part);
  void plan_reading();
  void append_value(const Token& token, const PhotoMetadata& metadata, const Values& values, WorkingName& name) const;
  void append_coloned(std::u16string_view value, std::u16string& out) const;

  std::u16string separator_;  // empty for none
  bool replaces_colons_;
  std::u16string colon_replacement_;
  DateFormatter date_format_;
  DateFormatter time_format_;
  std::u16string padding_;
  bool has_mask_;
  bool mask_names_exif_;
  bool mask_names_iptc_;
  std::vector<Token> tokens_;
  std::unordered_set<std::u16string> extensions_;
  ImageParts parts_;
  XmpEntries xmp_entries_;
  bool may_spare_xmp_date_ = false;
};

/// `numberSequence` is the caller's running number: only items that take part are counted, each by 1. `read` is what
/// parameters.read() said of the item's file; null to have it read when it is needed.
NameOutcome photo_name(const PhotoParameters& parameters, const FileSystemItem& item, std::int32_t& numberSequence,
                       const PhotoMetadata* read, WorkingName& name);

bool renameByPhotoEXIFTags(FileSystemItem& item, const PhotoParameters& parameters, std::int32_t& numberSequence,
                           WorkingName& name, std::u16string& error, const PhotoMetadata* read = nullptr);

/// Every field of the catalogue with its value for one file, as a mask would show it; the running number has none.
MetaDataList read_metadata_values(const std::string& path, const DateParts& parts);

}  // namespace brindle
