#include "plist/keyed_archive.h"

#include <gmock/gmock.h>

#include "plist/property_list.h"
#include "settings/sample_list.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

using Array = PropertyValue::Array;

std::string_view bytes_of(const PropertyValue::Data& data) {
  return {reinterpret_cast<const char*>(data.data()), data.size()};
}

PropertyDictionary dictionary_of(std::initializer_list<PropertyEntry> entries) {
  PropertyDictionary dictionary;
  for (const PropertyEntry& entry : entries) dictionary.append(entry.key, entry.value);
  return dictionary;
}

PropertyDictionary class_of(std::u16string_view name) {
  return dictionary_of({{u"$classname", name}, {u"$classes", Array{name, u"NSObject"}}});
}

PropertyDictionary archive_of(std::initializer_list<PropertyValue> objects) {
  Array all{u"$null"};
  all.insert(all.end(), objects);
  return dictionary_of({{u"$version", 100000},
                        {u"$archiver", u"NSKeyedArchiver"},
                        {u"$top", dictionary_of({{u"root", PropertyUid{1}}})},
                        {u"$objects", all}});
}

// An array of object 2, which is of a class and has an entry.
PropertyDictionary array_of_one(std::u16string_view name, std::u16string_view key, PropertyValue content) {
  return archive_of({dictionary_of({{u"NS.objects", Array{PropertyUid{2}}}, {u"$class", PropertyUid{3}}}),
                     dictionary_of({{u"$class", PropertyUid{4}}, {std::u16string(key), std::move(content)}}),
                     class_of(u"NSArray"), class_of(name), u"x"});
}

const FieldList fields = {{u"EXIF", u"Date", u"<EXIF_Date>", u"Date", u""}, {u"CUSTOM", u" - ", u" - ", u" - ", u""}};

TEST(KeyedArchive, GivesBackWhatWentIn) {
  for (const PropertyValue& value :
       {sample_list(), PropertyValue(u"$null"), PropertyValue(Array{u"$null", u"", u""})}) {
    const PropertyValue::Data archive = archive_value(value);
    EXPECT_EQ(unarchive_value(bytes_of(archive)), value);
    EXPECT_EQ(archive_value(value), archive);
  }
  EXPECT_EQ(unarchived_texts(archived(TextList{u".A", u"é", u""})), (TextList{u".A", u"é", u""}));
  EXPECT_EQ(unarchived_fields(archived(fields)), fields);
  EXPECT_EQ(unarchived_fields(archived(FieldList{})), FieldList{});
  const PropertyDictionary uid = dictionary_of({{u"CF$UID", 1}});
  EXPECT_EQ(unarchive_value(bytes_of(archive_value(Array{PropertyUid{1}}))), PropertyValue(Array{uid}));
}

TEST(KeyedArchive, ReadsWhatOthersArchive) {
  const struct {
    const char16_t* name;
    const char16_t* key;
    PropertyValue content;
    PropertyValue member;
  } cases[] = {
      {u"NSMutableString", u"NS.string", u"é", u"é"},
      {u"NSData", u"NS.data", PropertyValue::Data{1}, PropertyValue::Data{1}},
      {u"NSDate", u"NS.time", 1.5, Date(std::chrono::milliseconds(978'307'201'500))},
      {u"NSDate", u"NS.time", 1, Date(std::chrono::seconds(978'307'201))},
      {u"NSNull", u"", u"", u""},
      {u"NSMutableArray", u"NS.objects", Array{PropertyUid{5}, PropertyUid{5}}, Array{u"x", u"x"}},
      {u"MetaDataField", u"tagCode", PropertyUid{5},
       dictionary_of({{u"prefix", u""}, {u"label", u""}, {u"tagCode", u"x"}, {u"metadataCode", u""}})},
      {u"MetaDataField", u"label", PropertyUid{0},
       dictionary_of({{u"prefix", u""}, {u"label", u""}, {u"tagCode", u""}, {u"metadataCode", u""}})},
  };
  for (const auto& c : cases) {
    const PropertyDictionary archive = array_of_one(c.name, c.key, c.content);
    EXPECT_EQ(unarchive_value(write_binary_property_list(archive), meta_data_field_class),
              PropertyValue(Array{c.member}));
    EXPECT_EQ(unarchive_value(write_xml_property_list(archive), meta_data_field_class), PropertyValue(Array{c.member}));
  }
}

TEST(KeyedArchive, RefusesAnythingElse) {
  PropertyDictionary other_archiver = array_of_one(u"NSNull", u"", u"");
  other_archiver.set(u"$archiver", u"NSArchiver");
  // Arrays that hold the next one twice, and so on.
  Array laughs{u"$null"};
  for (std::uint64_t i = 2; i < 40; ++i) {
    laughs.push_back(
        dictionary_of({{u"NS.objects", Array{PropertyUid{i}, PropertyUid{i}}}, {u"$class", PropertyUid{40}}}));
  }
  laughs.insert(laughs.end(), {u"end", class_of(u"NSArray")});
  PropertyDictionary bomb = archive_of({});
  bomb.set(u"$objects", laughs);
  const PropertyValue cases[] = {
      other_archiver,
      bomb,
      archive_of({}),
      archive_of({PropertyUid{1}}),
      archive_of({Array{u"a"}}),
      archive_of({dictionary_of({})}),
      archive_of({dictionary_of({{u"$class", PropertyUid{9}}})}),
      array_of_one(u"NSColor", u"NS.string", u"x"),
      array_of_one(u"NSString", u"NS.string", 1),
      array_of_one(u"NSDate", u"NS.time", 1e300),
      array_of_one(u"NSArray", u"NS.objects", Array{PropertyUid{1}}),
      array_of_one(u"NSArray", u"NS.objects", Array{PropertyUid{0}}),
      array_of_one(u"NSArray", u"NS.objects", Array{PropertyUid{70}}),
      array_of_one(u"NSArray", u"NS.objects", Array{u"x"}),
      array_of_one(u"NSDictionary", u"NS.keys", Array{PropertyUid{5}}),
      array_of_one(u"MetaDataField", u"tagCode", PropertyUid{1}),
      array_of_one(u"MetaDataField", u"tagCode", u"x"),
  };
  for (const PropertyValue& c : cases) {
    EXPECT_EQ(unarchive_value(write_binary_property_list(c), meta_data_field_class), std::nullopt)
        << write_xml_property_list(c);
  }
  EXPECT_EQ(unarchive_value("no list"), std::nullopt);
  EXPECT_EQ(unarchived_fields(PropertyValue::Data{1, 2}), std::nullopt);
  EXPECT_EQ(unarchived_fields(archived(TextList{u"<Artist>"})), FieldList{field_of_token(u"<Artist>")});
  EXPECT_EQ(unarchived_texts(archived(fields)), std::nullopt);
  EXPECT_EQ(unarchived_fields(archive_value(Array{dictionary_of({{u"label", u"x"}})})), std::nullopt);
}

}  // namespace
}  // namespace brindle
