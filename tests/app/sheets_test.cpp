// The sheets that edit: profiles, rule files, extensions, dropped paths, the photo mask.

#include <filesystem>
#include <fstream>

#include "app/chain_controller.h"
#include "app/controller_support.h"
#include "app/extensions_editor_controller.h"
#include "app/pasteboard_items_controller.h"
#include "app/photo_renaming_mask_editor_controller.h"
#include "app/profile_sheet_controller.h"
#include "app/profiles_controller.h"
#include "app/rules_controller.h"
#include "app/rules_sheet_controller.h"
#include "app/window_model.h"
#include "methods/rule_file.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Sheets : public ControllerTest {
 protected:
  Sheets() { start(); }
  void set_text(std::u16string_view text) {
    set([&](RenameSettings& settings) {
      settings.selectedTab = 1;
      settings.insertDeleteInsert = std::u16string(text);
    });
  }
  std::string profile(const std::string& name) const { return home_.data() + "/Profiles/" + name; }
};

std::vector<std::string> names(const ProfileSheetController& sheet) {
  std::vector<std::string> names;
  for (std::size_t row = 0; row < sheet.profiles().size(); ++row)
    names.push_back(sheet.objectValue("profileName", row));
  return names;
}

TEST_F(Sheets, AProfileIsMadeReplacedOpenedAndDeleted) {
  ProfileSheetController sheet(app());
  std::ofstream(profile("OLD.BRPROFILE")) << "<plist/>";
  std::ofstream(profile("notes.txt")) << "no profile";
  set_text(u"first");
  sheet.saveProfile();  // without a name
  sheet.setNewProfileName(u"a/b");
  sheet.saveProfile();
  EXPECT_EQ(sheet.newProfileName(), u"");
  EXPECT_THAT(names(sheet), ElementsAre("a:b.brprofile", "OLD.BRPROFILE"));
  EXPECT_THAT(alerts(), ElementsAre("PROFILEENTERNEWNAME"));

  // Under the same name: asked, refused, and nothing changed; then agreed to.
  set_text(u"second");
  ports_.alerts.answers = {1, 0};
  for (const char16_t* opened : {u"first", u"second"}) {
    set_text(u"second");
    sheet.setNewProfileName(u"a/b");
    sheet.saveProfile();
    set_text(u"third");
    app().profiles().loadProfileFromSheet(profile("a:b.brprofile"));
    EXPECT_EQ(app().model().values().insertDeleteInsert, opened);
  }
  EXPECT_THAT(alerts(), ElementsAre("PROFILEOVERWRITECONFIRM", "PROFILEOVERWRITECONFIRM"));

  sheet.deleteProfile();  // none is selected
  sheet.sortDescriptorsDidChange("profileName", false);
  sheet.tableViewSelectionDidChange(1);
  ports_.alerts.answers = {1, 0};
  sheet.deleteProfile();
  EXPECT_TRUE(std::filesystem::exists(profile("a:b.brprofile")));
  sheet.deleteProfile();
  EXPECT_FALSE(std::filesystem::exists(profile("a:b.brprofile")));
  EXPECT_THAT(names(sheet), ElementsAre("OLD.BRPROFILE"));
  EXPECT_EQ(app().profiles().currProfileFile(), "");
  EXPECT_EQ(sheet.selected_row(), std::nullopt);
  EXPECT_THAT(alerts(), ElementsAre("PROFILESELECT", "PROFILEDELETECONFIRM", "PROFILEDELETECONFIRM"));
}

TEST_F(Sheets, OpeningAProfileClosesTheSheet) {
  ASSERT_TRUE(app().profiles().saveNewProfile(profile("p.brprofile")));
  ProfileSheetController sheet(app());
  sheet.loadProfile();
  EXPECT_THAT(alerts(), ElementsAre("PROFILESELECT"));
  EXPECT_FALSE(sheet.is_closed());
  sheet.tableViewSelectionDidChange(0);
  sheet.loadProfile();
  EXPECT_TRUE(sheet.is_closed());
  EXPECT_EQ(app().profiles().currProfileFile(), profile("p.brprofile"));
}

