// Audio tags: how names are put together, from values as files hold them.

#include "methods/audio_renaming.h"

#include <gtest/gtest.h>

#include "case_table.h"
#include "methods/sample_item.h"

namespace brindle::test {
namespace {

std::vector<std::u16string> split_bars(const std::u16string& text) {
  std::vector<std::u16string> parts;
  for (std::size_t start = 0; start <= text.size() && !text.empty();) {
    const std::size_t end = std::min(text.find(u'|', start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

AudioAttributes attributes_of(const Case& c) {
  constexpr const char* keys[] = {"artist", "year", "genre", "title", "album", "comment", "track", "composer"};
  AudioFileData data;
  for (std::size_t i = 0; i < data.size(); ++i) data[i] = split_bars(c[keys[i]]);
  return audio_attributes(data);
}

AudioParameters parameters_of(const Case& c) {
  const std::vector<std::u16string> tags = split_bars(c["tags"]);
  const std::vector<std::u16string> extensions = split_bars(c.has("extensions") ? c["extensions"] : u".MP3|.M4A");
  return AudioParameters({.id3RenamingMask = c["mask"],
                          .isID3RenamingSeperator = c.has("separator"),
                          .id3RenamingSeperator = c["separator"],
                          .isID3RenamingColonReplace = c.has("colon"),
                          .id3RenamingColonReplace = c["colon"],
                          .tags = tags,
                          .allowedExtensions = extensions});
}

TEST(AudioRenaming, DoesAsTheTableSays) {
  for_each_case("audio_renaming", [](const Case& c) {
    const AudioAttributes read = attributes_of(c);
    const AudioParameters parameters = parameters_of(c);
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByID3Tags(item, parameters, name, error, &read);
    });
  });
}

TEST(AudioRenaming, ReadsFilesOnlyForTokensThatCount) {
  const std::vector<std::u16string> tags = {u"<Artist>"};
  const std::vector<std::u16string> text = {u"<artist>"};
  EXPECT_TRUE(AudioParameters({.id3RenamingMask = u"a<Title>"}).reads_files());
  EXPECT_FALSE(AudioParameters({.id3RenamingMask = u"a<title>", .tags = tags}).reads_files());
  EXPECT_TRUE(AudioParameters(
                  {.id3RenamingMask = u"-", .isID3RenamingSeperator = true, .id3RenamingSeperator = u"-", .tags = tags})
                  .reads_files());
  EXPECT_FALSE(
      AudioParameters(
          {.id3RenamingMask = u"<Artist>", .isID3RenamingSeperator = true, .id3RenamingSeperator = u"-", .tags = text})
          .reads_files());
}

// Each value holds the next token five hundred times: 500⁷ characters, were nobody to stop.
TEST(AudioRenaming, ValuesFullOfTokensEndInANameThatIsTooLong) {
  AudioAttributes bomb;
  for (std::size_t i = 0; i < bomb.size(); ++i) {
    for (int times = 0; times < 500; ++times) bomb[i] += i + 1 < bomb.size() ? audio_tokens[i + 1] : u"x";
  }
  const std::vector<std::u16string> extensions = {u".MP3"};
  const AudioParameters parameters({.id3RenamingMask = u"<Artist>", .allowedExtensions = extensions});
  FileSystemItem item = sample_item(u"x.mp3");
  WorkingName name;
  std::u16string error;
  EXPECT_TRUE(renameByID3Tags(item, parameters, name, error, &bomb));
  EXPECT_GT(item.newFilename().size(), 255U);
  EXPECT_LE(item.newFilename().size(), 70000U);
}

}  // namespace
}  // namespace brindle::test
