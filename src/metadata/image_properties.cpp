#include "metadata/image_properties.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "metadata/xmp_packet.h"
#include "text/number_text.h"
#include "text/string_utilities.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t comment_code_size = 8;

// Cameras fill up with NUL.
std::string_view without_padding(std::string_view bytes) {
  return bytes.substr(0, bytes.find('\0'));
}

// Whether the first eight bytes are that code. Some cameras fill it up with blanks.
bool has_code(std::string_view bytes, std::string_view code) {
  return bytes.size() >= comment_code_size && bytes.starts_with(code) &&
         bytes.substr(code.size(), comment_code_size - code.size()).find_first_not_of("\0 "sv) ==
             std::string_view::npos;
}

// Whoever writes the comment as a plain text leaves the code out.
std::u16string decode_comment(std::string_view bytes, bool big_endian) {
  const std::string_view text = bytes.substr(std::min(bytes.size(), comment_code_size));
  if (has_code(bytes, "UNICODE")) {
    const std::u16string decoded = decode_utf16(text, big_endian);
    return decoded.substr(0, decoded.find(u'\0'));
  }
  if (has_code(bytes, "JIS")) return decode_japanese(without_padding(text));
  const bool is_coded = has_code(bytes, "ASCII") || has_code(bytes, "");
  return decode_text(without_padding(is_coded ? text : bytes));
}

const std::string& bytes_of(const ImageFileData& data, ExifTag tag) {
  return data.exif[static_cast<std::size_t>(tag)];
}

void append_text(PropertyDictionary& dictionary, std::u16string_view key, std::u16string text) {
  if (!text.empty()) dictionary.append(key, std::move(text));
}

std::u16string decimal(std::uint32_t number) {
  return number == 0 ? std::u16string() : decode_latin1(std::to_string(number));
}

std::u16string text_at(const PropertyDictionary& dictionary, std::u16string_view key) {
  const PropertyValue* const value = dictionary.find(key);
  const auto* const text = value == nullptr ? nullptr : value->get_if<std::u16string>();
  return text == nullptr ? std::u16string() : *text;
}

std::u16string trimmed_text_at(const PropertyDictionary& dictionary, std::u16string_view key) {
  return std::u16string(trimmed(text_at(dictionary, key)));
}

constexpr std::string_view dc = "http://purl.org/dc/elements/1.1/";
constexpr std::string_view photoshop = "http://ns.adobe.com/photoshop/1.0/";
constexpr std::string_view rights = "http://ns.adobe.com/xap/1.0/rights/";
constexpr std::string_view iptc_core = "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/";

constexpr std::uint8_t no_number = 0;  // in truth the version of the record

/// Where one value stands: in which data sets of the application record, and in which property of XMP (empty for none).
struct Source {
  std::u16string_view key;
  std::uint8_t number;
  XmpName property;
  bool repeats = false;
};

constexpr Source sources[] = {
    {u"ObjectName", 5, {dc, "title"}},
    {u"ObjectAttributeReference", 4, {iptc_core, "IntellectualGenre"}, true},
    {u"Urgency", 10, {photoshop, "Urgency"}},
    {u"SubjectReference", 12, {iptc_core, "SubjectCode"}, true},
    {u"Category", 15, {photoshop, "Category"}},
    {u"SupplementalCategory", 20, {photoshop, "SupplementalCategories"}, true},
    {u"Keywords", 25, {dc, "subject"}, true},
    {u"SpecialInstructions", 40, {photoshop, "Instructions"}},
    {u"DateCreated", 55, {}},
    {u"TimeCreated", 60, {}},
    {u"Byline", 80, {dc, "creator"}, true},
    {u"BylineTitle", 85, {photoshop, "AuthorsPosition"}, true},
    {u"City", 90, {photoshop, "City"}},
    {u"SubLocation", 92, {iptc_core, "Location"}},
    {u"Province/State", 95, {photoshop, "State"}},
    {u"Country/PrimaryLocationCode", 100, {iptc_core, "CountryCode"}},
    {u"Country/PrimaryLocationName", 101, {photoshop, "Country"}},
    {u"OriginalTransmissionReference", 103, {photoshop, "TransmissionReference"}},
    {u"Headline", 105, {photoshop, "Headline"}},
    {u"Credit", 110, {photoshop, "Credit"}},
    {u"Source", 115, {photoshop, "Source"}},
    {u"CopyrightNotice", 116, {dc, "rights"}},
    {u"Caption/Abstract", 120, {dc, "description"}},
    {u"Writer/Editor", 122, {photoshop, "CaptionWriter"}, true},
    {u"UsageTerms", no_number, {rights, "UsageTerms"}},
    {u"Scene", no_number, {iptc_core, "Scene"}, true},
};

