#include "metadata/audio_module/format_gaps.h"

#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mpegfile.h>
#include <taglib/wavfile.h>

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace brindle::audio_module {
namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;

struct Name {
  Attribute attribute;
  const char* name;
};

// Beside the names that Windows' own programs write, those of converters.
constexpr Name asf_names[] = {{year, "WM/OriginalReleaseYear"}, {year, "date"},           {year, "Year"},
                              {comment, "Description"},         {comment, "WM/Comments"}, {artist, "Author"}};

// "Music by", "written by"; a track's number bears two names.
constexpr Name info_names[] = {{composer, "IMUS"}, {composer, "IWRI"}, {track_number, "ITRK"}};

StringList asf_values(const TagLib::ASF::Tag& tag, Attribute attribute) {
  StringList values;
  for (const Name& name : asf_names) {
    if (name.attribute != attribute) continue;
    for (const TagLib::ASF::Attribute& each : tag.attribute(name.name)) values.append(each.toString());
    if (!values.isEmpty()) break;
  }
  return values;
}

StringList info_values(const TagLib::RIFF::Info::Tag& tag, Attribute attribute) {
  for (const Name& name : info_names) {
    if (name.attribute != attribute) continue;
    if (const String text = tag.fieldText(name.name); !text.isEmpty()) return {text};
  }
  return {};
}

// What Windows Latin 1 has in place of control characters.
constexpr wchar_t windows_letters[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                       0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

String decoded(const ByteVector& bytes) {
  const ByteVector text = bytes.mid(0, static_cast<unsigned int>(bytes.find('\0')));
  const String unicode(text, String::UTF8);
  if (!unicode.isEmpty() || text.isEmpty()) return unicode;
  String latin(text, String::Latin1);
  for (wchar_t& letter : latin) {
    if (letter >= 0x80 && letter < 0xA0) letter = windows_letters[letter - 0x80];
  }
  return latin;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): the library's classes have none, and these live for ever.
class Id3v1Texts final : public TagLib::ID3v1::StringHandler {
 public:
  String parse(const ByteVector& bytes) const override { return decoded(bytes).stripWhiteSpace(); }
};

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class InfoTexts final : public TagLib::RIFF::Info::StringHandler {
 public:
  String parse(const ByteVector& bytes) const override { return decoded(bytes); }
};

// Of sixteen bytes each; the first four tell them apart.
constexpr std::string_view main_table = "\x40\xA4\xD0\xD2";
constexpr std::string_view later_tables = "\xB5\x03\xBF\x5F";
constexpr Offset head_size = 24;
constexpr Offset first_object = 30;
constexpr int object_limit = 64;
constexpr unsigned int record_limit = 4096;

using Counts = std::map<TagLib::String, unsigned int>;

TagLib::ByteVector read_at(BoundedStream& stream, Offset offset, BlockSize count) {
  stream.seek(offset);
  return stream.readBlock(count);
}

unsigned int short_at(BoundedStream& stream, Offset offset) {
  const TagLib::ByteVector bytes = read_at(stream, offset, 2);
  return bytes.size() < 2 ? 0 : bytes.toUShort(false);
}

// Each record: the name's size and the name, the value's type, its size, and the value.
Counts names_in_main_table(BoundedStream& stream, Offset at) {
  Counts counts;
  const unsigned int records = std::min(short_at(stream, at), record_limit);
  at += 2;
  for (unsigned int i = 0; i < records && at < stream.length(); ++i) {
    const unsigned int size = short_at(stream, at);
    const TagLib::String name(read_at(stream, at + 2, size), TagLib::String::UTF16LE);
    ++counts[name.to8Bit(true).c_str()];
    const Offset value = at + 2 + static_cast<Offset>(size) + 2;
    at = value + 2 + static_cast<Offset>(short_at(stream, value));
  }
  return counts;
}

/// What the main table holds of each name, when the later tables stand before it.
Counts misplaced_names(BoundedStream& stream) {
  bool has_later_tables = false;
  Offset at = first_object;
  for (int i = 0; i < object_limit && at < stream.length(); ++i) {
    const TagLib::ByteVector head = read_at(stream, at, head_size);
    if (head.size() < head_size) break;
    const std::string_view kind(head.data(), 4);
    if (kind == main_table) return has_later_tables ? names_in_main_table(stream, at + head_size) : Counts();
    has_later_tables = has_later_tables || kind == later_tables;
    const long long size = head.toLongLong(16U, false);
    if (size < head_size || size > stream.length() - at) break;
    at += static_cast<Offset>(size);
  }
  return {};
}

void put_last_first(TagLib::ASF::AttributeList& values, unsigned int count) {
  std::vector<TagLib::ASF::Attribute> ordered(values.begin(), values.end());
  std::rotate(ordered.begin(), ordered.end() - count, ordered.end());
  values.clear();
  for (const TagLib::ASF::Attribute& value : ordered) values.append(value);
}

}  // namespace

StringList further_values(const TagLib::File& file, Attribute attribute) {
  if (const auto* const asf = dynamic_cast<const TagLib::ASF::File*>(&file)) return asf_values(*asf->tag(), attribute);
  if (const auto* const wave = dynamic_cast<const TagLib::RIFF::WAV::File*>(&file))
    return info_values(*wave->InfoTag(), attribute);
  return {};
}

TagLib::PropertyMap further_properties(TagLib::File& file) {
  if (auto* const mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
    return mpeg->hasID3v2Tag() && mpeg->hasAPETag() ? mpeg->APETag()->properties() : TagLib::PropertyMap();
  }
  if (auto* const flac = dynamic_cast<TagLib::FLAC::File*>(&file)) {
    return flac->hasXiphComment() && flac->hasID3v2Tag() ? flac->ID3v2Tag()->properties() : TagLib::PropertyMap();
  }
  return {};
}

void order_asf_values(TagLib::ASF::File& file, BoundedStream& stream) {
  TagLib::ASF::AttributeListMap& all = file.tag()->attributeListMap();
  const bool any = std::any_of(all.begin(), all.end(), [](const auto& each) { return each.second.size() > 1; });
  if (!any) return;
  const Counts counts = misplaced_names(stream);
  for (auto& [name, values] : all) {
    const auto found = counts.find(name);
    if (found != counts.end() && found->second < values.size()) put_last_first(values, found->second);
  }
}

void read_unmarked_texts() {
  static const Id3v1Texts id3v1;
  static const InfoTexts info;
  static const bool once = [] {
    TagLib::ID3v1::Tag::setStringHandler(&id3v1);
    TagLib::RIFF::Info::Tag::setStringHandler(&info);
    return true;
  }();
  static_cast<void>(once);
}

}  // namespace brindle::audio_module
