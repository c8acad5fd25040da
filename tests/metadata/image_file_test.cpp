// Image files of every kind, whole and broken.

#include "metadata/image_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "metadata/xmp_packet.h"
#include "support/sample_images.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

constexpr ImageParts everything{true, true, true};
constexpr std::string_view photoshop = "http://ns.adobe.com/photoshop/1.0/";

SampleTiff camera_notes(bool big_endian) {
  SampleTiff tiff;
  tiff.big_endian = big_endian;
  tiff.text(0x010F, "Canon").text(0x0110, "EOS 5D").text(0x0132, "2010:01:01 00:00:00");
  return tiff.text(0x9003, "2009:05:17 10:20:30").bytes(0x9286, std::string("ASCII\0\0\0hello", 13));
}

SampleMetadata metadata(const SampleTiff& tiff) {
  return {tiff.build(), xmp_packet("photoshop:City='Bonn'>"),
          iptc_block({{{2, 90}, "K\xF6ln"}, {{2, 25}, "a"}, {{2, 25}, "b"}})};
}

struct Sample {
  const char* name;
  std::string bytes;
  bool has_iptc = true;
  bool has_size = true;
};

std::string png_with_texts(const SampleMetadata& held) {
  std::string png = sample_png({{}, held.xmp, {}});
  return png.insert(png.size() - 24, raw_profile("exif", std::string("Exif\0\0", 6) + held.exif) +
                                         raw_profile("iptc", photoshop_resource(0x0404, held.iptc)));
}

std::vector<Sample> samples() {
  std::vector<Sample> all;
  for (const bool big_endian : {true, false}) {
    const SampleTiff tiff = camera_notes(big_endian);
    const SampleMetadata held = metadata(tiff);
    all.push_back({"jpeg", sample_jpeg(held)});
    all.push_back({"tiff", sample_tiff(tiff, held)});
    all.push_back({"png", sample_png(held), false});
    all.push_back({"webp", sample_webp(held), false});
    all.push_back({"png with texts", png_with_texts(held)});
    all.push_back({"psd", sample_psd(held)});
    all.push_back({"jp2", sample_jp2(held)});
    all.push_back({"jxl", sample_jp2(held, true), false, false});
    all.push_back({"cr3", sample_cr3(tiff, held), false, false});
    all.push_back({"mrw", sample_mrw(tiff, held)});
    all.push_back({"exv",
                   "\xFF\x01"
                   "Exiv2" +
                       sample_jpeg(held).substr(2)});
    all.push_back({"heic", sample_heif(held), false});
    all.push_back({"heic with base offsets", sample_heif(held, {.version = 1, .base_size = 4}), false});
    all.push_back({"heic with items in its table", sample_heif(held, {.version = 1, .in_table = true}), false});
  }
  return all;
}

class ImageFileTest : public testing::Test {
 protected:
  ImageFileData read(const std::string& bytes, ImageParts parts = everything) const {
    write_file(tree_ / "image", bytes);
    return read_image_file(tree_ / "image", parts);
  }
  static const std::string& exif(const ImageFileData& data, ExifTag tag) {
    return data.exif[static_cast<std::size_t>(tag)];
  }

  TempTree tree_;
};

TEST_F(ImageFileTest, ReadsTheSameOutOfEveryKindOfFile) {
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    const ImageFileData data = read(sample.bytes);
    EXPECT_EQ(exif(data, ExifTag::make).substr(0, 5), "Canon");
    EXPECT_EQ(exif(data, ExifTag::date_time_original).substr(0, 19), "2009:05:17 10:20:30");
    EXPECT_EQ(exif(data, ExifTag::user_comment), std::string("ASCII\0\0\0hello", 13));
    EXPECT_EQ(XmpPacket(data.xmp_packet).text({photoshop, "City"}), "Bonn");
    EXPECT_EQ(data.width, sample.has_size ? 640U : 0U);
    EXPECT_EQ(data.height, sample.has_size ? 480U : 0U);
    std::string iptc;
    for (const IptcDataSet& set : data.iptc) iptc += set.bytes;
    EXPECT_EQ(iptc, sample.has_iptc ? "K\xF6lnab" : "");
  }
}

TEST_F(ImageFileTest, ReadsThePreviewOfFujisRawFiles) {
  const std::string jpeg = sample_jpeg(metadata(camera_notes(false)));
  const std::string head =
      "FUJIFILMCCD-RAW " + std::string(68, '0') + number_bytes(160, 4) + number_bytes(jpeg.size(), 4);
  const ImageFileData data = read(head + std::string(160 - head.size(), '\0') + jpeg);
  EXPECT_EQ(exif(data, ExifTag::date_time_original).substr(0, 19), "2009:05:17 10:20:30");
  EXPECT_EQ(data.iptc.size(), 3U);
  EXPECT_EQ(data.width, 0U) << "the preview is smaller than the picture";
}

