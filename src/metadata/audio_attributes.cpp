#include "metadata/audio_attributes.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "metadata/audio_module/audio_module.h"
#include "platform/ascii.h"
#include "platform/byte_source.h"
#include "platform/module.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

static_assert(audio_tag_count == audio_module::attribute_count);

using Reader = decltype(audio_module::brindle_read_audio);

Reader* reader() {
  static const Module module(audio_module::file_name, audio_module::revision);
  static Reader* const function = module.function<Reader>("brindle_read_audio");
  return function;
}

std::string lower_extension(std::string_view path) {
  const std::size_t dot = path.find_last_of("./");
  if (dot == std::string_view::npos || path[dot] == '/') return {};
  return in_lower_case(path.substr(dot + 1));
}

void keep(void* context, std::uint32_t attribute, const char16_t* text, std::size_t size) noexcept {
  auto& data = *static_cast<AudioFileData*>(context);
  if (attribute < data.size()) data[attribute].emplace_back(text, size);
}

// In the order of audio_tokens, which is that of the file's tags.
static_assert(audio_tokens.size() == audio_tag_count);

// No name is as long.
constexpr std::size_t value_limit = 4096;

bool is_digit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// The number that digits stand for, as a number is written; none for 0, which files say when they do not know.
std::u16string number_of(std::u16string_view digits) {
  return std::u16string(digits.substr(std::min(digits.find_first_not_of(u'0'), digits.size())));
}

// "3/12" is the third of twelve.
std::u16string track_of(std::u16string_view text) {
  const auto end = std::ranges::find_if_not(text, is_digit);
  return number_of(text.substr(0, static_cast<std::size_t>(end - text.begin())));
}

// Dates come as "2004", "2004-05-17", "20040517", "May 2004".
std::u16string year_of(std::u16string_view text) {
  std::size_t run = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    run = is_digit(text[i]) ? run + 1 : 0;
    if (run == 4) return number_of(text.substr(i - 3, 4));
  }
  return run == text.size() ? number_of(text) : std::u16string();
}

std::u16string joined(const AudioTagValues& values) {
  std::u16string text;
  for (const std::u16string& value : values) {
    if (&value != &values.front()) text += u',';
    text += value;
    if (text.size() > value_limit) break;
  }
  return std::u16string(trimmed(std::u16string_view(text).substr(0, value_limit)));
}

// Code points that no version of Unicode has given a meaning, and halves of characters.
bool is_illegal(UChar32 character) {
  return u_charType(character) == U_UNASSIGNED || U_IS_SURROGATE(character);
}

std::u16string_view without_illegal_ends(std::u16string_view text) {
  const auto size = static_cast<std::int32_t>(text.size());
  std::int32_t start = 0;
  UChar32 character = 0;
  for (std::int32_t next = 0; next < size; start = next) {
    U16_NEXT(text, next, size, character);
    if (!is_illegal(character)) break;
  }
  std::int32_t end = size;
  for (std::int32_t next = size; next > start; end = next) {
    U16_PREV(text, start, next, character);
    if (!is_illegal(character)) break;
  }
  return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
}

std::u16string without_double_spaces(std::u16string_view text) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) == u"  ") {
      ++i;
    } else {
      result.push_back(text[i]);
    }
  }
  return result;
}

const std::u16string& first(const AudioTagValues& values) {
  static const std::u16string none;
  return values.empty() ? none : values.front();
}

std::u16string text_of(AudioTag tag, const AudioTagValues& values) {
  switch (tag) {
    case AudioTag::year:
      return year_of(trimmed(first(values)));
    case AudioTag::track_number:
      return track_of(trimmed(first(values)));
    case AudioTag::comment:
      return without_double_spaces(without_illegal_ends(trimmed(first(values))));
    default:
      return joined(values);
  }
}

}  // namespace

AudioFileData read_audio_file(const std::string& path, AudioTags wanted) {
  AudioFileData data;
  const RegularFile file = RegularFile::open(path);
  if (!file || reader() == nullptr) return data;
  file.expect_small_reads();
  const audio_module::Sink sink{&data, keep};
  reader()(file.descriptor(), file.size(), lower_extension(path).c_str(), wanted, &sink);
  return data;
}

AudioAttributes audio_attributes(const AudioFileData& data) {
  AudioAttributes attributes;
  for (std::size_t i = 0; i < attributes.size(); ++i) attributes[i] = text_of(static_cast<AudioTag>(i), data[i]);
  return attributes;
}

AudioAttributes read_audio_attributes(const std::string& path, AudioTags wanted) {
  AudioAttributes attributes = audio_attributes(read_audio_file(path, wanted));
  const bool hold_tokens = std::ranges::any_of(
      attributes, [](const std::u16string& text) { return text.find(u'<') != std::u16string::npos; });
  if (hold_tokens && wanted != all_audio_tags) return audio_attributes(read_audio_file(path));
  return attributes;
}

}  // namespace brindle
