// The catalogue of fields, their decoders, and what they make of files that another program wrote.

#include "metadata/metadata_catalogue.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "case_table.h"
#include "metadata/code_tables.h"
#include "methods/photo_renaming.h"
#include "support/sample_images.h"
#include "support/temp_tree.h"
#include "text/text_encoding.h"

namespace brindle::test {
namespace {

const bool zone_is_set = setenv("TZ", "Europe/Berlin", 1) == 0 && setenv("LC_ALL", "C.UTF-8", 1) == 0;

constexpr DateParts german_date = {u"dd", u".", u"MM", u".", u"yyyy", u"HH", u".", u"mm", u"", u"None"};

TEST(MetadataCatalogue, IsTheTableInOrder) {
  std::vector<std::vector<std::u16string>> rows;
  for (const MetadataGroup& group : metadata_catalogue()) {
    for (const MetaDataField& field : group.FIELDS) {
      rows.push_back({group.NAME, field.tagCode, field.label, field.prefix, field.metadataCode});
    }
  }
  std::size_t row = 0;
  for_each_case("metadata_fields", [&](const Case& c) {
    ASSERT_LT(row, rows.size());
    EXPECT_EQ(rows[row++], (std::vector{c["group"], c["token"], c["label"], c["prefix"], c["source"]}));
  });
  EXPECT_EQ(row, rows.size());
}

TEST(MetadataCatalogue, TokensOfNoFieldAreTextsOfTheirOwn) {
  const struct {
    std::u16string_view token, text;
    bool is_custom;
  } cases[] = {{u"<made up>", u"made up", true}, {u"<>", u"", true}, {u"made up", u"", false}, {u"<", u"", false}};
  for (const auto& each : cases) {
    bool is_custom = !each.is_custom;
    EXPECT_EQ(custom_text(each.token, is_custom), each.text);
    EXPECT_EQ(is_custom, each.is_custom);
  }
}

std::u16string value_of(const MetaDataList& list, std::u16string_view token) {
  for (const MetadataGroup& group : list.groups()) {
    for (const MetaDataField& field : group.FIELDS) {
      if (field.tagCode == token) return field.metadataValue;
    }
  }
  return u"no such field";
}

TEST(MetadataCatalogue, RefreshesEveryValue) {
  PropertyDictionary iptc;
  iptc.append(u"City", u"a:b");
  iptc.append(u"Urgency", u"5");
  iptc.append(u"Keywords", PropertyValue::Array{u"one", u"two"});
  PropertyDictionary contact;
  contact.append(u"CiAdrCity", u"Ulm");
  iptc.append(u"CreatorContactInfo", std::move(contact));
  const XmpTexts xmp;
  const DateFormatter format(u"yyyy");
  MetaDataList list;
  list.set_value(u"<IPTC_Origin_Headline>", u"of the file before");
  list.resetMetaDataList({iptc, xmp, format, format});
  const std::pair<const char16_t*, const char16_t*> values[] = {
      {u"<IPTC_Origin_City>", u"a:b"},  {u"<IPTC_Keywords>", u"one,two"}, {u"<IPTC_Description_Urgency>", u"Normal"},
      {u"<IPTC_Contact_City>", u"Ulm"}, {u"<IPTC_Origin_Headline>", u""}, {u"<EXIF_Date>", u""}};
  for (const auto& [token, value] : values) EXPECT_EQ(value_of(list, token), value) << to_utf8(token);
}

class DecoderTest : public testing::Test {
 protected:
  XmpTexts search(const std::string& text) const {
    write_file(tree_ / "file", text);
    XmpEntries entries;
    entries.wanted.fill(true);
    return find_xmp_texts(tree_ / "file", entries);
  }
  std::u16string decode(const std::u16string& decoder, const std::u16string& input) const {
    std::vector<std::u16string> codes;
    for (const std::string& code : split(to_utf8(input), '|')) codes.push_back(decode_utf8(code));
    if (decoder == u"urgency") return getUrgency(input);
    if (decoder == u"scene") return getScene(codes);
    if (decoder == u"subject") return getSubjectCode(codes);
    const XmpTexts xmp = search(to_utf8(input));
    if (decoder == u"status") return getCopyrightStatus(xmp);
    if (decoder == u"url") return getCopyrightInfoURL(xmp);
    if (decoder == u"date") return getDateCreated(xmp, DateFormatter(u"dd.MM.yyyy"));
    return getTimeCreated(xmp, DateFormatter(u"HH.mm"));
  }

