// Songs of every usual kind, tagged by another program.

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "metadata/audio_attributes.h"
#include "platform/file_name.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

/// A tenth of a second of silence with all the tags.
bool make_song(const std::string& path, const std::string& options) {
  const std::string command =
      "ffmpeg -v error -f lavfi -i anullsrc=r=48000:cl=mono -t 0.1 -metadata artist='Hélène & Zoë' -metadata date=1964 "
      "-metadata genre=Chanson -metadata title='Amsterdam: a/b 日本' -metadata album=Olympia -metadata comment='Live, "
      "fine' -metadata track=3/12 -metadata composer='Brel' " +
      options + " '" + path + "' </dev/null";
  return std::system(command.c_str()) == 0;
}

TEST(AudioFormats, AreReadAsAnotherProgramWroteThem) {
  if (std::system("command -v ffmpeg >/dev/null") != 0) GTEST_SKIP() << "needs ffmpeg";
  struct Song {
    const char* name;
    const char* options;
  };
  const Song songs[] = {{"a.mp3", ""},
                        {"b.mp3", "-id3v2_version 3"},
                        {"c.m4a", ""},
                        {"d.m4b", "-f mp4"},
                        {"e.aac", "-write_id3v2 1"},
                        {"f.flac", ""},
                        {"g.ogg", "-c:a flac"},
                        {"h.opus", ""},
                        {"i.aiff", "-write_id3v2 1"},
                        {"j.wv", ""}};
  const TempTree tree;
  for (const Song& song : songs) {
    ASSERT_TRUE(make_song(tree / song.name, song.options)) << song.name;
    std::vector<std::string> texts;
    for (const std::u16string& text : read_audio_attributes(tree / song.name)) texts.push_back(to_utf8(text));
    EXPECT_THAT(texts, testing::ElementsAre("Hélène & Zoë", "1964", "Chanson", "Amsterdam: a/b 日本", "Olympia",
                                            "Live, fine", "3", "Brel"))
        << song.name;
  }
}

}  // namespace
}  // namespace brindle::test
