#include "platform/own_folders.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

TEST(OwnFolders, HangOnAllThatTheirPathsLeadThrough) {
  const TempTree tree;
  tree.make({"home/.config/Tessalon/x", "home/.local/other/", "disk/share/Tessalon/Brindle4/Logs/", "disk/else/",
             "disk/loop -> loop", "home/.local/share -> ../../hop", "hop -> disk/share/.", "elsewhere/logs/kept/"});
  const test::Environment folders(
      {{"XDG_DATA_HOME", tree / "home/.local/share"}, {"XDG_CONFIG_HOME", tree / "home/../home//.config"}});
  const OwnFolders own = OwnFolders::with_logs_in(tree / "elsewhere/logs");
  const auto hangs_on = [&](const std::string& path) {
    const std::size_t slash = (tree / path).rfind('/');
    const FolderHandle folder = FolderHandle::open((tree / path).substr(0, slash));
    const std::string name = (tree / path).substr(slash + 1);
    const bool hangs = own.hang_on(folder, name.c_str());
    EXPECT_TRUE(!hangs || own.may_hang_on(name, 0)) << path;
    return hangs;
  };
  for (const char* path :
       {"home", "home/.config", "home/.config/Tessalon", "home/.local", "home/.local/share", "hop", "disk",
        "disk/share", "disk/share/Tessalon", "disk/share/Tessalon/Brindle4", "elsewhere", "elsewhere/logs"}) {
    EXPECT_TRUE(hangs_on(path)) << path;
  }
  for (const char* path :
       {"home/.local/other", "disk/else", "disk/loop", "home/.config/Tessalon/x", "gone", "elsewhere/logs/kept"}) {
    EXPECT_FALSE(hangs_on(path)) << path;
  }
  EXPECT_FALSE(own.hang_on(FolderHandle(), "home"));
  EXPECT_FALSE(OwnFolders().may_hang_on("home", 0));
}

TEST(OwnFolders, AreNotLookedForBeyondLinksThatGoRound) {
  const TempTree tree;
  tree.make({"a -> b", "b -> a", "empty/"});
  const test::Environment folders({{"XDG_DATA_HOME", tree / "empty"}, {"XDG_CONFIG_HOME", tree / "empty"}});
  const OwnFolders own = OwnFolders::with_logs_in(tree / "a/logs");
  const FolderHandle folder = FolderHandle::open(tree.path());
  EXPECT_TRUE(own.hang_on(folder, "a") && own.hang_on(folder, "b") && own.hang_on(folder, "empty"));
}

}  // namespace
}  // namespace brindle
