#include "metadata/image_properties.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "metadata/iptc_dictionary.h"
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