TEST_F(ImageFileTest, ReadsTheHeapOfCanonsFirstRawFiles) {
  const ImageFileData data = read(sample_crw());
  EXPECT_EQ(exif(data, ExifTag::make), "Canon");
  EXPECT_EQ(exif(data, ExifTag::model).substr(0, 6), "EOS 5D");
  EXPECT_EQ(exif(data, ExifTag::date_time_original), "2009:05:17 10:20:30");
  EXPECT_EQ(data.width, 640U);
}

// The first directory of many raw files describes a small copy, or a JPEG.
TEST_F(ImageFileTest, KnowsTheMainPictureOfManyByItsKind) {
  SampleTiff tiff = camera_notes(false);
  const auto directory = [](unsigned kind, unsigned width, bool is_jpeg) {
    SampleTiff below;
    below.big_endian = false;
    below.add(0x00FE, 4, number_bytes(kind, 4, false)).shorts(0x0100, width).shorts(0x0101, 480);
    if (is_jpeg) below.shorts(0x0201, 1);
    return below.build().substr(8);
  };
  const std::string directories[] = {directory(0, 320, true), directory(0, 640, false), directory(1, 160, false)};
  tiff.add(0x00FE, 4, number_bytes(1, 4, false)).shorts(0x0100, 64).shorts(0x0101, 48);
  tiff.add(0x014A, 4, std::string(12, 'x'));
  std::string file = tiff.build();
  std::string offsets;
  std::string below;
  for (const std::string& each : directories) {
    offsets += number_bytes(file.size() + below.size(), 4, false);
    below += each;
  }
  file.replace(file.find(std::string(12, 'x')), 12, offsets);
  EXPECT_EQ(read(file + below).width, 640U);
}

TEST_F(ImageFileTest, TakesVideosAndOtherFilesForNoPictures) {
  const SampleMetadata held = metadata(camera_notes(true));
  const std::string heif = sample_heif(held);
  for (const std::string brand : {"qt  ", "isom", "mp42"}) {
    std::string video = heif;
    for (const std::size_t at : {8, 16, 20}) video.replace(at, 4, brand);
    EXPECT_EQ(read(video).width, 0U) << brand;
  }
  std::string avi = sample_webp(held);
  avi.replace(8, 4, "AVI ");
  for (const std::string& bytes : {avi, "\x1A\x45\xDF\xA3" + heif, std::string("%!PS-Adobe-3.0\n") + held.xmp}) {
    const ImageFileData data = read(bytes);
    EXPECT_TRUE(data.width == 0 && data.xmp_packet.empty());
  }
}

TEST_F(ImageFileTest, ReadsOfJpegOnlyWhatIsAskedFor) {
  const std::string jpeg = sample_jpeg(metadata(camera_notes(true)));
  const ImageFileData dates = read(jpeg, {.exif = true});
  EXPECT_FALSE(exif(dates, ExifTag::date_time_original).empty());
  EXPECT_TRUE(dates.iptc.empty() && dates.xmp_packet.empty());
  const ImageFileData iptc = read(jpeg, {.iptc = true});
  EXPECT_TRUE(exif(iptc, ExifTag::date_time_original).empty());
  EXPECT_EQ(iptc.iptc.size(), 3U);
}

TEST_F(ImageFileTest, JoinsIptcThatIsSpreadOverSegments) {
  SampleIptc sets;
  for (int i = 0; i < 40; ++i) sets.push_back({{2, 25}, std::string(2000, static_cast<char>('a' + i % 26))});
  const std::string block = photoshop_block(iptc_block(sets)).substr(14);
  const std::string name("Photoshop 3.0\0", 14);
  const std::string jpeg = sample_jpeg({});
  const ImageFileData data = read(jpeg.substr(0, 20) + jpeg_segment(0xED, name + block.substr(0, 60000)) +
                                  jpeg_segment(0xED, name + block.substr(60000)) + jpeg.substr(20));
  EXPECT_EQ(data.iptc.size(), sets.size());
}

TEST_F(ImageFileTest, SurvivesFilesCutOffAnywhere) {
  for (const Sample& sample : samples()) {
    for (std::size_t size = 0; size < sample.bytes.size(); size += 7) {
      const ImageFileData data = read(sample.bytes.substr(0, size));
      EXPECT_TRUE(data.width == 0 || data.width == 640) << sample.name << " cut at " << size;
    }
  }
}