TEST_F(Sheets, ANameThatNoDiskTakesIsToldWithItsReason) {
  ProfileSheetController sheet(app());
  sheet.setNewProfileName(std::u16string(300, u'n'));
  sheet.saveProfile();
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_THAT(ports_.alerts.shown[0].informative_text, HasSubstr("long"));
  EXPECT_EQ(sheet.newProfileName().size(), 300U) << "it can be mended";
}

TEST_F(Sheets, ARuleFileIsReadPutInOrderAndPreviewed) {
  tree_.make({"name.txt"});
  add({"name.txt"});
  std::string error;
  for (const char16_t* text : {u"a", u"b", u"c"}) {
    set_text(text);
    ASSERT_TRUE(app().chain().addRule(error));
  }
  std::vector<Rule> chain = app().rules_controller().rules();
  chain[1].rule = u"Rule - InsertDelete";  // stays as it is in the file, and does nothing
  ASSERT_EQ(write_rule_file(tree_ / "chain.brrule", chain).reason(), "");
  app().rules_controller().clearAll();

  RulesSheetController sheet(app());
  EXPECT_FALSE(sheet.can_preview());
  ports_.chooser.open_answers = {{tree_ / "chain.brrule"}, {tree_ / "name.txt"}};
  sheet.openRule();
  sheet.openRule();
  EXPECT_THAT(alerts(), ElementsAre(HasSubstr("name.txt")));
  EXPECT_EQ(sheet.ruleFilePath(), tree_ / "chain.brrule");
  EXPECT_EQ(sheet.selectedRule(), 0U);
  ASSERT_EQ(sheet.outline().size(), 3U);
  EXPECT_EQ(sheet.outline()[0].childAtIndex(0).value(), "a");
  EXPECT_EQ(sheet.outline()[1].numberOfChildren(), 0U);
  sheet.moveUp();  // first already
  sheet.moveDown();
  sheet.moveDown();
  EXPECT_EQ(sheet.outline()[2].childAtIndex(0).value(), "a");
  EXPECT_TRUE(app().rules_controller().rules().empty()) << "the window's chain is its own until Preview";
  sheet.preview();
  run();
  EXPECT_TRUE(sheet.is_closed());
  EXPECT_THAT(rows(), ElementsAre("name.txt -> acname.txt"));
  EXPECT_TRUE(app().model().state().isRulePreview);
}

TEST_F(Sheets, RemovingTheLastRuleSelectsTheOneBefore) {
  std::string error;
  for (const char16_t* text : {u"a", u"b"}) {
    set_text(text);
    ASSERT_TRUE(app().chain().addRule(error));
  }
  RulesSheetController sheet(app());
  sheet.select_rule(1);
  sheet.clearSelected();
  EXPECT_EQ(sheet.selectedRule(), 0U);
  sheet.clearSelected();
  sheet.clearSelected();
  EXPECT_EQ(sheet.selectedRule(), std::nullopt);
  EXPECT_EQ(app().rules_controller().rules().size(), 2U);
}

TEST_F(Sheets, ExtensionsAreTakenFromFilesAndEachOnce) {
  ExtensionsEditorController sheet(app(), ExtensionsEditorController::audio);
  ports_.chooser.open_answers = {{"/m/song.Ogg"}, {"/m.d/plain"}, {"/m/.hidden"}, {"/m/other.oGG"}};
  for (int i = 0; i < 5; ++i) sheet.add();
  ASSERT_EQ(ports_.alerts.shown.size(), 1U);
  EXPECT_THAT(ports_.alerts.shown[0].message, HasSubstr(".OGG"));
  EXPECT_EQ(sheet.selected_row(), 4U);
  sheet.select_row(1);
  sheet.remove();
  EXPECT_EQ(sheet.selected_row(), 0U);
  sheet.remove();
  EXPECT_EQ(sheet.selected_row(), 0U);
  EXPECT_EQ(app().model().values().id3Extensions.size(), 4U);
  sheet.apply();
  EXPECT_EQ(app().model().values().id3Extensions, (TextList{u".AAC", u".M4B", u".OGG"}));
  EXPECT_EQ(app().model().values().photoExtensions.size(), 5U);

  ExtensionsEditorController photo(app(), ExtensionsEditorController::photo);
  for (int i = 0; i < 5; ++i) photo.remove();
  photo.apply();  // nothing is selected any more
  photo.sheetClosed();
  EXPECT_EQ(app().model().values().photoExtensions.size(), 5U);
}

