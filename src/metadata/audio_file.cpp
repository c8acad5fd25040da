#include "metadata/audio_file.h"

#include <algorithm>
#include <string_view>

#include "metadata/audio_module/audio_module.h"
#include "platform/module.h"
#include "platform/regular_file.h"

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
  std::string extension(path.substr(dot + 1));
  for (char& letter : extension) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return extension;
}

void keep(void* context, std::uint32_t attribute, const char16_t* text, std::size_t size) noexcept {
  auto& data = *static_cast<AudioFileData*>(context);
  if (attribute < data.size()) data[attribute].emplace_back(text, size);
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

}  // namespace brindle
