#include "run/apply.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>

#include "gather/gather.h"
#include "list/file_order.h"
#include "log/rename_log.h"
#include "platform/file_name.h"
#include "platform/own_folders.h"
#include "run/undo.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;
using Names = std::vector<std::string>;
using NameOf = std::function<std::string(const std::string&)>;

class Apply : public testing::Test {
 protected:
  Apply() { ::setenv("XDG_DATA_HOME", data_.path().c_str(), 1); }

  void gather(const Names& paths, const GatherOptions& options = {}) {
    Names absolute;
    for (const std::string& path : paths) absolute.push_back(path.empty() ? tree_.path() : tree_ / path);
    addFiles(files_, absolute, options, nullptr, {});
    options_.isFolders = options.isFolders;
    options_.isIncludeSubFolders = options.isIncludeSubFolders;
  }
  /// Proposes a name for every row, as a preview would, but without its checks.
  void propose(const NameOf& name_of) {
    FileSystemItem item;
    for (std::size_t row = 0; row < files_.size(); ++row) {
      files_.read(row, item);
      item.setNewFilename(decode_file_name(name_of(std::string(files_[row].name()))));
      files_.write(row, item, 255);
    }
  }
  ApplyResult apply() {
    options_.log_folder = logs_.path();
    return applyRenames(files_, options_, control_);
  }
  Names statuses() const {
    Names list;
    for (std::size_t row = 0; row < files_.size(); ++row) list.push_back(to_utf8(files_.new_filename(row)));
    return list;
  }

  TempTree tree_, logs_, data_;
  FileList files_;
  ApplyOptions options_;
  std::atomic<bool> cancel_{false};
  JobControl control_{&cancel_, nullptr};
};

const NameOf add_x = [](const std::string& name) { return "x" + name; };

TEST_F(Apply, RenamesEveryKindOfNameAndUndoPutsEachBack) {
  tree_.make({"plain", "new\nline", "tab\there", "quote\"'&<>", "caf\xE9", "\xEE\xBE\x80", "colon:name",
              "emoji\xF0\x9F\x98\x80", "\x01\x1F\x7F", "link -> plain", "dangling -> nowhere", "sub folder/deep\r\n/x",
              std::string(250, 'n')});
  std::filesystem::create_hard_link(tree_ / "plain", tree_ / "hard");
  ::mkfifo((tree_ / "pipe").c_str(), 0600);
  const auto before = tree_.inodes();
  gather({""});
  propose(add_x);
  const ApplyResult result = apply();
  EXPECT_EQ(result.renamed, files_.size());
  EXPECT_TRUE(result.error.empty() && !result.isHasFilesForRenaming);
  EXPECT_TRUE(std::all_of(files_.items().begin(), files_.items().end(),
                          [](const ItemRecord& record) { return record.status == ItemStatus::renaming_ok; }));
  EXPECT_EQ(tree_.inodes().at("xcaf\xE9"), before.at("caf\xE9"));
  EXPECT_NE(result.log_path.find("-" + std::to_string(files_.size()) + ".xml"), std::string::npos);
  EXPECT_EQ(logs_.names().size(), 1U) << "nothing but the finished log is left";
  const UndoResult undone = undoRenaming(result.log_path, {});
  EXPECT_EQ(undone.restored, result.renamed);
  EXPECT_EQ(tree_.inodes(), before);
}

TEST_F(Apply, TakenNamesAndFailuresKeepTheirFilesAndSayWhy) {
  tree_.make({"a", "taken", "b", "folder/", "c.app/", "d.app/"});
  std::filesystem::rename(tree_ / "d.app", tree_ / "d");
  tree_.make({"gone"});
  gather({"a", "b", "gone", "c.app"});
  std::filesystem::remove(tree_ / "gone");
  const auto before = tree_.inodes();
  propose([](const std::string& name) {
    return name == "c.app" ? "taken" : name == "b" ? "folder" : name == "a" ? "taken" : "new";
  });
  const ApplyResult result = apply();
  EXPECT_EQ(result.renamed, 0U);
  // A folder does not count a file as taking its name; the move fails all the same.
  EXPECT_EQ(statuses(), (Names{"File Already Exists", "File Already Exists", "No Changes", "No Changes"}));
  EXPECT_EQ(files_.reason(2), "No such file or directory");
  EXPECT_EQ(files_.reason(3), "File exists");
  EXPECT_EQ(tree_.inodes(), before);
  EXPECT_NE(result.log_path.find("-0.xml"), std::string::npos);
  EXPECT_TRUE(readLogFile(result.log_path)->entries.empty());
}

