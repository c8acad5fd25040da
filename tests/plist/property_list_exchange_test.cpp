// Property lists to and from other programs, by way of tests/end_to_end/property_lists.py.

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "plist/keyed_archive.h"
#include "plist/property_list.h"
#include "settings/sample_list.h"
#include "settings/stored_value.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

PropertyValue::Data data_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void write_data(const std::string& path, const PropertyValue& value) {
  const auto* data = value.get_if<PropertyValue::Data>();
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data->data()), std::ssize(*data));
}

// What libplist cannot say in XML: all digits of a real number, and the difference of a carriage return.
PropertyDictionary without_losses(const PropertyDictionary& list) {
  PropertyDictionary kept;
  for (const PropertyEntry& entry : list) {
    if (entry.key != u"reals" && entry.key != u"white") kept.append(entry.key, entry.value);
  }
  return kept;
}

TEST(PropertyListExchange, WithOtherPrograms) {
  if (std::system("python3 -c 'import plistlib' 2>/dev/null") != 0) GTEST_SKIP() << "no python3";
  const test::TempTree tree;
  const TextList texts = {u".A", u"é", u"", u"$null"};
  ASSERT_EQ(write_property_list_file(tree / "sample.xml", sample_list()).reason(), "");
  std::ofstream(tree / "sample.binary", std::ios::binary) << write_binary_property_list(sample_list());
  write_data(tree / "texts.archive", archived(texts));
  write_data(tree / "fields.archive", archived(FieldList{{u"EXIF", u"Date", u"<EXIF_Date>", u"Date", u""}}));
  const std::string script = BRINDLE_TEST_CASES "/../end_to_end/property_lists.py";
  ASSERT_EQ(std::system(("python3 '" + script + "' '" + tree.path() + "'").c_str()), 0);
  std::size_t read = 0;
  for (const auto& entry : std::filesystem::directory_iterator(tree.path())) {
    if (entry.path().extension() != ".plist") continue;
    const Result<PropertyList> list = read_property_list_file(entry.path());
    ASSERT_EQ(list.reason(), "");
    const bool is_lossy = entry.path().filename() == "other-converted-xml.plist";
    const auto* dictionary = list->value.get_if<PropertyDictionary>();
    ASSERT_TRUE(dictionary);
    if (is_lossy) {
      EXPECT_EQ(without_losses(*dictionary), without_losses(*sample_list().get_if<PropertyDictionary>()));
    } else {
      EXPECT_EQ(*dictionary, *sample_list().get_if<PropertyDictionary>()) << entry.path();
    }
    ++read;
  }
  EXPECT_GE(read, 3U);
  EXPECT_EQ(unarchived_texts(data_of(tree / "other-texts.archive")), texts);
}

}  // namespace
}  // namespace brindle