  TempTree tree_;
};

TEST_F(DecoderTest, DoesAsTheTableSays) {
  for_each_case("metadata_decoders",
                [this](const Case& c) { EXPECT_EQ(to_utf8(decode(c["decoder"], c["input"])), to_utf8(c["result"])); });
}

TEST_F(DecoderTest, FindsTextsWhereverTheyLieInALargeFile) {
  const std::string entry = "<xmpRights:Marked>True</xmpRights:Marked>";
  // Around the end of the pieces in which files are read.
  for (std::size_t before = (256U << 10U) - 60; before < (256U << 10U) + 40; ++before) {
    ASSERT_EQ(getCopyrightStatus(search(std::string(before, '<') + entry)), u"Copyrighted") << before;
  }
}

TEST(CodeTables, KnowEveryCode) {
  EXPECT_EQ(subject_text(u"01000000"), u"arts, culture and entertainment");
  EXPECT_EQ(scene_text(u"012400"), u"movie scene");
  EXPECT_EQ(scene_text(u"01000000"), u"");
}

std::string output_of(const std::string& command) {
  std::string output;
  FILE* const pipe = ::popen(command.c_str(), "r");
  std::array<char, 4096> buffer;
  for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
    output.append(buffer.data(), got);
  return ::pclose(pipe) == 0 ? output : std::string();
}

// Every field that another program can write, with the option that writes it and the value that it reads back.
struct Written {
  const char* token;
  const char* option;
  const char* value;
};
constexpr Written written[] = {
    {"<EXIF_Date>", "-EXIF:DateTimeOriginal=2009:05:17 10:20:30", "17.05.2009"},
    {"<EXIF_Time>", "-EXIF:CreateDate=2001:01:01 01:01:01", "10.20"},
    {"<EXIF_Device_Make>", "-EXIF:Make=Canon", "Canon"},
    {"<EXIF_Device_Model>", "-EXIF:Model=EOS 5D", "EOS 5D"},
    {"<EXIF_Dimensions>", "-EXIF:ExifImageWidth=99", "640x480"},
    {"<EXIF_Comments>", "-EXIF:UserComment=Grüße", "Grüße"},
    {"<IPTC_Description_Document_Title>", "-IPTC:ObjectName=Titel", "Titel"},
    {"<IPTC_Description_Author>", "-IPTC:By-line=Ann -IPTC:By-line=Bob", "Ann,Bob"},
    {"<IPTC_Description_Author_Title>", "-IPTC:By-lineTitle=Editor", "Editor"},
    {"<IPTC_Description_Description>", "-IPTC:Caption-Abstract=Über uns", "Über uns"},
    {"<IPTC_Description_Description_Writer>", "-IPTC:Writer-Editor=Cat", "Cat"},
    {"<IPTC_Description_Copyright_Status>", "-XMP-xmpRights:Marked=True", "Copyrighted"},
    {"<IPTC_Description_Copyright_Notice>", "-IPTC:CopyrightNotice=(c) me", "(c) me"},
    {"<IPTC_Description_Copyright_Info_URL>", "-XMP-xmpRights:WebStatement=http://a/b", "http://a/b"},
    {"<IPTC_Description_Urgency>", "-IPTC:Urgency#=5", "Normal"},
    {"<IPTC_Keywords>", "-IPTC:Keywords=one -IPTC:Keywords=two", "one,two"},
    {"<IPTC_Categories>", "-IPTC:SupplementalCategories=x -IPTC:SupplementalCategories=y", "x,y"},
    {"<IPTC_Contact_Address>", "-XMP-iptcCore:CreatorAddress=Road 1", "Road 1"},
    {"<IPTC_Contact_City>", "-XMP-iptcCore:CreatorCity=Ulm", "Ulm"},
    {"<IPTC_Contact_State>", "-XMP-iptcCore:CreatorRegion=BW", "BW"},
    {"<IPTC_Contact_Postal_Code>", "-XMP-iptcCore:CreatorPostalCode=89073", "89073"},
    {"<IPTC_Contact_Country>", "-XMP-iptcCore:CreatorCountry=Germany", "Germany"},
    {"<IPTC_Contact_Phone>", "-XMP-iptcCore:CreatorWorkTelephone=123", "123"},
    {"<IPTC_Contact_Email>", "-XMP-iptcCore:CreatorWorkEmail=a@b.c", "a@b.c"},
    {"<IPTC_Contact_Website>", "-XMP-iptcCore:CreatorWorkURL=http://c/", "http://c/"},
    {"<IPTC_Origin_Date_Created>", "-XMP-photoshop:DateCreated=2009:05:17 10:20:30+02:00", "17.05.2009"},
    {"<IPTC_Origin_Time_Created>", "-IPTC:TimeCreated=11:22:33+01:00", "112233+0100"},
    {"<IPTC_Origin_City>", "-IPTC:City=Köln", "Köln"},
    {"<IPTC_Origin_Location>", "-IPTC:Sub-location=Deutz", "Deutz"},
    {"<IPTC_Origin_State>", "-IPTC:Province-State=NRW", "NRW"},
    {"<IPTC_Origin_Country>", "-IPTC:Country-PrimaryLocationName=Germany", "Germany"},
    {"<IPTC_Origin_Country_Code>", "-IPTC:Country-PrimaryLocationCode=DEU", "DEU"},
    {"<IPTC_Origin_Credit>", "-IPTC:Credit=Agency", "Agency"},
    {"<IPTC_Origin_Source>", "-IPTC:Source=Archive", "Archive"},
    {"<IPTC_Origin_Headline>", "-IPTC:Headline=News", "News"},
    {"<IPTC_Origin_Instructions>", "-IPTC:SpecialInstructions=None", "None"},
    {"<IPTC_Origin_Transmission_Ref>", "-IPTC:OriginalTransmissionReference=R1", "R1"},
    {"<IPTC_Image_Rights_Usage_Terms>", "-XMP-xmpRights:UsageTerms=Free", "Free"},
    {"<IPTC_Image_Intellectual_Genre>", "-IPTC:ObjectAttributeReference=001:Current", "001:Current"},
    {"<IPTC_Image_Scene>", "-XMP-iptcCore:Scene=010100 -XMP-iptcCore:Scene=010200", "headshot,half-length"},
    {"<IPTC_Image_Subject_Code>", "-XMP-iptcCore:SubjectCode=01001000", "archaeology"},
    {"<FILEINFO_Filename>", "-XMP-dc:Title=unused", "photo"},
};

// "-a=b c -d=e" as lines: the options of a field.
std::string lines_of(std::string options) {
  for (std::size_t at = options.find(" -"); at != std::string::npos; at = options.find(" -", at)) options[at] = '\n';
  return options + "\n";
}

TEST_F(DecoderTest, ReadsEveryFieldThatAnotherProgramWrote) {
  if (output_of("exiftool -ver 2>/dev/null").empty()) GTEST_SKIP() << "exiftool is not installed";
  std::string options = "-q\n-overwrite_original\n-codedcharacterset=utf8\n";
  std::set<std::string> covered = {"<>", "<SEQUENCES_Number_Sequence>"};
  for (const Written& field : written) options += lines_of(field.option);
  write_file(tree_ / "options", options);
  const std::pair<std::string, std::string> kinds[] = {{"photo.jpg", sample_jpeg({})},
                                                       {"photo.tif", sample_tiff(SampleTiff().shorts(0x0103, 1), {})}};
  for (const auto& [name, bytes] : kinds) {
    write_file(tree_ / name, bytes);
    output_of("exiftool -@ '" + (tree_ / "options") + "' '" + (tree_ / name) + "' 2>&1");
    const MetaDataList list = read_metadata_values(tree_ / name, german_date);
    for (const Written& field : written) {
      EXPECT_EQ(to_utf8(value_of(list, decode_utf8(field.token))), field.value) << field.token << name;
      covered.insert(field.token);
    }
  }
  for (const MetadataGroup& group : metadata_catalogue()) {
    for (const MetaDataField& field : group.FIELDS) EXPECT_TRUE(covered.contains(to_utf8(field.tagCode)));
  }
}

}  // namespace
}  // namespace brindle::test