TEST_F(Apply, TheSecondOfTwoRowsWithOneNameFindsItTaken) {
  tree_.make({"a1", "a2"});
  gather({"a1", "a2"});
  propose([](const std::string&) { return "a"; });
  EXPECT_EQ(apply().renamed, 1U);
  EXPECT_EQ(statuses(), (Names{"Renaming (OK)", "File Already Exists"}));
  EXPECT_EQ(tree_.names(), (Names{"a", "a2"}));
}

TEST_F(Apply, NamesMoveUpInListOrder) {
  tree_.make({"1", "2", "3"});
  const auto before = tree_.inodes();
  gather({"3", "2", "1"});
  propose([](const std::string& name) { return std::to_string(std::stoi(name) + 1); });
  const ApplyResult result = apply();
  EXPECT_EQ(result.renamed, 3U);
  EXPECT_EQ(tree_.inodes().at("2"), before.at("1"));
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 3U);
  EXPECT_EQ(tree_.inodes(), before);
}

TEST_F(Apply, FoldersGoBeforeWhatTheyHoldAndUndoGoesBack) {
  tree_.make({"top/a/b/c/", "top/a/d/", "top/e/file", "top/e2/"});
  const auto before = tree_.inodes();
  gather({"top"}, {.isFolders = true});
  propose(add_x);
  const ApplyResult result = apply();
  EXPECT_EQ(result.renamed, files_.size());
  EXPECT_EQ(tree_.names(),
            (Names{"top", "top/xa", "top/xa/xb", "top/xa/xb/xc", "top/xa/xd", "top/xe", "top/xe/file", "top/xe2"}));
  for (std::size_t row = 0; row < files_.size(); ++row) EXPECT_TRUE(std::filesystem::exists(files_.path(row)));
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, result.renamed);
  EXPECT_EQ(tree_.inodes(), before);
}

TEST_F(Apply, FoldersThatBeginAlikeKeepApart) {
  for (int trip = 1; trip <= 20; ++trip) tree_.make({"Trip " + std::to_string(trip) + "/raw/"});
  const auto before = tree_.inodes();
  gather({""}, {.isFolders = true});
  propose([](const std::string& name) { return name + "_bak"; });
  const ApplyResult result = apply();
  EXPECT_EQ(result.renamed, 40U);
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 40U);
  EXPECT_EQ(tree_.inodes(), before);
}

// Between listing and renaming somebody puts a link, or another folder with the same names in it, in a folder's place.
TEST_F(Apply, AFolderThatIsNotTheListedOneIsLeftAlone) {
  const std::map<std::string, std::string> reasons = {{"link", "a symbolic link stands in the way to it"},
                                                      {"far/away", "a symbolic link stands in the way to it"},
                                                      {"other", "its folder is not the one that was listed any more"},
                                                      {"gone", "No such file or directory"},
                                                      {"same", ""}};
  for (const bool is_in_order : {false, true}) {
    Names paths;
    for (const auto& [folder, reason] : reasons) {
      tree_.make({folder + "/a", folder + "/in/b/", "decoy/a", "decoy/in/b/", "decoy/away/a", "decoy/away/in/b/"});
      paths.push_back(folder);
    }
    files_.clear();
    gather(paths, {.isFolders = is_in_order});
    for (const auto& [place, target] : {std::pair("link", "decoy"), {"far", "decoy"}, {"other", ""}, {"gone", ""}}) {
      std::filesystem::rename(tree_ / place, tree_ / ("away." + std::string(place)));
      if (*target != '\0') std::filesystem::create_symlink(target, tree_ / place);
    }
    tree_.make({"other/a", "other/in/b/"});
    propose(add_x);
    EXPECT_EQ(apply().renamed, is_in_order ? 2U : 1U);
    for (std::size_t row = 0; row < files_.size(); ++row) {
      const auto found = std::ranges::find_if(
          reasons, [&](const auto& entry) { return files_.path(row).starts_with(tree_ / entry.first + "/"); });
      ASSERT_NE(found, reasons.end()) << files_.path(row);
      // What is below a folder that stands elsewhere is not there.
      const bool is_deeper = files_.path(row).ends_with("/b");
      EXPECT_TRUE(is_deeper || files_.reason(row) == found->second) << files_.path(row) << files_.reason(row);
    }
    for (const std::string& name : tree_.names())
      EXPECT_TRUE(name.find("/x") == std::string::npos || name.starts_with("same/")) << name;
    for (const auto& entry : std::filesystem::directory_iterator(tree_.path())) std::filesystem::remove_all(entry);
  }
}

