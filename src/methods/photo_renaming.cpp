#include "methods/photo_renaming.h"

#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include "platform/file_name.h"
#include "platform/message_log.h"
#include "text/string_utilities.h"
#include "text/text_case.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

bool names(std::u16string_view mask, std::u16string_view group) {
  return SearchText(group, false).find(mask) != SearchText::npos;
}

std::u16string decimal(std::int32_t number) {
  std::array<char, 12> digits;
  const char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  return decode_latin1({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

constexpr std::u16string_view exif_tokens[] = {u"<EXIF_Date>",         u"<EXIF_Time>",       u"<EXIF_Device_Make>",
                                               u"<EXIF_Device_Model>", u"<EXIF_Dimensions>", u"<EXIF_Comments>"};

std::u16string dimensions_of(const CameraValues& camera) {
  if (camera.width.empty() || camera.height.empty()) return {};
  return camera.width + u"x" + camera.height;
}

}  // namespace

/// The EXIF values of one file.
struct PhotoParameters::Values {
  CameraValues camera;
  std::optional<WallTime> date;
};

PhotoParameters::PhotoParameters(const RenameSettings& settings)
    : separator_(settings.isPhotoRenamingSeperator ? on_disk(text_of(settings.photoRenamingSeperator))
                                                   : std::u16string()),
      replaces_colons_(settings.isPhotoRenamingColonReplace),
      colon_replacement_(on_disk(text_of(settings.photoRenamingColonReplace))),
      date_format_(pattern_on_disk(date_pattern, date_parts(settings, photo_parts))),
      time_format_(pattern_on_disk(time_pattern, date_parts(settings, photo_parts))),
      padding_(on_disk(text_of(settings.photoPaddingMask))),
      has_mask_(!is_blank(settings.photoRenamingMask)),
      mask_names_exif_(names(text_of(settings.photoRenamingMask), u"EXIF_")),
      mask_names_iptc_(names(text_of(settings.photoRenamingMask), u"IPTC_")),
      extensions_(settings.photoExtensions.begin(), settings.photoExtensions.end()) {
  for (const MetaDataField& field : settings.photoMetaDataList) tokens_.push_back(token_of(field.tagCode));
  plan_reading();
}

PhotoParameters::Token PhotoParameters::token_of(std::u16string_view tag) const {
  static constexpr std::pair<std::u16string_view, Part> parts[] = {
      {u"<FILEINFO_Filename>", Part::filename},
      {u"<EXIF_Date>", Part::date},
      {u"<EXIF_Time>", Part::time},
      {u"<EXIF_Device_Make>", Part::make},
      {u"<EXIF_Device_Model>", Part::model},
      {u"<EXIF_Dimensions>", Part::dimensions},
      {u"<EXIF_Comments>", Part::comment},
      {u"<SEQUENCES_Number_Sequence>", Part::number},
  };
  for (const auto& [token, part] : parts) {
    if (token == tag) return {part, {}, std::nullopt};
  }
  if (const MetaDataField* const field = find_field(tag)) return {Part::field, {}, FieldSource(field->metadataCode)};
  bool is_custom = false;
  std::u16string text;
  append_coloned(custom_text(tag, is_custom), text);
  return {Part::custom, std::move(text), std::nullopt};
}

bool PhotoParameters::is_written_by_camera(Part part) {
  switch (part) {
    case Part::date:
    case Part::time:
    case Part::make:
    case Part::model:
    case Part::dimensions:
    case Part::comment:
      return true;
    default:
      return false;
  }
}

// A mask that names neither EXIF nor IPTC reads nothing, whatever its tokens.
void PhotoParameters::plan_reading() {
  bool needs_time_only = true;
  for (const Token& token : tokens_) {
    parts_.exif = parts_.exif || ((mask_names_exif_ || mask_names_iptc_) && is_written_by_camera(token.part));
    if (token.part == Part::dimensions && parts_.exif) parts_.size = true;
    if (token.part != Part::field || !mask_names_iptc_) continue;
    parts_.iptc = true;
    if (const std::optional<XmpEntry> entry = token.source->xmp_entry()) xmp_entries_.add(*entry);
    needs_time_only = needs_time_only && token.source->key() != u"Date_Created";
  }
  may_spare_xmp_date_ = needs_time_only;
}

bool PhotoParameters::takes_part(std::u16string_view extension) const {
  if (!has_mask_) return false;
  std::u16string upper = u".";
  append_upper_case(extension, upper);
  return extensions_.contains(upper);
}

PhotoMetadata PhotoParameters::read(const std::string& path) const {
  PhotoMetadata metadata;
  if (!reads_files()) return metadata;
  metadata.image = read_image_properties(path, parts_);
  XmpEntries entries = xmp_entries_;
  // The file need not be searched for a date that the IPTC values bring.
  if (may_spare_xmp_date_ && metadata.image.iptc.find(u"TimeCreated") != nullptr)
    entries.remove(XmpEntry::date_created);
  metadata.xmp = find_xmp_texts(path, entries);
  return metadata;
}

void PhotoParameters::append_coloned(std::u16string_view value, std::u16string& out) const {
  static const SearchText colon(u":", true);
  if (replaces_colons_) {
    append_replaced(value, colon, colon_replacement_, 1, -1, out);
  } else {
    out.append(value);
  }
}

void PhotoParameters::append_value(const Token& token, const PhotoMetadata& metadata, const Values& values,
                                   WorkingName& name) const {
  std::u16string& out = name.scratch;
  switch (token.part) {
    case Part::filename:
      out.append(name.base);
      break;
    case Part::date:
      if (values.date) append_coloned(date_format_.format(*values.date), out);
      break;
    case Part::time:
      if (values.date) append_coloned(time_format_.format(*values.date), out);
      break;
    case Part::make:
      append_coloned(values.camera.make, out);
      break;
    case Part::model:
      append_coloned(values.camera.model, out);
      break;
    case Part::dimensions:
      append_coloned(dimensions_of(values.camera), out);
      break;
    case Part::comment:
      append_coloned(values.camera.comment, out);
      break;
    case Part::field:
      if (mask_names_iptc_) {
        append_coloned(token.source->value({metadata.image.iptc, metadata.xmp, date_format_, time_format_}), out);
      }
      break;
    case Part::custom:
      out.append(token.text);
      break;
    case Part::number:
      break;
  }
}

void PhotoParameters::write_name(const PhotoMetadata& metadata, std::int32_t numberSequence, WorkingName& name) const {
  Values values{camera_values(metadata.image), std::nullopt};
  values.date = date_of_stamp(values.camera.date);
  bool follows_custom = false;
  for (const Token& token : tokens_) {
    name.scratch.clear();
    if (token.part == Part::number) {
      append_padded(decimal(numberSequence), padding_, name.scratch);
    } else {
      append_value(token, metadata, values, name);
    }
    if (name.scratch.empty()) name.note(Warning::no_value);
    if (name.scratch.empty()) continue;
    if (!name.result.empty() && !follows_custom) name.result.append(separator_);
    name.result.append(name.scratch);
    follows_custom = token.part == Part::custom;
  }
  if (name.result.empty()) name.result.append(name.base);
}

NameOutcome PhotoParameters::make_name(StepRun& run) const {
  return renameByPhotoEXIFTags(*this, run.item, run.photo_number, run.photo, run.name);
}

NameOutcome renameByPhotoEXIFTags(const PhotoParameters& parameters, const FileSystemItem& item,
                                  std::int32_t& numberSequence, const PhotoMetadata* read, WorkingName& name) {
  if (!parameters.takes_part(name.extension)) {
    name.result = item.newFilename().empty() ? item.filenameWithExtension() : item.newFilename();
    return NameOutcome::whole;
  }
  const auto path = [&item] { return item.disk_path(); };
  std::optional<PhotoMetadata> own;
  if (read == nullptr) read = &own.emplace(parameters.read(path()));
  const MessageSubject subject(path);
  parameters.write_name(*read, numberSequence, name);
  if (numberSequence < std::numeric_limits<std::int32_t>::max()) ++numberSequence;
  return NameOutcome::base;
}

MetaDataList read_metadata_values(const std::string& path, const DateParts& parts) {
  const ImageProperties image = read_image_properties(path, {.exif = true, .iptc = true, .size = true});
  XmpEntries entries;
  entries.wanted.fill(true);
  const XmpTexts xmp = find_xmp_texts(path, entries);
  const DateFormatter date_format(pattern_on_disk(date_pattern, parts));
  const DateFormatter time_format(pattern_on_disk(time_pattern, parts));
  MetaDataList list;
  const auto path_of_file = [&path] { return path; };
  const MessageSubject subject(path_of_file);
  list.resetMetaDataList({image.iptc, xmp, date_format, time_format});
  const CameraValues camera = camera_values(image);
  const std::optional<WallTime> date = date_of_stamp(camera.date);
  const std::array<std::u16string, std::size(exif_tokens)> values = {
      date ? date_format.format(*date) : std::u16string(),
      date ? time_format.format(*date) : std::u16string(),
      camera.make,
      camera.model,
      dimensions_of(camera),
      camera.comment};
  for (std::size_t i = 0; i < values.size(); ++i) list.set_value(exif_tokens[i], values[i]);
  const std::u16string name = decode_file_name(path.substr(path.rfind('/') + 1));
  list.set_value(u"<FILEINFO_Filename>", split_extension(name).base);
  return list;
}

namespace {

void add_photo_rows(RuleRows& rows, RuleVariant) {
  rows.text("Renaming Mask", &RenameSettings::photoRenamingMask);
  rows.text_if(&RenameSettings::isPhotoRenamingSeperator, "Separator", &RenameSettings::photoRenamingSeperator);
  rows.text_if(&RenameSettings::isPhotoRenamingColonReplace, "Replace colon[:] with character(s)",
               &RenameSettings::photoRenamingColonReplace);
  const DateParts parts = date_parts(rows.settings, photo_parts);
  rows.text("Date Format", date_pattern(parts));
  rows.text("Time Format", time_pattern(parts));
  rows.text_if_any("Sequence Padding Mask", &RenameSettings::photoPaddingMask);
  rows.flag("Reset Sequence On Each Folder", &RenameSettings::isPhotoResetSequenceOnEachFolder);
  rows.list("Allowed Extensions", rows.settings.photoExtensions);
}

constexpr auto photo_kinds = std::to_array<RuleKind>({{RuleVariant::photo, u"Photo"}});

constexpr auto absent_photo_options = std::to_array<AbsentOption>({
    {&RenameSettings::photoRenamingSeperator},
    {&RenameSettings::photoRenamingColonReplace},
    {&RenameSettings::photoDateSeperator1},
    {&RenameSettings::photoDateSeperator2},
    {&RenameSettings::photoTimeSeperator1},
    {&RenameSettings::photoTimeSeperator2},
    {&RenameSettings::photoPaddingMask},
});

constexpr auto photo_requirements =
    std::to_array<Requirement>({{&RenameSettings::photoRenamingMask, "PHOTOINVALIDINPUT", "INVALIDPHOTORENAMINGMASK"}});

}  // namespace

constexpr MethodRow photo_method = {
    .method = Method::photo,
    .title = "METHODPHOTO",
    .icon = "photo",
    .rule = u"Photo",
    .kinds = photo_kinds,
    .absent = absent_photo_options,
    .required = photo_requirements,
    .step = step_of<PhotoParameters>,
    .add_rows = add_photo_rows,
    .restarts_in_folder = &RenameSettings::isPhotoResetSequenceOnEachFolder,
};

}  // namespace brindle
