// Files or folders: the list and its mode never disagree, whichever way the mode is changed.

#include <fstream>
#include <functional>

#include "app/controller_support.h"
#include "app/documents_controller.h"
#include "app/list_controller.h"
#include "app/order_controller.h"
#include "app/preview_controller.h"
#include "app/profiles_controller.h"
#include "app/window_model.h"
#include "settings/profile_file.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto question = "Are you sure to remove all file(s)/folder(s)?";

class ListMode : public ControllerTest {
 protected:
  void SetUp() override {
    tree_.make({"d/sub/in", "f", "g"});
    start();
    for (const bool folders : {false, true}) {
      RenameSettings settings;
      set_mode(settings, folders);
      settings.insertDeleteInsert = u"of the profile";
      ASSERT_EQ(write_profile_file(profile(folders), getCurrentSettings(settings)).reason(), "");
    }
  }
  std::string profile(bool folders) const { return tree_ / (folders ? "folders.brprofile" : "files.brprofile"); }

  void empty_list() {
    ports_.alerts.answers = {0};
    if (!app().model().files().empty()) app().list().clearFilesFolders();
    ports_.alerts.answers.clear();
    alerts();
  }
  // A list of one folder or of two files, which nobody has worked on.
  void fill(bool folders) {
    empty_list();
    app().list().filesFoldersOptionChanged(folders);
    app().list().setIncludeSubFolders(false);
    if (folders) {
      add({"d"});
    } else {
      add({"f", "g"});
    }
  }
  void import(bool folders) {
    const std::string list = tree_ / "list.txt";
    std::ofstream(list) << (folders ? "d" : "f") << "\tnew\t" << tree_.path() << "\n";
    set([&list](RenameSettings& settings) { settings.renameFile = decode_file_name(list); });
    app().list().loadRenameFile(folders);
  }
  bool agrees() {
    for (const ItemRecord& item : app().model().files().items()) {
      if (item.is_folder() != app().model().values().isFolders) return false;
    }
    return app().model().values().isFiles != app().model().values().isFolders;
  }
};

struct Way {
  const char* name;
  std::function<void(BrindleAppController&)> change;
  bool folders;  // that it changes to
};

TEST_F(ListMode, IsKeptWithTheListOrChangedWithoutIt) {
  const std::vector<std::string> paths = {tree_ / "d", tree_ / "f"};
  const Way ways[] = {
      {"new profile", [](auto& app) { app.profiles().loadEmptyProfile(); }, false},
      {"profile of files", [this](auto& app) { app.profiles().setCurrentSettings(profile(false)); }, false},
      {"profile of folders", [this](auto& app) { app.profiles().setCurrentSettings(profile(true)); }, true},
      {"profile as a document", [this](auto& app) { app.documents().openFiles({profile(true)}); }, true},
      {"paths handed over", [&](auto& app) { app.list().loadFiles(paths); }, false},
      {"dropped files", [&](auto& app) { app.list().PasteboardItemsControllerDidFinish(false, true, paths); }, false},
      {"dropped folders", [&](auto& app) { app.list().PasteboardItemsControllerDidFinish(true, true, paths); }, true},
      {"list of folders", [this](auto&) { import(true); }, true},
      {"list of files", [this](auto&) { import(false); }, false},
  };
  for (const Way& way : ways) {
    for (const std::size_t answer : {0U, 1U}) {
      SCOPED_TRACE(std::string(way.name) + (answer == 0 ? ": yes" : ": no"));
      app().profiles().forget_profile();
      fill(!way.folders);
      ports_.alerts.answers = {answer};
      way.change(app());
      run();
      EXPECT_THAT(alerts(), ElementsAre(question));
      EXPECT_EQ(app().model().values().isFolders, answer == 0 ? way.folders : !way.folders);
      EXPECT_TRUE(agrees());
      EXPECT_EQ(app().model().values().fileFolderIndex, app().model().values().isFolders ? 1 : 0);
    }
  }
}

TEST_F(ListMode, ProfileIsTakenOverAlsoByAListThatStays) {
  fill(true);
  ports_.alerts.answers = {1};
  app().profiles().setCurrentSettings(profile(false));
  EXPECT_EQ(app().model().values().insertDeleteInsert, u"of the profile");
  EXPECT_EQ(app().model().state().count_label, "1 folder in the list");
}

// What a load brings back goes without a question, and a person's work does not.
TEST_F(ListMode, WorkOnTheListIsNotThrownAwayUnasked) {
  const std::vector<std::pair<const char*, std::function<void()>>> works = {
      {"a name typed", [this] { app().preview().set_new_name(0, u"typed"); }},
      {"a row moved", [this] { app().order().move_rows_down(RowSet{0}); }},
      {"sorted", [this] { app().order().sort_by_column("filenameWithExtension", false); }},
      {"a row taken out", [this] { app().list().RemoveFiles(RowSet{0}); }},
  };
  ports_.chooser.open_answers = {{tree_ / "d"}};
  app().list().addFolderAction();
  run();
  const std::vector<std::pair<const char*, std::function<void()>>> ends = {
      {"the other mode", [this] { app().list().filesFoldersOptionChanged(true); }},
      {"a recent folder", [this] { app().list().recentFolderChanged(1); }},
  };
  for (const auto& [end, leave] : ends) {
    fill(false);
    leave();
    run();
    EXPECT_THAT(alerts(), IsEmpty()) << end;
    for (const auto& [work, act] : works) {
      SCOPED_TRACE(std::string(work) + ", then " + end);
      fill(false);
      act();
      const std::vector<std::string> before = rows();
      ports_.alerts.answers = {1};
      leave();
      run();
      EXPECT_THAT(alerts(), ElementsAre(question));
      EXPECT_EQ(rows(), before);
      EXPECT_TRUE(app().model().values().isFiles);
    }
  }
}

}  // namespace
}  // namespace brindle::test