TEST_F(Apply, ListedFoldersThatHoldListedFilesAreDealtWithInOrder) {
  tree_.make({"Thing.app/inside"});
  gather({"Thing.app", "Thing.app/inside"});
  propose(add_x);
  const auto before = tree_.inodes();
  const ApplyResult result = apply();
  EXPECT_EQ(tree_.names(), (Names{"xThing.app", "xThing.app/xinside"}));
  EXPECT_EQ(files_.path(1), tree_ / "xThing.app/xinside");
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 2U);
  EXPECT_EQ(tree_.inodes(), before);
}

TEST_F(Apply, ManyFoldersOnThreadsKeepTheListsOrderInTheLog) {
  for (int folder = 0; folder < 30; ++folder) {
    for (int file = 0; file < 50; ++file) tree_.make({std::to_string(folder) + "/" + std::to_string(file)});
  }
  const auto before = tree_.inodes();
  gather({""});
  sort_by_name(files_);  // the rows of a folder do not stand together
  Names order;
  for (const ItemRecord& record : files_.items())
    order.push_back(files_.folders().path(record.folder) + "/x" + std::string(record.name()));
  propose(add_x);
  const ApplyResult result = apply();
  ASSERT_EQ(result.renamed, 1500U);
  const Result<LogFile> log = readLogFile(result.log_path);
  ASSERT_TRUE(log.ok());
  Names logged;
  for (const LogEntry& entry : log->entries)
    logged.push_back(std::string(entry.target_folder) + "/" + std::string(entry.target_name));
  EXPECT_EQ(logged, order);
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 1500U);
  EXPECT_EQ(tree_.inodes(), before);
}

class CancelAfter : public ProgressSink {
 public:
  CancelAfter(std::atomic<bool>& cancel) : cancel_(cancel) {}
  void report(const Progress& progress) override {
    if (!progress.last) cancel_ = true;
    last_ = progress.done;
  }
  std::size_t last() const { return last_; }

 private:
  std::atomic<bool>& cancel_;
  std::size_t last_ = 0;
};

TEST_F(Apply, ThreadsCancelBetweenItemsAndASecondApplyGoesOn) {
  for (int file = 0; file < 4000; ++file) tree_.make({std::to_string(file % 8) + "/f" + std::to_string(file)});
  gather({""});
  propose(add_x);
  CancelAfter sink(cancel_);
  control_.progress = &sink;
  const ApplyResult first = apply();
  EXPECT_EQ(sink.last(), first.attempted);
  EXPECT_EQ(readLogFile(first.log_path)->entries.size(), first.renamed);
  EXPECT_EQ(first.cancelled, first.renamed < 4000U);
  EXPECT_EQ(first.isHasFilesForRenaming, first.cancelled);
  cancel_ = false;
  control_.progress = nullptr;
  EXPECT_EQ(apply().renamed, 4000U - first.renamed);
  EXPECT_FALSE(std::filesystem::exists(tree_ / "0/f0"));
}

TEST_F(Apply, WithoutALogFolderNothingHappensUnlessAskedFor) {
  tree_.make({"a"});
  gather({"a"});
  propose(add_x);
  options_.log_folder = logs_ / "gone";
  ApplyResult result = applyRenames(files_, options_, {});
  EXPECT_TRUE(result.log_failed && !result.error.empty());
  EXPECT_EQ(tree_.names(), (Names{"a"}));
  options_.without_log = true;
  result = applyRenames(files_, options_, {});
  EXPECT_EQ(result.renamed, 1U);
  EXPECT_EQ(result.log_path, "");
}

TEST_F(Apply, FoldersThatHoldTheLogsStayAndAllOthersGo) {
  tree_.make({"home/logs/", "photos/"});
  gather({"home", "photos"}, {true, false, false, false});
  propose(add_x);
  options_.log_folder = tree_ / "home/logs";
  const ApplyResult result = applyRenames(files_, options_, control_);
  EXPECT_EQ(std::tuple(result.renamed, result.attempted, result.cancelled), std::tuple(1U, 2U, false));
  EXPECT_EQ(result.log_path.rfind(tree_ / "home/logs/", 0), 0U);
  EXPECT_EQ(statuses(), (Names{"No Changes", "Renaming (OK)"}));
  EXPECT_EQ(files_.reason(0), holds_own_data);
}

TEST_F(Apply, RunsOfOneSecondHaveLogsOfTheirOwn) {
  tree_.make({"a"});
  gather({"a"});
  for (int run = 0; run < 4; ++run) {
    propose(add_x);
    EXPECT_EQ(apply().renamed, 1U);
  }
  EXPECT_EQ(logs_.names().size(), 4U);
  EXPECT_EQ(tree_.names(), (Names{"xxxxa"}));
}

}  // namespace
}  // namespace brindle
