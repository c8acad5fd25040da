#pragma once

// Photo metadata: a name put together from what the picture says about itself, by a mask of tokens.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "metadata/field_source.h"
#include "metadata/image_file.h"
#include "metadata/metadata_catalogue.h"
#include "methods/date_parts.h"
#include "methods/method_table.h"
#include "text/date_format.h"
#include "text/search_text.h"

namespace brindle {

inline constexpr DatePartMembers photo_parts = {
    {&RenameSettings::photoDatePart1, &RenameSettings::photoDateSeperator1, &RenameSettings::photoDatePart2,
     &RenameSettings::photoDateSeperator2, &RenameSettings::photoDatePart3},
    {&RenameSettings::photoTimePart1, &RenameSettings::photoTimeSeperator1, &RenameSettings::photoTimePart2,
     &RenameSettings::photoTimeSeperator2, &RenameSettings::photoTimePart3},
};

class PhotoParameters final : public RenameStep {
 public:
  explicit PhotoParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  /// Whether an item whose name has this extension (no dot, any case) gets a name from the mask. All others are left
  /// alone.
  bool takes_part(std::u16string_view extension) const;
  bool reads(std::u16string_view extension) const override { return reads_files() && takes_part(extension); }
  bool reads_files() const override { return parts_.exif || parts_.iptc || parts_.size; }
  std::optional<PhotoMetadata> read_photo(const std::string& path) const override { return read(path); }
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

  std::u16string separator_;  // between values, never behind a text of the user's own; empty for none
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
NameOutcome renameByPhotoEXIFTags(const PhotoParameters& parameters, const FileSystemItem& item,
                                  std::int32_t& numberSequence, const PhotoMetadata* read, WorkingName& name);

extern const MethodRow photo_method;

/// Every field of the catalogue with its value for one file, as a mask would show it; the running number has none.
MetaDataList read_metadata_values(const std::string& path, const DateParts& parts);

}  // namespace brindle
