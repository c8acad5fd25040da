// What songs say about themselves, from bytes as other programs write them, and from bytes that nobody should write.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "metadata/audio_attributes.h"
#include "platform/file_name.h"
#include "support/song_bytes.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// Artist, year, genre, title, album, comment, track number, composer; each the same when it alone is wanted.
std::vector<std::string> read_texts(const std::string& path) {
  std::vector<std::string> texts;
  for (const std::u16string& text : read_audio_attributes(path)) {
    EXPECT_EQ(read_audio_attributes(path, AudioTags{1} << texts.size())[texts.size()], text) << texts.size();
    texts.push_back(to_utf8(text));
  }
  return texts;
}

std::string mp4_text(const std::string& name, std::string_view text) {
  return atom("\xA9" + name, mp4_value(text));
}

class AudioFile : public testing::Test {
 protected:
  std::vector<std::string> texts(std::string_view bytes, const std::string& name = "song.mp3") const {
    return read_texts(write_file(tree_ / name, bytes));
  }
  std::string title(std::string_view bytes, const std::string& name = "song.mp3") const {
    return texts(bytes, name)[3];
  }

  TempTree tree_;
};

TEST_F(AudioFile, ReadsEveryVersionOfId3) {
  const auto expected = ElementsAre("Br\xC3\xAAl", "1964", "Rock", "Amsterdam", "Olympia", "Live", "3", "Jouannest");
  const std::string music = mp3_frames(20);
  EXPECT_THAT(texts(id3_tag(2, text_frame(2, "TP1", "Br\xEAl") + text_frame(2, "TYE", "1964") +
                                   text_frame(2, "TCO", "(17)") + text_frame(2, "TT2", "Amsterdam") +
                                   text_frame(2, "TAL", "Olympia") + comment_frame(2, "", "Live") +
                                   text_frame(2, "TRK", "03/12") + text_frame(2, "TCM", "Jouannest")) +
                    music),
              expected);
  EXPECT_THAT(texts(id3_tag(3, comment_frame(3, "iTunNORM", " 0000044E 00000061") + text_frame(3, "TPE1", "Br\xEAl") +
                                   text_frame(3, "TYER", "1964") + text_frame(3, "TDAT", "1610") +
                                   text_frame(3, "TCON", "(17)") + text_frame(3, "TIT2", "Amsterdam") +
                                   text_frame(3, "TALB", "Olympia") + comment_frame(3, "", "Live") +
                                   text_frame(3, "TRCK", "3") + text_frame(3, "TCOM", "Jouannest")) +
                    music),
              expected);
  EXPECT_THAT(texts(id3_tag(4, text_frame(4, "TPE1", "Br\xC3\xAAl") + text_frame(4, "TDRC", "1964-10-16T20:30") +
                                   text_frame(4, "TCON", "17") + text_frame(4, "TIT2", "Amsterdam") +
                                   text_frame(4, "TALB", "Olympia") +
                                   text_frame(4, "TXXX", std::string_view("comment\0Live", 12)) +
                                   text_frame(4, "TRCK", "3/12") + text_frame(4, "TCOM", "Jouannest")) +
                    music),
              expected);
}

TEST_F(AudioFile, SeveralArtistsStaySeveral) {
  const std::string id3 = id3_tag(4, text_frame(4, "TPE1", std::string_view("Ella/Joe\0Louis", 14)));
  const std::string mp4 = mp4_song(atom("\xA9" + std::string("ART"), mp4_value("Ella/Joe") + mp4_value("Louis")));
  EXPECT_EQ(texts(id3 + mp3_frames(2))[0], "Ella/Joe,Louis");
  EXPECT_EQ(texts(mp4, "song.m4a")[0], "Ella/Joe,Louis");
}

