// Names made of photo metadata, by tables and on real files.

#include "methods/photo_renaming.h"

#include <cstdlib>

#include "metadata/metadata_ahead.h"
#include "methods/sample_item.h"
#include "settings/stored_value.h"
#include "support/sample_images.h"
#include "support/temp_tree.h"
#include "text/text_encoding.h"

namespace brindle::test {
namespace {

// Before anything asks for the zone: it is looked up once a process.
const bool mask_zone_is_set = setenv("TZ", "Europe/Berlin", 1) == 0 && setenv("LC_ALL", "C.UTF-8", 1) == 0;

// "<a><b>c" as its pieces.
FieldList mask_fields(std::u16string_view mask) {
  FieldList fields;
  while (!mask.empty()) {
    const std::size_t end = std::min(mask.find(u'>'), mask.size() - 1) + 1;
    fields.push_back(field_of_token(mask.substr(0, end)));
    mask.remove_prefix(end);
  }
  return fields;
}

PhotoMetadata metadata_of(const Case& c) {
  PhotoMetadata metadata;
  const auto add = [&c](PropertyDictionary& dictionary, std::u16string_view key, const std::string& column) {
    if (c.has(column)) dictionary.append(key, c[column]);
  };
  add(metadata.image.exif, u"DateTimeOriginal", "date");
  add(metadata.image.exif, u"UserComment", "comment");
  add(metadata.image.exif, u"PixelXDimension", "exif_width");
  add(metadata.image.exif, u"PixelYDimension", "exif_height");
  add(metadata.image.tiff, u"DateTime", "modified");
  add(metadata.image.tiff, u"Make", "make");
  add(metadata.image.tiff, u"Model", "model");
  add(metadata.image.iptc, u"City", "city");
  metadata.image.PixelWidth = c["width"];
  metadata.image.PixelHeight = c["height"];
  return metadata;
}

TEST(PhotoRenaming, DoesAsTheTableSays) {
  for_each_case("photo_renaming", [](const Case& c) {
    RenameSettings settings;
    settings.photoRenamingMask = c.has("string") ? c["string"] : c["mask"];
    settings.photoMetaDataList = mask_fields(c["mask"]);
    settings.isPhotoRenamingSeperator = c.has("separator");
    settings.photoRenamingSeperator = c["separator"];
    settings.isPhotoRenamingColonReplace = c.has("colon");
    settings.photoRenamingColonReplace = c["colon"];
    settings.photoPaddingMask = c["padding"];
    fill_parts(c, settings, photo_parts);
    const PhotoParameters parameters(settings);
    // Without a mask that asks for it, nothing is read.
    const PhotoMetadata metadata = parameters.reads_files() ? metadata_of(c) : (metadata_of(c), PhotoMetadata());
    std::int32_t number = c.number("counter", 1);
    expect_case(c, parameters, nullptr, &metadata, &number);
    EXPECT_EQ(number, c.number("next", number));
  });
}

class PhotoFilesTest : public testing::Test {
 protected:
  std::string photo(const std::string& name, const SampleTiff& tiff, const SampleMetadata& more = {}) const {
    write_file(tree_ / name, sample_jpeg({tiff.build(), more.xmp, more.iptc}));
    return tree_ / name;
  }
  ImageProperties properties(const SampleTiff& tiff, const SampleMetadata& more = {}) const {
    return read_image_properties(photo("photo.jpg", tiff, more), {true, true, true});
  }
  std::u16string comment(const SampleTiff& tiff) const { return camera_values(properties(tiff)).comment; }