TEST_F(Sheets, DroppedPathsAreLoadedAsChosen) {
  tree_.make({"d/in/file", "d/other"});
  PasteboardItemsController files(app(), {tree_ / "d"});
  files.setProcessSubfolders(false);
  files.apply();
  run();
  EXPECT_THAT(rows(), IsEmpty());
  PasteboardItemsController folders(app(), {tree_ / "d"});
  folders.filesFoldersOptionChanged(true);
  EXPECT_FALSE(folders.isFiles());
  folders.apply();
  run();
  EXPECT_TRUE(folders.is_closed());
  EXPECT_THAT(rows(), ElementsAre("in"));
}

class MaskSheet : public Sheets {
 protected:
  const MetaDataField& field(std::u16string_view token) { return *find_field(token); }
  std::vector<std::string> labels() const {
    std::vector<std::string> labels;
    for (const MetaDataField& field : sheet.fields()) labels.push_back(to_utf8(field.label));
    return labels;
  }
  PhotoRenamingMaskEditorController sheet{app()};
};

TEST_F(MaskSheet, FieldsComeByDoubleClickAndDrop) {
  const MetaDataField& custom = sheet.outline()[0].FIELDS[0][0];
  sheet.add(field(u"<EXIF_Date>"));
  sheet.add(custom);  // no text is given
  ports_.desktop.custom_tag = u" - ";
  sheet.add(custom);
  sheet.select_row(0);
  sheet.add(field(u"<EXIF_Time>"));  // the first row selected is as none
  sheet.select_row(1);
  sheet.add(field(u"<EXIF_Device_Make>"));
  EXPECT_THAT(labels(), ElementsAre("Date", "Device Make", "< - >", "Time"));
  EXPECT_EQ(sheet.selected_row(), 2U);
  EXPECT_EQ(sheet.fields()[2], (MetaDataField{u"CUSTOM", u"< - >", u"< - >", u" - ", u""}));
  const MetaDataField* const dropped[] = {&field(u"<EXIF_Comments>"), &field(u"<FILEINFO_Filename>")};
  sheet.drop(dropped, 0);
  sheet.clearSelected();
  sheet.moveDown();
  sheet.select_row(4);
  sheet.moveDown();  // last already
  sheet.moveUp();
  EXPECT_THAT(labels(), ElementsAre("Date", "Filename", "Device Make", "Time", "< - >"));
  EXPECT_TRUE(app().model().values().photoMetaDataList.empty());
  sheet.ok();
  EXPECT_EQ(app().model().values().photoRenamingMask,
            u"<EXIF_Date><FILEINFO_Filename><EXIF_Device_Make><EXIF_Time>< - >");
}

TEST_F(MaskSheet, TheFilterShowsMatchingFieldsInTheirGroups) {
  const std::size_t all = sheet.outline().size();
  sheet.filterItems(u"tIME");
  std::vector<std::string> shown;
  for (const auto& group : sheet.outline()) {
    for (const MetaDataField* each : group.FIELDS) shown.push_back(to_utf8(group.NAME) + "/" + to_utf8(each->label));
  }
  EXPECT_THAT(shown, ElementsAre("EXIF/Time", "IPTC - Origin/Time Created"));
  sheet.filterItems(u"");
  EXPECT_EQ(sheet.outline().size(), all);
}

}  // namespace
}  // namespace brindle::test