TEST_F(AudioFile, ReadsMp4WhateverItIsCalled) {
  const std::string song =
      mp4_song(mp4_text("ART", "Brel") + mp4_text("day", "1964-10-16T07:00:00Z") + mp4_text("gen", "Chanson") +
               mp4_text("nam", "Amsterdam") + mp4_text("alb", "Olympia") + mp4_text("cmt", "Live") +
               atom("trkn", mp4_value(std::string_view("\0\0\0\3\0\14\0\0", 8), '\0')) + mp4_text("wrt", "Jouannest"));
  const auto expected = ElementsAre("Brel", "1964", "Chanson", "Amsterdam", "Olympia", "Live", "3", "Jouannest");
  for (const char* name : {"song.m4a", "SONG.M4B", "song.mp3", "song"})
    EXPECT_THAT(texts(song, name), expected) << name;
}

TEST_F(AudioFile, ReadsApeTags) {
  const std::string tag = ape_tag(
      ape_value("Artist", std::string_view("Ella\0Louis", 10)) + ape_value("Year", "1964") + ape_value("Track", "3/12"),
      3);
  const auto expected = ElementsAre("Ella,Louis", "1964", "", "", "", "", "3", "");
  EXPECT_THAT(texts("MAC " + std::string(5000, '\0') + tag, "song.ape"), expected);
  EXPECT_THAT(texts(mp3_frames(20) + tag), expected);
}

TEST_F(AudioFile, TheSecondTagFillsTheGapsOfTheFirst) {
  const std::string old_tag = id3v1_tag("Old title", "Old artist", 7);
  EXPECT_THAT(texts(mp3_frames(20) + old_tag),
              ElementsAre("Old artist", "1964", "Rock", "Old title", "Album", "Note", "7", ""));
  const std::string new_tag = id3_tag(3, text_frame(3, "TIT2", "New title") + text_frame(3, "TRCK", "0"));
  EXPECT_THAT(texts(new_tag + mp3_frames(20) + old_tag),
              ElementsAre("Old artist", "1964", "Rock", "New title", "Album", "Note", "", ""));
}

TEST_F(AudioFile, CommentsOfPlayersAreNoComments) {
  const std::string note = comment_frame(3, "iTunSMPB", "00000000 00000210");
  EXPECT_EQ(texts(id3_tag(3, note) + mp3_frames(2))[5], "");
  EXPECT_EQ(texts(id3_tag(3, note + comment_frame(3, "Review", "Fine")) + mp3_frames(2))[5], "Fine");
}

TEST_F(AudioFile, FindsTagsInAacAndBehindJunk) {
  const std::string tag = id3_tag(3, text_frame(3, "TIT2", "Amsterdam"));
  const std::string adts = "\xFF\xF1\x50\x80\x04\x3F\xFC" + std::string(26, '\0');
  EXPECT_EQ(title(tag + adts + adts, "song.aac"), "Amsterdam");
  EXPECT_EQ(title(std::string(5000, '\0') + tag + mp3_frames(2)), "Amsterdam");
  // More junk than anybody cares to search; the end is looked at all the same.
  const std::string junk(std::size_t{3} << 20U, 'j');
  EXPECT_EQ(title(junk + tag + mp3_frames(2)), "");
  EXPECT_EQ(title(junk + id3v1_tag("Amsterdam", "", 1)), "Amsterdam");
}

TEST_F(AudioFile, ValuesEndAtNulAndHaveALimit) {
  const std::string padded = mp4_song(mp4_text("nam", std::string_view("Amster\0dam", 10)));
  EXPECT_EQ(title(padded, "song.m4a"), "Amster");
  const std::string endless = mp4_song(mp4_text("nam", std::string(1'000'000, 'x')));
  EXPECT_EQ(title(endless, "song.m4a"), std::string(4096, 'x'));
}

TEST_F(AudioFile, OnlyRegularFilesAreOpened) {
  const std::string pipe = tree_ / "pipe.mp3";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::filesystem::create_directory(tree_ / "folder.mp3");
  for (const std::string& path :
       {pipe, tree_ / "folder.mp3", tree_ / "missing.mp3", std::string("/dev/zero"), std::string()}) {
    EXPECT_THAT(read_texts(path), Each(IsEmpty())) << path;
  }
}

