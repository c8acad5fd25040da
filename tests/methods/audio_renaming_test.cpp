// Audio tags: how names are put together, from values as files hold them.

#include "methods/audio_renaming.h"

#include <gtest/gtest.h>

#include "case_table.h"
#include "methods/sample_item.h"
#include "settings/stored_value.h"

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

FieldList tag_fields(const std::vector<std::u16string>& tags) {
  FieldList fields;
  for (const std::u16string& tag : tags) fields.push_back(field_of_token(tag));
  return fields;
}

TEST(AudioRenaming, DoesAsTheTableSays) {
  for_each_case("audio_renaming", [](const Case& c) {
    const AudioAttributes read = attributes_of(c);
    RenameSettings settings;
    settings.id3RenamingMask = c["mask"];
    settings.isID3RenamingSeperator = c.has("separator");
    settings.id3RenamingSeperator = c["separator"];
    settings.isID3RenamingColonReplace = c.has("colon");
    settings.id3RenamingColonReplace = c["colon"];
    settings.id3RenamingTagsList = tag_fields(split_bars(c["tags"]));
    settings.id3Extensions = split_bars(c.has("extensions") ? c["extensions"] : u".MP3|.M4A");
    expect_case(c, AudioParameters(settings), &read);
  });
}

TEST(AudioRenaming, ReadsFilesOnlyForTokensThatCount) {
  const auto reads = [](const char16_t* mask, const char16_t* tag, bool is_separated) {
    RenameSettings settings;
    settings.id3RenamingMask = mask;
    settings.id3RenamingTagsList = tag_fields({tag});
    settings.isID3RenamingSeperator = is_separated;
    settings.id3RenamingSeperator = u"-";
    return AudioParameters(settings).reads_files();
  };
  EXPECT_TRUE(reads(u"a<Title>", u"", false));
  EXPECT_FALSE(reads(u"a<title>", u"<Artist>", false));
  EXPECT_TRUE(reads(u"-", u"<Artist>", true));
  EXPECT_FALSE(reads(u"<Artist>", u"<artist>", true));
}

// Each value holds the next token five hundred times: 500⁷ characters, were nobody to stop.
TEST(AudioRenaming, ValuesFullOfTokensEndInANameThatIsTooLong) {
  AudioAttributes bomb;
  for (std::size_t i = 0; i < bomb.size(); ++i) {
    for (int times = 0; times < 500; ++times) bomb[i] += i + 1 < bomb.size() ? audio_tokens[i + 1] : u"x";
  }
  RenameSettings settings;
  settings.id3RenamingMask = u"<Artist>";
  FileSystemItem item = sample_item(u"x.mp3");
  StepRunner run;
  EXPECT_TRUE(run(AudioParameters(settings), item, &bomb));
  EXPECT_GT(item.newFilename().size(), 255U);
  EXPECT_LE(item.newFilename().size(), 70000U);
}

}  // namespace
}  // namespace brindle::test
