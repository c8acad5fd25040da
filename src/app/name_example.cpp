#include "app/name_example.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>

#include "methods/date_time.h"
#include "methods/prefix_suffix.h"
#include "methods/rename_plan.h"
#include "methods/validation.h"
#include "platform/file_name.h"
#include "text/text_encoding.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::u16string in_lower_case(std::u16string extension) {
  for (char16_t& c : extension) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  }
  return extension;
}

// With an extension that the method takes.
std::u16string sample_name(const RenameSettings& settings) {
  const bool is_song = selected_method(settings) == Method::audio;
  const TextList& extensions = is_song ? settings.id3Extensions : settings.photoExtensions;
  const bool reads = is_song || selected_method(settings) == Method::photo;
  const std::u16string base = decode_utf8(localized(is_song ? "SAMPLESONG" : "SAMPLEPHOTO"));
  return base + (reads && !extensions.empty() ? in_lower_case(extensions.front()) : u".jpg");
}

ItemMetadata sample_metadata() {
  ItemMetadata metadata;
  PhotoMetadata photo;
  photo.image.exif.set(u"DateTimeOriginal", u"2026:03:07 14:05:09");
  photo.image.tiff.set(u"Make", decode_utf8(localized("SAMPLEMAKE")));
  photo.image.tiff.set(u"Model", decode_utf8(localized("SAMPLEMODEL")));
  photo.image.PixelWidth = u"4000";
  photo.image.PixelHeight = u"3000";
  metadata.photos.emplace_back(std::move(photo));
  metadata.audio = AudioAttributes();
  for (std::size_t i = 0; i < audio_tokens.size(); ++i) {
    const std::u16string_view token = audio_tokens[i];
    const bool is_number = token == u"<Year>" || token == u"<TrackNumber>";
    (*metadata.audio)[i] = is_number ? std::u16string(token == u"<Year>" ? u"2026" : u"1")
                                     : decode_utf8(localized(to_utf8(token.substr(1, token.size() - 2))));
  }
  return metadata;
}

// The made-up file, or the first of the list. A made-up file has no dates but now.
FileSystemItem example_item(RenameSettings& settings, const FileList* files, Date now) {
  FileSystemItem item;
  const bool reads = selected_method(settings) == Method::audio || selected_method(settings) == Method::photo;
  if (files != nullptr && !files->empty() && !reads) {
    files->read_without_new_name(0, item);
    return item;
  }
  item.set_path("/home/anna/" + localized("SAMPLEFOLDER"), to_utf8(sample_name(settings)));
  if (selected_method(settings) == Method::prefix_suffix) settings.prefixSuffixFileDateAttribute = date_of_now;
  if (selected_method(settings) == Method::date_time && settings.dateTimeDateOptionIndex != custom_date) {
    settings.dateTimeDateOptionIndex = custom_date;
    settings.dateTimeCustomDate = now;
  }
  return item;
}

}  // namespace

NameExample name_example(RenameSettings settings, const FileList* files, Date now) {
  if (selected_method(settings) == Method::from_list) return {};
  NameExample example;
  FileSystemItem item = example_item(settings, files, now);
  example.before = item.displayField("filenameWithExtension").value_or(u"");
  if (const std::optional<Refusal> refusal = validate_and_normalise(settings)) {
    example.problem = localized(refusal->title);
    return example;
  }
  try {
    RenamePlan plan(settings, now);
    plan.reset_counters();
    std::u16string error;
    const ItemMetadata metadata = sample_metadata();
    if (!plan.run(item, error, plan.reads_files() ? &metadata : nullptr)) example.problem = to_utf8(error);
    example.after = item.newFilename();
  } catch (const std::exception& exception) {
    example.problem = exception.what();
  }
  return example;
}

}  // namespace brindle