/// Boxes in boxes, to the given depth: only the headers, each of which claims the rest of the file.
std::string nested_boxes(std::size_t depth) {
  std::string bytes = atom("ftyp", std::string("M4A \0\0\0\0", 8));
  const std::size_t size = bytes.size() + depth * 8;
  while (bytes.size() < size) bytes += big_endian(size - bytes.size(), 4) + "moov";
  return bytes;
}

/// Chapters in chapters.
std::string nested_chapters(std::size_t depth) {
  const std::string fields = "c" + std::string(17, '\0');
  std::string bytes;
  for (std::size_t level = depth; level > 0; --level) {
    bytes += "CHAP" + big_endian(level * (10 + fields.size()) - 10, 4, 7) + std::string(2, '\0') + fields;
  }
  return id3_tag(4, bytes);
}

// Packed, each byte stands for some thousand; here it need not even be honest.
std::string packed_frame(std::string_view id) {
  return id3_frame(3, id, std::string(4, '\x7F') + "\x78\x9C" + std::string(5000, '\xFF'),
                   std::string_view("\0\x80", 2));
}

TEST_F(AudioFile, HostileFilesHaveNoValuesAndDoNoHarm) {
  const std::string whole = mp4_song(mp4_text("nam", "Amsterdam"));
  const std::string huge_frame = "TIT2" + std::string(4, '\x7F') + std::string(2, '\0') + "\3x";
  const std::string lying_tag = "ID3\4" + std::string(2, '\0') + std::string(4, '\x7F') + huge_frame;
  const std::string bytes[] = {
      "",
      "I",
      "ID3",
      "ftyp",
      std::string(100, '\xFF'),
      whole.substr(0, whole.size() - 20),
      lying_tag,
      nested_boxes(200'000),
      nested_chapters(500'000),
      id3_tag(3, packed_frame("TIT2") + packed_frame("APIC")),
      "fLaC" + std::string(4, '\xFF') + std::string(3000, '\0'),
      "RIFF" + std::string(4, '\xFF') + "WAVEid3 " + lying_tag,
      "FORM" + big_endian(0xFFFFFFFF, 4) + "AIFFID3 " + big_endian(15'000'000, 4) + nested_chapters(500'000)};
  for (const std::string& each : bytes) {
    for (const char* name : {"x.mp3", "x.m4a", "x.aac", "x.flac", "x.ogg", "x.wma", "x.ape", "x.xm", "x"}) {
      EXPECT_THAT(texts(each, name), Each(IsEmpty())) << name << ": " << each.substr(0, 16);
    }
  }
}

// Every value is an object in memory, of hundreds of times its size.
TEST_F(AudioFile, TagsOfTinyValuesAreNotReadToTheEnd) {
  std::string frames;
  std::string values;
  for (int i = 0; i < 5000; ++i) {
    frames += text_frame(4, "TIT3", "x");
    values += ape_value("Key" + std::to_string(i), "x");
  }
  const std::string late = text_frame(4, "TIT2", "Amsterdam");
  EXPECT_EQ(title(id3_tag(4, frames.substr(0, frames.size() / 2) + late) + mp3_frames(2)), "Amsterdam");
  EXPECT_EQ(title(id3_tag(4, frames + late) + mp3_frames(2)), "");
  EXPECT_EQ(title(ape_tag(values + ape_value("Title", "Amsterdam"), 5001), "song.ape"), "");
  EXPECT_EQ(title(id3_tag(4, text_frame(4, "TIT2", std::string(300'000, 'x'))) + mp3_frames(2)), "");
}

// What cannot be trusted is left out, not the rest with it.
TEST_F(AudioFile, TextsBesideAHostileFrameAreRead) {
  const std::string text = text_frame(3, "TIT2", "Amsterdam");
  EXPECT_EQ(title(id3_tag(3, packed_frame("TPE1") + text) + mp3_frames(2)), "Amsterdam");
  const std::string chapters = nested_chapters(100'000).substr(10);
  EXPECT_EQ(title(id3_tag(4, chapters + text_frame(4, "TIT2", "Amsterdam")) + mp3_frames(2)), "Amsterdam");
}

// The tag library takes such a frame for the end of the tag.
TEST_F(AudioFile, FramesThatHoldNothingLoseNothing) {
  for (const int version : {2, 3, 4}) {
    const std::string empty = id3_frame(version, version == 2 ? "TT3" : "TIT3", "");
    const std::string text = text_frame(version, version == 2 ? "TT2" : "TIT2", std::string(200, 'x'));
    const std::string artist = text_frame(version, version == 2 ? "TP1" : "TPE1", "Brel");
    for (const std::string& frames : {empty + text + artist, text + empty + empty + artist, text + artist + empty}) {
      const std::vector<std::string> found = texts(id3_tag(version, frames) + mp3_frames(2));
      EXPECT_EQ(found[3], std::string(200, 'x')) << version;
      EXPECT_EQ(found[0], "Brel") << version;
    }
  }
  const std::string_view says_size("\0\1", 2);
  const std::string empty = id3_frame(4, "TIT3", std::string(4, '\0'), says_size);
  EXPECT_EQ(title(id3_tag(4, empty + text_frame(4, "TIT2", "Amsterdam")) + mp3_frames(2)), "Amsterdam");
  // Larger than 127 bytes and not counted in units of seven bits.
  const std::string plain = "TIT3" + big_endian(201, 4) + std::string(2, '\0') + std::string(201, '\3');
  EXPECT_EQ(title(id3_tag(4, plain + id3_frame(4, "TIT1", "") + text_frame(4, "TIT2", "Amsterdam")) + mp3_frames(2)),
            "Amsterdam");
}

/// WMA: an object, and a value in its main table and in the one for more values.
std::string asf_object(std::string_view id, std::string_view content) {
  return std::string(id) + little_endian(content.size() + 24, 8) + std::string(content);
}
std::string wide(std::string_view text) {
  std::string units;
  for (const char letter : text) units += {letter, '\0'};
  return units + std::string(2, '\0');
}

TEST_F(AudioFile, GenresOfWmaStandInTheirOrder) {
  constexpr std::string_view head("\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C", 16);
  constexpr std::string_view main("\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50", 16);
  constexpr std::string_view later("\xB5\x03\xBF\x5F\x2E\xA9\xCF\x11\x8E\xE3\x00\xC0\x0C\x20\x53\x65", 16);
  constexpr std::string_view more("\x94\x1C\x23\x44\x98\x94\xD1\x49\xA1\x41\x1D\x13\x4E\x45\x70\x54", 16);
  const std::string name = wide("WM/Genre");
  const auto main_table = [&](const std::vector<std::string>& genres) {
    std::string table = little_endian(genres.size(), 2);
    for (const std::string& genre : genres) {
      const std::string value = wide(genre);
      table += little_endian(name.size(), 2) + name + little_endian(0, 2) + little_endian(value.size(), 2) + value;
    }
    return asf_object(main, table);
  };
  const auto later_table = [&](const std::vector<std::string>& genres) {
    std::string table = little_endian(genres.size(), 2);
    for (const std::string& genre : genres) {
      const std::string value = wide(genre);
      table += std::string(4, '\0') + little_endian(name.size(), 2) + little_endian(0, 2) +
               little_endian(value.size(), 4) + name + value;
    }
    const std::string inner = asf_object(more, table);
    return asf_object(later, std::string(18, '\0') + little_endian(inner.size(), 4) + inner);
  };
  const std::string later_end(later.substr(10));
  const auto genres = [&](const std::string& objects) {
    // Two objects that no such file lacks.
    const std::string needed =
        asf_object("\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4" + later_end, std::string(80, '\0')) +
        asf_object("\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6" + later_end, std::string(80, '\0'));
    const std::string content = little_endian(4, 4) + "\1\2" + needed + objects;
    return texts(asf_object(head, content), "song.wma")[2];
  };
  EXPECT_EQ(genres(later_table({"Three", "Four"}) + main_table({"One", "Two"})), "One,Two,Three,Four");
  EXPECT_EQ(genres(main_table({"One", "Two"}) + later_table({"Three", "Four"})), "One,Two,Three,Four");
  EXPECT_EQ(genres(later_table({"One", "Two"}) + main_table({})), "One,Two");
}

}  // namespace
}  // namespace brindle::test