constexpr std::pair<std::u16string_view, std::string_view> contact_fields[] = {
    {u"CiAdrExtadr", "CiAdrExtadr"}, {u"CiAdrCity", "CiAdrCity"}, {u"CiAdrRegion", "CiAdrRegion"},
    {u"CiAdrPcode", "CiAdrPcode"},   {u"CiAdrCtry", "CiAdrCtry"}, {u"CiTelWork", "CiTelWork"},
    {u"CiEmailWork", "CiEmailWork"}, {u"CiUrlWork", "CiUrlWork"},
};

constexpr std::uint8_t envelope_record = 1;
constexpr std::uint8_t application_record = 2;
constexpr std::uint8_t character_set_number = 90;
constexpr std::uint8_t subject_reference_number = 12;

using Texts = std::vector<std::u16string>;

// The envelope says so with an escape sequence; everything else means the old single-byte sets, or nothing.
bool is_marked_utf8(const ImageFileData& data) {
  return std::any_of(data.iptc.begin(), data.iptc.end(), [](const IptcDataSet& set) {
    return set.record == envelope_record && set.number == character_set_number && set.bytes.starts_with("\x1B%G");
  });
}

bool is_ascii_digit(char byte) {
  return byte >= '0' && byte <= '9';
}

// "IPTC:15054000:SPO:soccer:" says what its eight digits say already.
std::string_view subject_code(std::string_view reference) {
  const std::size_t colon = reference.find(':');
  if (colon == std::string_view::npos) return reference;
  const std::string_view code = reference.substr(colon + 1, 8);
  const bool is_code = code.size() == 8 && std::all_of(code.begin(), code.end(), is_ascii_digit) &&
                       (reference.size() == colon + 9 || reference[colon + 9] == ':');
  return is_code ? code : reference;
}

/// The data sets of one block, decoded.
class DataSets {
 public:
  explicit DataSets(const ImageFileData& data) : data_(data), utf8_(is_marked_utf8(data)) {}

  Texts values(std::uint8_t number) const {
    Texts texts;
    for (const IptcDataSet& set : data_.iptc) {
      if (set.record == application_record && set.number == number) texts.push_back(decode(set));
    }
    return texts;
  }

 private:
  std::u16string decode(const IptcDataSet& set) const {
    std::string_view bytes = std::string_view(set.bytes).substr(0, set.bytes.find('\0'));
    if (set.number == subject_reference_number) bytes = subject_code(bytes);
    return utf8_ ? decode_utf8(bytes) : decode_text(bytes);
  }

  const ImageFileData& data_;
  bool utf8_;
};

Texts values_of(const XmpPacket& packet, const Source& source) {
  Texts texts;
  if (source.property.name.empty()) return texts;
  if (source.repeats) {
    for (const std::string& member : packet.list(source.property)) texts.push_back(decode_utf8(member));
  } else if (const std::string text = packet.text(source.property); !text.empty()) {
    texts.push_back(decode_utf8(text));
  }
  return texts;
}

void append(PropertyDictionary& dictionary, const Source& source, Texts&& texts) {
  if (texts.empty()) return;
  if (source.repeats) {
    dictionary.append(source.key, PropertyValue::Array(texts.begin(), texts.end()));
  } else {
    dictionary.append(source.key, std::move(texts.front()));
  }
}

