#include "metadata/audio_module/audio_module.h"

#include <taglib/fileref.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "metadata/audio_module/bounded_stream.h"
#include "metadata/audio_module/format_gaps.h"
#include "platform/module.h"

namespace brindle::audio_module {
namespace {

using TagLib::String;
using TagLib::StringList;

// No name holds more than 255 bytes.
constexpr std::size_t value_limit = 4096;
constexpr std::size_t list_limit = 64;

// The header of a frame is open to its kin alone.
struct FrameKin : TagLib::ID3v2::Frame {
  using Frame::Header;
};

// Frames are objects, and so is each of the texts in them: what all of a file's tags may hold. Hundreds of chapters are
// rare, and so are thousands of words.
struct FrameBudget {
  std::size_t frames = 4096;
  std::size_t text_bytes = std::size_t{256} << 10U;
};
thread_local FrameBudget frame_budget;
thread_local std::uint32_t wanted_attributes = 0;

bool is_wanted(Attribute attribute) {
  return (wanted_attributes >> attribute & 1U) != 0;
}

struct FrameName {
  std::string_view id;
  Attribute attribute;
};

// As the three versions of the tag call them.
constexpr FrameName frame_names[] = {
    {"TPE1", artist},      {"TP1", artist},    {"TDRC", year},    {"TRDC", year},   {"TRDA", year},
    {"TYER", year},        {"TYE", year},      {"TDAT", year},    {"TDA", year},    {"TIME", year},
    {"TIM", year},         {"TCON", genre},    {"TCO", genre},    {"TIT2", title},  {"TT2", title},
    {"TALB", album},       {"TAL", album},     {"COMM", comment}, {"COM", comment}, {"TRCK", track_number},
    {"TRK", track_number}, {"TCOM", composer}, {"TCM", composer}};

// Texts of the user's own may stand for anything.
bool is_wanted_frame(std::string_view id) {
  if (id == "TXXX" || id == "TXX") return true;
  return std::any_of(std::begin(frame_names), std::end(frame_names),
                     [id](const FrameName& name) { return name.id == id && is_wanted(name.attribute); });
}

// Leaves all frames alone but the texts and comments that are wanted: the library reads chapters by recursion, without
// a bound, and unpacks whatever is packed, to whatever size. (It unpacks frames left alone too, unless their header
// says no more that they are packed.)
class TextFrames final : public TagLib::ID3v2::FrameFactory {
 public:
  static TextFrames& instance() {
    static TextFrames frames;
    return frames;
  }

 protected:
  bool updateFrame(FrameKin::Header* header) const override {
    if (header->compression()) clear_flags(*header);
    if (frame_budget.frames == 0) {
      header->setFrameSize(0);  // ends the reading of the tag
      return false;
    }
    --frame_budget.frames;
    return is_text(*header) && FrameFactory::updateFrame(header);
  }

 private:
  // A packed frame bears another name once it counts as one that is not.
  static void clear_flags(FrameKin::Header& header) {
    const TagLib::ByteVector size = TagLib::ByteVector::fromUInt(header.frameSize());
    header.setData(TagLib::ByteVector("XXXX") + size + TagLib::ByteVector(2, '\0'), 3U);
  }

  static bool is_text(const FrameKin::Header& header) {
    const TagLib::ByteVector id = header.frameID();
    const std::size_t size = header.frameSize();
    if (!is_wanted_frame({id.data(), id.size()}) || size > frame_budget.text_bytes) return false;
    frame_budget.text_bytes -= size;
    return true;
  }
};

class Reporter {
 public:
  explicit Reporter(const Sink& sink) : sink_(sink) {}

  bool report(Attribute attribute, const String& value) {
    text_.clear();
    for (const wchar_t unit : value) {
      // A text of C's ends here, and so does one that was padded.
      if (unit == 0 || text_.size() == value_limit) break;
      text_.push_back(static_cast<char16_t>(unit));
    }
    if (text_.find_first_not_of(u" \t\r\n") == std::u16string::npos) return false;  // blank is a gap, too
    sink_.value(sink_.context, attribute, text_.data(), text_.size());
    return true;
  }
  bool report(Attribute attribute, const StringList& values) {
    std::size_t left = list_limit;
    bool any = false;
    for (const String& value : values) {
      if (left-- == 0) break;
      any = report(attribute, value) || any;
    }
    return any;
  }
  void report(Attribute attribute, unsigned int number) {
    if (number != 0) report(attribute, String::number(static_cast<int>(number)));
  }