  TempTree tree_;
};

TEST_F(PhotoFilesTest, ReadsTheFieldsOfAnItem) {
  SampleTiff tiff;
  tiff.text(0x010F, " Canon ").text(0x0110, "EOS\n").text(0x9003, "2009:05:17 10:20:30 ");
  const PhotoFields fields = read_photo_fields(photo("a.jpg", tiff));
  EXPECT_EQ(fields.make, u"Canon");
  EXPECT_EQ(fields.model, u"EOS");
  EXPECT_EQ(fields.dimensions, u"640 x 480");
  EXPECT_EQ(fields.dimensionValue, 1120);
  EXPECT_EQ(fields.pictureTaken, WallTime(std::chrono::seconds(1'242'555'630)));
  tree_.make({"note.jpg"});
  const PhotoFields none = read_photo_fields(tree_ / "note.jpg");
  EXPECT_TRUE(none.make.empty() && none.dimensions.empty() && !none.pictureTaken && none.dimensionValue == 0);
}

TEST_F(PhotoFilesTest, DecodesCommentsByTheCharacterSetTheyName) {
  using namespace std::string_literals;
  for (const bool big_endian : {true, false}) {
    const std::string koeln = big_endian ? "\0K\0\xF6\0l\0n"s : "K\0\xF6\0l\0n\0"s;
    const std::pair<std::string, std::u16string> comments[] = {
        {"ASCII\0\0\0hello\0\0"s, u"hello"},
        {"UNICODE\0"s + koeln, u"Köln"},
        {"UNICODE\0\xFE\xFF\0a\0b"s, u"ab"},
        {"\0\0\0\0\0\0\0\0K\xC3\xB6ln"s, u"Köln"},
        {"ASCII\0\0\0K\xF6ln"s, u"Köln"},
        {"JIS\0\0\0\0\0\x1B$BF|K\\\x1B(B"s, u"日本"},
        {"ASCII\0\0\0  \n"s, u""},
        {"short"s, u"short"},
        {"ASCII   hello"s, u"hello"},
        {"a whole sentence\0"s, u"a whole sentence"},
        {"UNICODE"s, u"UNICODE"},
        {"ASCII\0\0\0"s, u""},
    };
    for (const auto& [bytes, text] : comments) {
      SampleTiff tiff;
      tiff.big_endian = big_endian;
      // As bytes, and of the two other types that programs give it.
      for (const unsigned type : {7U, 1U, 2U}) {
        SampleTiff typed = tiff;
        EXPECT_EQ(to_utf8(comment(typed.add(0x9286, type, bytes))), to_utf8(text)) << type;
      }
    }
  }
}

TEST_F(PhotoFilesTest, DecodesIptcByItsMarkOrByItsLooks) {
  const auto value_in = [this](const SampleIptc& sets, std::u16string_view key) {
    const PropertyDictionary iptc = properties(SampleTiff(), {{}, {}, iptc_block(sets)}).iptc;
    const PropertyValue* value = iptc.find(key);
    return value == nullptr ? std::string("none") : to_utf8(*value->get_if<std::u16string>());
  };
  const auto city = [&](const SampleIptc& sets) { return value_in(sets, u"City"); };
  EXPECT_EQ(city({{{2, 90}, "K\xF6ln"}}), "Köln");
  EXPECT_EQ(city({{{2, 90}, "Köln"}}), "Köln");
  EXPECT_EQ(city({{{1, 90}, "\x1B%G"}, {{2, 90}, "Köln"}}), "Köln");
  EXPECT_EQ(city({{{2, 105}, "Köln"}}), "none");
  for (const std::string time : {"102030+0200", "102030", "10:20", "noon"}) {
    EXPECT_EQ(value_in({{{2, 60}, time}}, u"TimeCreated"), time);
  }
}

TEST_F(PhotoFilesTest, CompletesIptcFromXmp) {
  const std::string xmp = xmp_packet(
      "photoshop:City='Bonn' photoshop:Headline='From "
      "XMP'><dc:subject><rdf:Bag><rdf:li>x</rdf:li></rdf:Bag></dc:subject>"
      "<Iptc4xmpCore:SubjectCode><rdf:Bag><rdf:li>15054000</rdf:li></rdf:Bag></Iptc4xmpCore:SubjectCode>");
  const PropertyDictionary iptc =
      properties(SampleTiff(), {{}, xmp, iptc_block({{{2, 90}, "Ulm"}, {{2, 25}, "a"}, {{2, 25}, "b"}})}).iptc;
  EXPECT_EQ(*iptc.find(u"City"), PropertyValue(u"Ulm"));
  EXPECT_EQ(*iptc.find(u"Headline"), PropertyValue(u"From XMP"));
  EXPECT_EQ(*iptc.find(u"Keywords"), PropertyValue(PropertyValue::Array{u"a", u"b"}));
  EXPECT_EQ(*iptc.find(u"SubjectReference"), PropertyValue(PropertyValue::Array{u"15054000"}));
  EXPECT_EQ(iptc.find(u"Scene"), nullptr);
  const PropertyDictionary long_form =
      properties(SampleTiff(), {{}, xmp, iptc_block({{{2, 12}, "IPTC:01000000:arts::"}, {{2, 12}, "a:b"}})}).iptc;
  EXPECT_EQ(*long_form.find(u"SubjectReference"), PropertyValue(PropertyValue::Array{u"01000000", u"a:b"}));
}

TEST_F(PhotoFilesTest, MakesTheSameNamesReadingAheadOrNot) {
  RenameSettings settings;
  settings.photoRenamingMask = u"<EXIF_Date><EXIF_Time><IPTC_Origin_City>";
  settings.photoMetaDataList = mask_fields(*settings.photoRenamingMask);
  settings.isPhotoRenamingSeperator = true;
  settings.photoRenamingSeperator = u"_";
  const PhotoParameters parameters(settings);
  constexpr std::size_t count = 300;
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < count; ++i) {
    SampleTiff tiff;
    tiff.text(0x9003, "2009:05:17 10:" + std::to_string(10 + i % 50) + ":30");
    paths.push_back(photo(std::to_string(i) + ".jpg", tiff, {{}, {}, iptc_block({{{2, 90}, std::to_string(i)}})}));
  }
  const auto name = [&](std::size_t row, const PhotoMetadata* read) {
    FileSystemItem item;
    const std::size_t name_start = paths[row].rfind('/') + 1;
    item.set_path(paths[row].substr(0, name_start - 1), paths[row].substr(name_start));
    StepRunner run;
    EXPECT_TRUE(run(parameters, item, nullptr, read));
    return item.newFilename();
  };
  MetadataAhead<PhotoMetadata> ahead([&](const std::string& path) { return parameters.read(path); }, 16);
  std::size_t announced = 0;
  for (std::size_t row = 0; row < count; ++row) {
    for (; announced < count && ahead.has_room(); ++announced) {
      if (announced % 7 != 3) ahead.expect(announced, paths[announced]);
    }
    if (row % 5 == 4) continue;  // rows may be left out on the way
    const std::optional<PhotoMetadata> read = ahead.take(row);
    EXPECT_EQ(name(row, read ? &*read : nullptr), name(row, nullptr)) << row;
  }
}

TEST(MetadataAhead, LeavesToTheCallerWhatItCouldNotRead) {
  MetadataAhead<int> ahead([](const std::string& path) { return std::stoi(path); }, 4);
  ahead.expect(0, "not a number");
  ahead.expect(1, "17");
  EXPECT_EQ(ahead.take(0), std::nullopt);
  EXPECT_EQ(ahead.take(1).value_or(17), 17);
  EXPECT_EQ(ahead.take(2), std::nullopt);
}

}  // namespace
}  // namespace brindle::test