void append_contact(PropertyDictionary& dictionary, const XmpPacket& packet) {
  PropertyDictionary contact;
  for (const auto& [key, name] : contact_fields) {
    const std::string text = packet.field({iptc_core, "CreatorContactInfo"}, {iptc_core, name});
    if (!text.empty()) contact.append(key, decode_utf8(text));
  }
  if (!contact.empty()) dictionary.append(u"CreatorContactInfo", std::move(contact));
}

// Values of IPTC data sets, and of the XMP packet for every name that no data set fills. What the standard lets repeat
// is a list, in the order of the file; "CreatorContactInfo" is a dictionary; all else is text.
PropertyDictionary iptc_dictionary(const ImageFileData& data) {
  PropertyDictionary dictionary;
  if (data.iptc.empty() && data.xmp_packet.empty()) return dictionary;
  const DataSets sets(data);
  const XmpPacket packet(data.xmp_packet);
  for (const Source& source : sources) {
    Texts texts = source.number == no_number ? Texts() : sets.values(source.number);
    if (texts.empty()) texts = values_of(packet, source);
    append(dictionary, source, std::move(texts));
  }
  append_contact(dictionary, packet);
  return dictionary;
}

}  // namespace

ImageProperties image_properties(const ImageFileData& data) {
  ImageProperties properties;
  const auto add = [&data](PropertyDictionary& dictionary, std::u16string_view key, ExifTag tag) {
    append_text(dictionary, key, decode_text(without_padding(bytes_of(data, tag))));
  };
  add(properties.exif, u"DateTimeOriginal", ExifTag::date_time_original);
  append_text(properties.exif, u"UserComment", decode_comment(bytes_of(data, ExifTag::user_comment), data.big_endian));
  add(properties.exif, u"PixelXDimension", ExifTag::pixel_x_dimension);
  add(properties.exif, u"PixelYDimension", ExifTag::pixel_y_dimension);
  add(properties.tiff, u"DateTime", ExifTag::date_time);
  add(properties.tiff, u"Make", ExifTag::make);
  add(properties.tiff, u"Model", ExifTag::model);
  properties.iptc = iptc_dictionary(data);
  properties.PixelWidth = decimal(data.width);
  properties.PixelHeight = decimal(data.height);
  return properties;
}

ImageProperties read_image_properties(const std::string& path, ImageParts parts) {
  return image_properties(read_image_file(path, parts));
}

CameraValues camera_values(const ImageProperties& properties) {
  CameraValues values{.date = trimmed_text_at(properties.exif, u"DateTimeOriginal"),
                      .make = trimmed_text_at(properties.tiff, u"Make"),
                      .model = trimmed_text_at(properties.tiff, u"Model"),
                      .comment = trimmed_text_at(properties.exif, u"UserComment"),
                      .width = properties.PixelWidth,
                      .height = properties.PixelHeight};
  if (values.date.empty()) values.date = trimmed_text_at(properties.tiff, u"DateTime");
  if (values.width.empty() || values.height.empty()) {
    values.width = text_at(properties.exif, u"PixelXDimension");
    values.height = text_at(properties.exif, u"PixelYDimension");
  }
  return values;
}

PhotoFields read_photo_fields(const std::string& path) {
  const CameraValues values = camera_values(read_image_properties(path, {.exif = true, .iptc = false, .size = true}));
  PhotoFields fields{values.make, values.model, {}, date_of_stamp(values.date), 0};
  if (values.width.empty() || values.height.empty()) return fields;
  fields.dimensions = values.width + u" x " + values.height;
  const std::int64_t sum = std::int64_t{integer_value(values.width)} + integer_value(values.height);
  fields.dimensionValue = static_cast<std::int32_t>(std::min<std::int64_t>(sum, INT32_MAX));
  return fields;
}

}  // namespace brindle