 private:
  const Sink& sink_;
  std::u16string text_;
};

// Players keep notes to themselves in comments that have a name: "COMMENT:ITUNNORM".
bool is_named_comment(const String& key) {
  return key.startsWith("COMMENT:") && !key.startsWith("COMMENT:ITUN");
}

// The comment without a name; else the first one that a person may have written. True also when there are only others.
bool report_comment(const TagLib::PropertyMap& properties, Reporter& reporter) {
  const auto plain = properties.find("COMMENT");
  if (plain != properties.end() && !plain->second.isEmpty()) {
    for (const String& comment : plain->second) {
      if (reporter.report(Attribute::comment, comment)) return true;
    }
  }
  bool any = false;
  for (const auto& [key, values] : properties) {
    any = any || key.startsWith("COMMENT:");
    if (is_named_comment(key) && !values.isEmpty() && reporter.report(comment, values.front())) return true;
  }
  return any;
}

StringList values_at(const TagLib::PropertyMap& properties, const char* key) {
  const auto found = properties.find(key);
  return found == properties.end() ? StringList() : found->second;
}

// WMA has one artist in one place and the others in another.
StringList all_artists(const TagLib::PropertyMap& properties, const TagLib::File& file) {
  StringList artists = values_at(properties, "ARTIST");
  for (const String& other : further_values(file, artist)) {
    if (!artists.contains(other)) artists.append(other);
  }
  return artists;
}

struct Property {
  Attribute attribute;
  const char* key;
};
constexpr Property property_names[] = {{artist, "ARTIST"},
                                       {year, "DATE"},
                                       {genre, "GENRE"},
                                       {title, "TITLE"},
                                       {album, "ALBUM"},
                                       {comment, "COMMENT"},
                                       {track_number, "TRACKNUMBER"},
                                       {composer, "COMPOSER"}};

// What the library says of any kind of tag.
void report_plain(Attribute attribute, const TagLib::Tag& tag, Reporter& reporter) {
  switch (attribute) {
    case artist:
      reporter.report(artist, tag.artist());
      return;
    case year:
      reporter.report(year, tag.year());
      return;
    case genre:
      reporter.report(genre, tag.genre());
      return;
    case title:
      reporter.report(title, tag.title());
      return;
    case album:
      reporter.report(album, tag.album());
      return;
    case comment:
      reporter.report(comment, tag.comment());
      return;
    case track_number:
      reporter.report(track_number, tag.track());
      return;
    case composer:
      return;
  }
}

// A file may hold several tags. The first counts and the others fill its gaps.
void report_tags(TagLib::File& file, Reporter& reporter) {
  const TagLib::PropertyMap properties = file.properties();
  const TagLib::PropertyMap second = further_properties(file);
  const TagLib::Tag* const all = file.tag();
  const auto report = [&](Attribute attribute, const char* key) {
    return reporter.report(attribute, values_at(properties, key)) ||
           reporter.report(attribute, values_at(second, key)) ||
           reporter.report(attribute, further_values(file, attribute));
  };
  for (const Property& property : property_names) {
    if (!is_wanted(property.attribute)) continue;
    const bool first = (property.attribute == artist && reporter.report(artist, all_artists(properties, file))) ||
                       (property.attribute == comment && report_comment(properties, reporter));
    if (first || report(property.attribute, property.key) || all == nullptr) continue;
    report_plain(property.attribute, *all, reporter);
  }
}

struct Kind {
  std::size_t offset;
  std::string_view bytes;
  const char* name;
};

// The library looks for such tags in some kinds of files only.
bool ends_with_ape_tag(BoundedStream& stream) {
  constexpr Offset footer_size = 32;
  stream.seek(std::max<Offset>(0, stream.length() - footer_size));
  const bool is_tag = stream.readBlock(footer_size).startsWith("APETAGEX");
  stream.seek(0);
  return is_tag;
}

// The name for the library to judge by: songs often bear the wrong extension, and ".aac" is unknown to it.
std::string library_name(BoundedStream& stream, std::string_view extension) {
  constexpr Kind kinds[] = {{4, "ftyp", "x.m4a"}, {0, "fLaC", "x.flac"}, {0, "RIFF", "x.wav"}, {0, "FORM", "x.aiff"}};
  const TagLib::ByteVector head = stream.readBlock(8);
  stream.seek(0);
  const std::string_view bytes(head.data(), head.size());
  for (const Kind& kind : kinds) {
    if (bytes.size() >= 8 && bytes.substr(kind.offset, kind.bytes.size()) == kind.bytes) return kind.name;
  }
  if (extension == "tta" && ends_with_ape_tag(stream)) return "x.ape";
  return extension == "aac" || extension == "mp2" ? "x.mp3" : "x." + std::string(extension);
}

}  // namespace

extern "C" std::uint32_t brindle_module_revision() {
  return revision;
}

extern "C" void brindle_read_audio(int descriptor, std::uint64_t size, const char* extension, std::uint32_t wanted,
                                   const Sink* sink) {
  try {
    wanted_attributes = wanted;
    frame_budget = {};
    read_unmarked_texts();
    BoundedStream stream(descriptor, size);
    stream.set_name(library_name(stream, extension));
    const TagLib::FileRef song(&stream, false);
    if (song.isNull() || !song.file()->isValid()) return;
    if (auto* const asf = dynamic_cast<TagLib::ASF::File*>(song.file())) order_asf_values(*asf, stream);
    Reporter reporter(*sink);
    report_tags(*song.file(), reporter);
  } catch (...) {
    // A file that breaks the library's rules has no values.
  }
}

}  // namespace brindle::audio_module

// The library finds this function before its own, and so makes its frames here, whatever kind of file they are in.
TagLib::ID3v2::FrameFactory* TagLib::ID3v2::FrameFactory::instance() {
  return &brindle::audio_module::TextFrames::instance();
}
