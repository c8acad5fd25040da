// Feeds any bytes to the reader of songs. What it reports must keep its promises, and so must the name made of it.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

#include "methods/audio_renaming.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

// The extension decides how bytes are read that do not tell what they are: take one after the other.
std::string path_of(const std::string& folder, std::uint8_t choice) {
  constexpr const char* extensions[] = {"mp3", "aac", "m4a", "ogg", "opus", "flac", "wav", "aiff", "wma",
                                        "ape", "mpc", "wv",  "tta", "spx",  "mod",  "s3m", "it",   "xm"};
  return folder + "/song." + extensions[choice % std::size(extensions)];
}

void check_name(const brindle::AudioAttributes& attributes) {
  static const brindle::AudioParameters parameters = [] {
    brindle::RenameSettings settings;
    settings.id3RenamingMask = u"<Artist> <Year> <Genre> <Title> <Album> <Comments> <TrackNumber> <Composer>";
    settings.isID3RenamingColonReplace = true;
    return brindle::AudioParameters(settings);
  }();
  brindle::FileSystemItem item;
  item.set_path("/music", "song.mp3");
  brindle::WorkingName name;
  brindle::SequenceCounter counter;
  std::int32_t photo_number = 1;
  brindle::StepRun run{item, name, counter, photo_number, &attributes, nullptr};
  std::u16string error;
  require(brindle::run_step(parameters, run, error));
  require(item.newFilename().ends_with(u".mp3"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string folder = [] {
    std::string pattern = "/dev/shm/brindle-fuzz-XXXXXX";
    require(::mkdtemp(pattern.data()) != nullptr);
    return pattern;
  }();
  if (size == 0) return 0;
  const std::string path = path_of(folder, data[0]);
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  require(file != nullptr);
  std::fwrite(data + 1, 1, size - 1, file);
  std::fclose(file);
  const brindle::AudioFileData read = brindle::read_audio_file(path);
  for (const brindle::AudioTagValues& values : read) {
    for (const std::u16string& value : values) {
      require(!value.empty() && value.size() <= 4096 && value.find(u'\0') == std::u16string::npos);
    }
  }
  check_name(brindle::audio_attributes(read));
  ::unlink(path.c_str());
  return 0;
}