TEST_F(ImageFileTest, SurvivesDamage) {
  std::mt19937 random(4);
  for (const Sample& sample : samples()) {
    for (int round = 0; round < 150; ++round) {
      std::string bytes = sample.bytes;
      for (int i = 0; i < 6; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
      EXPECT_LE(read(bytes).iptc.size(), 4096U) << sample.name;
    }
  }
}

// Each of these once cost gigabytes or minutes.
TEST_F(ImageFileTest, IsNotBledByFilesMadeToDoSo) {
  std::string directory = number_bytes(250, 2, false);
  for (unsigned i = 0; i < 250; ++i) {
    directory += number_bytes(0x8000 + i, 2, false) + number_bytes(7, 2, false) + number_bytes(10U << 20U, 4, false) +
                 number_bytes(8, 4, false);
  }
  EXPECT_EQ(read(std::string("II*\0\x08\0\0\0", 8) + directory + std::string(10U << 20U, 'x')).width, 0U);

  std::string many = ">";
  for (int i = 0; i < 60000; ++i) many += "<dc:a" + std::to_string(i) + ">1</dc:a" + std::to_string(i) + ">";
  SampleTiff tiff = camera_notes(true);
  const ImageFileData data = read(sample_tiff(tiff, {{}, xmp_packet(many), {}}));
  EXPECT_EQ(exif(data, ExifTag::make).substr(0, 5), "Canon");
  EXPECT_EQ(XmpPacket(data.xmp_packet).text({"http://purl.org/dc/elements/1.1/", "a59999"}), "1");

  std::string padded = box("ftyp", "crx " + number_bytes(0, 4) + "crx isom");
  for (int i = 0; i < 500000; ++i) padded += box("free", "");
  EXPECT_EQ(read(padded).width, 0U);
}

TEST_F(ImageFileTest, OpensRegularFilesOnly) {
  ASSERT_EQ(mkfifo((tree_ / "pipe.jpg").c_str(), 0600), 0);
  tree_.make({"folder.jpg/", "note.jpg", "dangling.jpg -> nowhere"});
  for (const char* name : {"pipe.jpg", "folder.jpg", "note.jpg", "dangling.jpg", "missing.jpg"}) {
    EXPECT_EQ(read_image_file(tree_ / name, everything).width, 0U) << name;
  }
  EXPECT_EQ(read_image_file("/dev/zero", everything).width, 0U);
}

TEST(XmpPacket, ReadsEveryWayOfWritingAProperty) {
  const XmpPacket packet(xmp_packet(
      "photoshop:City='Bonn'><dc:title><rdf:Alt><rdf:li xml:lang='de'>Titel</rdf:li>"
      "<rdf:li xml:lang='x-default'>Title &amp; more</rdf:li></rdf:Alt></dc:title>"
      "<dc:subject><rdf:Bag><rdf:li>one</rdf:li><rdf:li>two</rdf:li></rdf:Bag></dc:subject>"
      "<photoshop:Headline>Plain</photoshop:Headline>"
      "<photoshop:Source>a<!-- b -->c<![CDATA[<d>]]>e</photoshop:Source>"
      "<xmpRights:WebStatement rdf:resource='http://example.org/'/>"
      "<Iptc4xmpCore:CreatorContactInfo rdf:parseType='Resource'><Iptc4xmpCore:CiAdrCity>Ulm</Iptc4xmpCore:CiAdrCity>"
      "</Iptc4xmpCore:CreatorContactInfo>"
      "<Iptc4xmpCore:Short Iptc4xmpCore:CiAdrCity='Trier'/>"
      "<Iptc4xmpCore:Long><rdf:Description Iptc4xmpCore:CiAdrCity='Mainz'/></Iptc4xmpCore:Long>"));
  const std::string dc = "http://purl.org/dc/elements/1.1/";
  const std::string core = "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/";
  EXPECT_EQ(packet.text({photoshop, "City"}), "Bonn");
  EXPECT_EQ(packet.text({dc, "City"}), "") << "the same name in another namespace";
  EXPECT_EQ(packet.text({dc, "title"}), "Title & more");
  EXPECT_EQ(packet.text({photoshop, "Headline"}), "Plain");
  EXPECT_EQ(packet.text({photoshop, "Source"}), "ac<d>e");
  EXPECT_EQ(packet.text({"http://ns.adobe.com/xap/1.0/rights/", "WebStatement"}), "http://example.org/");
  EXPECT_EQ(packet.list({dc, "subject"}), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(packet.list({photoshop, "City"}), (std::vector<std::string>{"Bonn"}));
  EXPECT_TRUE(packet.list({dc, "creator"}).empty());
  EXPECT_EQ(packet.field({core, "CreatorContactInfo"}, {core, "CiAdrCity"}), "Ulm");
  EXPECT_EQ(packet.field({core, "Short"}, {core, "CiAdrCity"}), "Trier");
  EXPECT_EQ(packet.field({core, "Long"}, {core, "CiAdrCity"}), "Mainz");
}

TEST(XmpPacket, TakesAnythingForAPacket) {
  std::string deep = ">";
  for (int i = 0; i < 100000; ++i) deep += "<dc:a>";
  for (const std::string& bytes : {std::string(), std::string("<"), std::string(1000, '<'), xmp_packet(deep)}) {
    EXPECT_EQ(XmpPacket(bytes).text({photoshop, "City"}), "");
  }
}

}  // namespace
}  // namespace brindle::test
