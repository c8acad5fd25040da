#include "metadata/photo_fields_cache.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <future>
#include <set>
#include <vector>

#include "support/sample_images.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

class PhotoFieldsCacheTest : public testing::Test {
 protected:
  PhotoFieldsCacheTest() : folder_(files_.folders().intern(tree_ / ".")) {}

  /// A photograph by that maker; 0 for an inode that the listing did not give.
  void add(const std::string& name, const std::string& make, std::uint64_t inode) {
    write(name, make);
    files_.add(folder_, name, kind_bits(false, false), inode);
  }
  void write(const std::string& name, const std::string& make) const {
    SampleTiff tiff;
    tiff.text(0x010F, make).text(0x9003, "2009:05:17 22:20:30");
    write_file(tree_ / name, sample_jpeg({tiff.build(), {}, {}}));
  }
  std::u16string known(std::size_t row) {
    const std::optional<PhotoFields> fields = cache_.find(files_, row);
    return fields ? fields->make : u"unknown";
  }

  TempTree tree_;
  FileList files_;
  FolderId folder_;
  PhotoFieldsCache cache_;
};

TEST_F(PhotoFieldsCacheTest, ReadsAFileOnceWhateverBecomesOfItsRow) {
  add("a.jpg", "A", 11);
  add("b.jpg", "B", 12);
  add("c.jpg", "C", 0);
  add("d.jpg", "D", 0);
  EXPECT_EQ(known(0), u"unknown");
  for (std::size_t row = 0; row < files_.size(); ++row) cache_.fields(files_, row);
  for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) std::remove((tree_ / name).c_str());
  files_.reorder({1, 0, 2, 3});
  files_.set_path(0, folder_, "renamed.jpg");
  EXPECT_EQ(cache_.fields(files_, 0).make, u"B");
  EXPECT_EQ(known(1), u"A");
  EXPECT_EQ(known(2), u"C");
  EXPECT_EQ(known(3), u"D");
  cache_.clear();
  EXPECT_EQ(known(1), u"unknown");
  EXPECT_EQ(cache_.fields(files_, 1).make, u"");
}

TEST_F(PhotoFieldsCacheTest, KeepsWhatWasAskedForLast) {
  PhotoFieldsCache small({}, 2);
  for (std::uint64_t i = 0; i < 6; ++i) add("p" + std::to_string(i) + ".jpg", "M" + std::to_string(i), 100 + i);
  for (std::size_t row = 0; row < 4; ++row) small.fields(files_, row);
  EXPECT_TRUE(small.find(files_, 0).has_value());  // and so it is one of the last
  small.fields(files_, 4);
  EXPECT_TRUE(small.find(files_, 0).has_value());
  EXPECT_FALSE(small.find(files_, 1).has_value());
}

TEST_F(PhotoFieldsCacheTest, FillsTheCellsOfAnItemAndOfNoOther) {
  add("a.jpg", " Grün ", 1);
  tree_.make({"note.txt"});
  files_.add(folder_, "note.txt", 0, 2);
  FileSystemItem item;
  files_.read(0, item);
  item.photo() = cache_.fields(files_, 0);
  const std::pair<const char*, const char16_t*> cells[] = {
      {"make", u"Grün"}, {"model", u""}, {"dimensions", u"640 x 480"}, {"pictureTaken", u"17-May-2009 10:20:30 PM"}};
  for (const auto& [column, text] : cells) EXPECT_EQ(item.displayField(column), text) << column;
  EXPECT_EQ(item.photo().dimensionValue, 1120);
  files_.read(1, item);
  EXPECT_EQ(item.displayField("dimensions"), u"");
  EXPECT_EQ(item.displayField("pictureTaken"), std::nullopt);
}

TEST_F(PhotoFieldsCacheTest, ReadsForAViewOnItsOwnThreads) {
  for (std::uint64_t i = 0; i < 50; ++i) add("p" + std::to_string(i) + ".jpg", "M" + std::to_string(i), 100 + i);
  std::promise<void> all;
  std::mutex mutex;
  std::set<std::size_t> left;
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < files_.size(); ++row) rows.push_back(row);
  left.insert(rows.begin(), rows.end());
  PhotoFieldsCache* asked = nullptr;
  PhotoFieldsCache cache([&] {
    const std::lock_guard lock(mutex);
    const bool were_left = !left.empty();
    std::erase_if(left, [&](std::size_t row) { return asked->find(files_, row).has_value(); });
    if (were_left && left.empty()) all.set_value();
  });
  asked = &cache;
  cache.request(files_, std::span(rows).first(3));
  cache.request(files_, rows);
  all.get_future().wait();
  EXPECT_EQ(cache.find(files_, 49)->make, u"M49");
  cache.request(files_, rows);  // nothing to do
  cache.clear();
  cache.request(files_, rows);  // and not waited for
}

}  // namespace
}  // namespace brindle::test
