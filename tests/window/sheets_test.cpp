#include "window/sheets.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <utility>

#include "app/chain_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preview_controller.h"
#include "app/profiles_controller.h"
#include "app/renaming_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "window/drop_hub.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

class SheetsTest : public WindowTest {
 protected:
  template <class Widget = QWidget>
  Widget* part(const char* name) const {
    auto* widget = sheet->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void click(const char* name) const {
    QWidget* button = part(name);
    EXPECT_TRUE(button->isEnabled()) << name;
    // Behind the text of a check box is nothing to click on.
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, {8, button->height() / 2});
  }
  bool is_open() const { return QApplication::activeModalWidget() == sheet; }
  static QStringList rows_of(const QTreeWidget& tree) {
    QStringList rows;
    for (int i = 0; i < tree.topLevelItemCount(); ++i) rows << tree.topLevelItem(i)->text(0);
    return rows;
  }
  void insert_text(const char16_t* text) {
    controller->options().select_tab(Method::insert_delete);
    controller->model().settings().commit([text](RenameSettings& settings) { settings.insertDeleteInsert = text; });
  }
  void rename_all() {
    controller->preview().actionPreview();
    wait_until_idle();
    alerts.answers = {0};
    controller->renaming().actionApply();
    wait_until_idle();
    alerts.take();
  }
  void add_rule(const char16_t* text) {
    insert_text(text);
    controller->chain().addToRule();
  }
  std::vector<std::u16string> inserted_by_rules() {
    std::vector<std::u16string> texts;
    for (const Rule& rule : controller->rules_controller().rules())
      texts.push_back(rule.settings.insertDeleteInsert.value_or(u""));
    return texts;
  }
  void keep_picture(const std::string& name) const {
    const char* folder = std::getenv("BRINDLE_TEST_PICTURES");
    if (folder == nullptr) return;
    // Not the folders of a test.
    for (QLineEdit* line : sheet->findChildren<QLineEdit*>())
      line->setText(line->text().replace(path_text(home / "XDG_DATA_HOME"), "/home/ann/.local/share"));
    QApplication::processEvents();
    sheet->grab().save(QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(folder), QString::fromStdString(name)));
  }
};

TEST_F(SheetsTest, ARenamingIsUndoneWithTheEnterKey) {
  disk.make({"a.txt", "b.txt"});
  drop_on_list({disk / "a.txt", disk / "b.txt"});
  insert_text(u"1 ");
  rename_all();
  EXPECT_EQ(disk.names(), (std::vector<std::string>{"1 a.txt", "1 b.txt"}));
  with_sheet([this] { show_undo_sheet(window.get(), *controller); },
             [this] {
               auto* logs = part<QTreeWidget>("logFiles");
               EXPECT_EQ(logs->topLevelItemCount(), 1);
               for (const char* command : {"viewLogFileContent", "deleteLogFile", "undoRenaming"}) click(command);
               QTest::keyClick(logs, Qt::Key_Down);
               EXPECT_EQ(part<QLabel>("statusLabel")->text(), "2 renamed items in the log");
               QTest::keyClick(logs, Qt::Key_Return);
               EXPECT_TRUE(QTest::qWaitFor([&] { return logs->topLevelItemCount() == 0; }));
               EXPECT_EQ(part<QLabel>("statusLabel")->text(), "0 renamed items in the log");
               for (const char* command : {"viewLogFileContent", "deleteLogFile", "undoRenaming"})
                 EXPECT_FALSE(part(command)->isEnabled()) << command << ", and no log";
             });
  EXPECT_EQ(alerts.take(), (std::vector<std::string>{"VIEWLOGFILETITLEMESSAGE", "UNDOFILESFOLDERSNOLOGSELECTED",
                                                     "UNDOFILESFOLDERSNOLOGSELECTED", "UNDOTOTALNOSITEMSFOUND"}));
  EXPECT_EQ(disk.names(), (std::vector<std::string>{"a.txt", "b.txt"}));
}

TEST_F(SheetsTest, EnterAfterEnterUndoesOneRun) {
  disk.make({"a.txt"});
  drop_on_list({disk / "a.txt"});
  insert_text(u"1");
  rename_all();
  rename_all();
  with_sheet([this] { show_undo_sheet(window.get(), *controller); },
             [this] {
               auto* logs = part<QTreeWidget>("logFiles");
               EXPECT_TRUE(logs->selectedItems().isEmpty());
               QTest::keyClick(logs, Qt::Key_Down);
               QTest::keyClick(logs, Qt::Key_Return);
               EXPECT_TRUE(QTest::qWaitFor([&] { return logs->topLevelItemCount() == 1; }));
               QTest::keyClick(logs, Qt::Key_Return);
             });
  EXPECT_EQ(disk.names(), std::vector<std::string>{"1a.txt"});
}

TEST_F(SheetsTest, LogsAreSortedOpenedFromElsewhereAndDeleted) {
  const std::string logs = controller->model().preferences().defaultLogFolderPath;
  for (const char* name : {"a-7.xml", "b-12.xml"}) std::ofstream(logs + "/" + name) << "<files></files>";
  std::ofstream(disk / "c-1.xml")
      << R"(<files><file srclocation="/x" srcfilename="a" tarlocation="/x" tarfilename="b"/></files>)";
  with_sheet([this] { show_undo_sheet(window.get(), *controller); },
             [this] {
               auto* table = part<QTreeWidget>("logFiles");
               QHeaderView* header = table->header();
               const QPoint count(header->sectionViewportPosition(2) + 5, header->height() / 2);
               QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, count);
               EXPECT_EQ(rows_of(*table), QStringList({"a-7.xml", "b-12.xml"}));
               QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, count);
               EXPECT_EQ(rows_of(*table), QStringList({"b-12.xml", "a-7.xml"}));
               chooser.open_answers = {{disk / "c-1.xml"}};
               click("openLogFile");
               EXPECT_TRUE(QTest::qWaitFor([this] { return part("undoRenaming")->isEnabled(); }));
               EXPECT_EQ(part<QLabel>("statusLabel")->text(), "1 renamed item in the log");
               EXPECT_TRUE(table->selectedItems().isEmpty());
               table->setCurrentItem(table->topLevelItem(1));
               alerts.answers = {0};
               click("deleteLogFile");
               EXPECT_EQ(rows_of(*table), QStringList({"b-12.xml"}));
             });
  EXPECT_EQ(alerts.take(), std::vector<std::string>{"UNDOFILESFOLDERSDELETECONFIRM"});
}

TEST_F(SheetsTest, AProfileIsSavedUnderATypedNameOpenedAndDeleted) {
  insert_text(u"kept");
  const auto show = [this] { show_profiles_sheet(window.get(), *controller); };
  with_sheet(show, [this] {
    auto* name = part<QLineEdit>("newProfileName");
    EXPECT_EQ(sheet->focusWidget(), name);
    QTest::keyClicks(name, "Holidays");
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(rows_of(*part<QTreeWidget>("profiles")), QStringList("Holidays.brprofile"));
    EXPECT_TRUE(name->text().isEmpty());
    EXPECT_TRUE(is_open());
  });
  insert_text(u"other");
  with_sheet(show, [this] {
    QTest::keyClick(part("profiles"), Qt::Key_Return);
    EXPECT_FALSE(is_open());
  });
  EXPECT_EQ(controller->model().values().insertDeleteInsert, u"kept");
  alerts.answers = {0};
  with_sheet(show, [this] {
    click("deleteProfile");
    EXPECT_EQ(part<QTreeWidget>("profiles")->topLevelItemCount(), 0);
    click("loadProfile");
    click("deleteProfile");
  });
  EXPECT_EQ(alerts.take(), (std::vector<std::string>{"PROFILEDELETECONFIRM", "PROFILESELECT", "PROFILESELECT"}));
}

TEST_F(SheetsTest, RulesArePutInOrderAsACopyUntilTheyArePreviewed) {
  add_rule(u"1");
  add_rule(u"2");
  add_rule(u"3");
  const auto show = [this] { show_rules_sheet(window.get(), *controller); };
  with_sheet(show, [this] {
    auto* outline = part<QTreeWidget>("rulesOutline");
    EXPECT_EQ(outline->topLevelItemCount(), 3);
    EXPECT_FALSE(part("ruleMoveUp")->isEnabled());
    // A row below a rule means the rule.
    outline->setCurrentItem(outline->topLevelItem(2)->child(0));
    EXPECT_FALSE(part("ruleMoveDown")->isEnabled());
    click("ruleMoveUp");
    chooser.save_answers = {disk / "chain.brrule"};
    click("saveRule");
    outline->setCurrentItem(outline->topLevelItem(0));
    outline->setFocus();
    QTest::keyClick(outline, Qt::Key_Delete);
    EXPECT_EQ(outline->topLevelItemCount(), 2);
  });
  EXPECT_EQ(inserted_by_rules(), (std::vector<std::u16string>{u"1", u"2", u"3"}));
  with_sheet(show, [this] {
    chooser.open_answers = {{disk / "chain.brrule"}};
    click("openRule");
    EXPECT_EQ(part<QLineEdit>("ruleFilePath")->text(), path_text(disk / "chain.brrule"));
    click("previewRules");
  });
  wait_until_idle();
  EXPECT_EQ(inserted_by_rules(), (std::vector<std::u16string>{u"1", u"3", u"2"}));
}

TEST_F(SheetsTest, TheListIsExportedWithTheChosenColumns) {
  disk.make({"a.txt"});
  drop_on_list({disk / "a.txt"});
  with_sheet([this] { show_export_sheet(window.get(), *controller); },
             [this] {
               click("isNewFilename");
               click("addColumnNamesInHeader");
               chooser.save_answers = {disk / "list.txt", disk / "list.txt"};
               click("export");
               EXPECT_TRUE(part("cancelExport")->isVisible());
               QTest::keyClick(sheet, Qt::Key_Escape);  // stops the export, and no more
               EXPECT_TRUE(is_open());
               EXPECT_TRUE(QTest::qWaitFor([this] { return part("export")->isEnabled(); }));
               EXPECT_EQ(alerts.take(), std::vector<std::string>{});
               click("export");
               EXPECT_TRUE(QTest::qWaitFor([this] { return part("export")->isEnabled(); }));
             });
  EXPECT_EQ(alerts.take(), std::vector<std::string>{"EXPORTFILESEXPORTEDSUCCESS"});
  std::ifstream list(disk / "list.txt");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(list), {}), "a.txt\t" + disk.path() + "\n");
}

TEST_F(SheetsTest, PreferencesAreTakenOverOnlyWhenTheyAreApplied) {
  const Preferences before = controller->model().preferences();
  const auto change = [this] {
    chooser.open_answers = {{disk / "logs"}, {disk / "rules"}};
    click("defaultLogFolderPath_browse");
    click("defaultRulesFolderPath_browse");
    click("defaultRulesFolderPath_reset");
    click("isShowHubIcon");
    click("automaticSaveCurrProfile");
    click("includeHidden");
  };
  const auto show = [this] { show_preferences_sheet(window.get(), *controller); };
  with_sheet(show, [&] { change(), QTest::keyClick(sheet, Qt::Key_Escape); });
  EXPECT_EQ(controller->model().preferences().defaultLogFolderPath, before.defaultLogFolderPath);
  EXPECT_FALSE(controller->model().include_hidden());
  with_sheet(show, [&] { change(), click("applyPreferences"); });
  EXPECT_EQ(controller->model().preferences().defaultLogFolderPath, disk / "logs");
  EXPECT_EQ(controller->model().preferences().defaultRulesFolderPath, before.defaultRulesFolderPath);
  EXPECT_FALSE(controller->model().preferences().isShowHubIcon);
  EXPECT_TRUE(controller->model().preferences().automaticSaveCurrProfile);
  EXPECT_TRUE(controller->model().include_hidden());
}

TEST_F(SheetsTest, TheLimitOfTheLivePreviewIsANumber) {
  const auto limit_after = [this](const char* typed) {
    with_sheet([this] { show_live_preview_sheet(window.get(), *controller); },
               [this, typed] {
                 auto* limit = part<QLineEdit>("livePreviewFilesLimit");
                 limit->setFocus();
                 limit->clear();
                 QTest::keyClicks(limit, typed);
                 click("applyLivePreview");
               });
    return controller->model().live_preview().livePreviewFilesLimit;
  };
  EXPECT_EQ(limit_after("0"), u"2500");
  EXPECT_EQ(limit_after("12a"), u"12");
  EXPECT_EQ(limit_after(""), u"2500");
  with_sheet([this] { show_live_preview_sheet(window.get(), *controller); },
             [this] {
               click("isLivePreviewAllFiles");
               EXPECT_FALSE(part("livePreviewFilesLimit")->isEnabled());
               click("isLivePreviewEnabled");
               EXPECT_FALSE(part("isLivePreviewAllFiles")->isEnabled());
               click("applyLivePreview");
             });
  EXPECT_FALSE(controller->model().live_preview().isLivePreviewEnabled);
  EXPECT_TRUE(controller->model().live_preview().isLivePreviewAllFiles);
}

TEST_F(SheetsTest, ExtensionsAreAddedByAFileAndRemoved) {
  with_sheet([this] { show_extensions_sheet(window.get(), *controller, 1); },
             [this] {
               chooser.open_answers = {{disk / "song.flac"}};
               click("addExtension");
               auto* list = part<QTreeWidget>("extensions");
               EXPECT_EQ(rows_of(*list), QStringList({".MP3", ".M4A", ".AAC", ".M4B", ".FLAC"}));
               list->setCurrentItem(list->topLevelItem(0));
               list->setFocus();
               QTest::keyClick(list, Qt::Key_Delete);
               QTest::keyClick(list, Qt::Key_Return);
               EXPECT_FALSE(is_open());
             });
  EXPECT_EQ(controller->model().values().id3Extensions, (TextList{u".M4A", u".AAC", u".M4B", u".FLAC"}));
}

TEST_F(SheetsTest, WhatIsDroppedOnTheHubIsListedAsChosen) {
  disk.make({"Brest/IMG_9.jpg", "Brest/Harbour/1.jpg"});
  DropHub hub(*controller, [this](std::vector<std::string> paths) {
    show_choose_items_sheet(window.get(), *controller, std::move(paths));
  });
  const auto dropped = [&](const std::function<void()>& choose) {
    drop(&hub, {disk / "Brest"});
    // The hub asks after the drop; the sheet is worked on while it is shown.
    with_sheet([&] { EXPECT_TRUE(QTest::qWaitFor([&] { return sheet != nullptr && !is_open(); })); },
               [&] { choose(), click("applyItems"); });
    wait_until_idle();
    QStringList names = column_texts(1);
    names.sort();
    return names;
  };
  EXPECT_EQ(dropped([] {}), QStringList({"1.jpg", "IMG_9.jpg"}));
  alerts.answers = {0};
  // With subfolders it is these that are meant, without them the dropped folder itself.
  EXPECT_EQ(dropped([this] { click("isFolders"); }), QStringList("Harbour"));
  alerts.answers = {0};
  controller->list().clearFilesFolders();
  EXPECT_EQ(dropped([this] { click("isFolders"), click("isProcessSubfolders"); }), QStringList("Brest"));
}

TEST_F(SheetsTest, EverySheetSaysWhatItsPartsAreAndClosesWithEscape) {
  disk.make({"IMG_9.jpg", "IMG_10.jpg"});
  drop_on_list({disk / "IMG_9.jpg", disk / "IMG_10.jpg"});
  insert_text(u"Brest - ");
  rename_all();
  add_rule(u"Brest - ");
  EXPECT_TRUE(controller->profiles().saveNewProfile(controller->model().preferences().defaultProfileFolderPath +
                                                    "/Camera.brprofile"));
  const std::vector<std::pair<const char*, std::function<void()>>> sheets = {
      {"undo", [this] { show_undo_sheet(window.get(), *controller); }},
      {"profiles", [this] { show_profiles_sheet(window.get(), *controller); }},
      {"rules", [this] { show_rules_sheet(window.get(), *controller); }},
      {"export", [this] { show_export_sheet(window.get(), *controller); }},
      {"preferences", [this] { show_preferences_sheet(window.get(), *controller); }},
      {"live_preview", [this] { show_live_preview_sheet(window.get(), *controller); }},
      {"extensions", [this] { show_extensions_sheet(window.get(), *controller, 0); }},
      {"photo_mask", [this] { show_photo_mask_sheet(window.get(), *controller); }},
      {"choose_items", [this] { show_choose_items_sheet(window.get(), *controller, {"/home/ann/Pictures/Brest"}); }},
      {"about", [this] { show_about(window.get()); }},
  };
  for (const Language& language : languages()) {
    close();
    set_language(language);
    use_palette(false);
    open();
    drop_on_list({disk / "Brest - IMG_9.jpg", disk / "Brest - IMG_10.jpg"});
    insert_text(u"2026 ");
    controller->preview().actionPreview();
    wait_until_idle();
    picture(("window_" + std::string(language.code)).c_str());
    for (const bool dark : {false, true}) {
      use_palette(dark);
      for (const auto& [name, show] : sheets) {
        with_sheet(show, [&, name = name] {
          for (const QWidget* widget : sheet->findChildren<QWidget*>()) {
            if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus)) continue;
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            EXPECT_FALSE((button ? button->text() : widget->accessibleName()).isEmpty())
                << name << ": " << widget->objectName().toStdString();
          }
          keep_picture(std::string(name) + "_" + std::string(language.code) + (dark ? "_dark" : ""));
          QTest::keyClick(sheet, Qt::Key_Escape);
          EXPECT_FALSE(is_open()) << name;
        });
      }
    }
  }
}

QWidget* help_window() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == "helpWindow" && widget->isVisible()) return widget;
  }
  return nullptr;
}

TEST_F(SheetsTest, HelpIsReadBesideASheet) {
  with_sheet([this] { show_undo_sheet(window.get(), *controller); },
             [this] {
               QTest::keyClick(sheet, Qt::Key_F1);
               EXPECT_TRUE(QTest::qWaitFor([] { return help_window() != nullptr; }));
             });
  QWidget* help = help_window();
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(QTest::qWaitFor([help] { return QApplication::activeWindow() == help; }));
  auto* text = help->findChild<QTextBrowser*>("helpText");
  EXPECT_EQ(text->documentTitle(), "Undo Renaming");
  auto* contents = help->findChild<QListWidget*>("helpContents");
  EXPECT_EQ(contents->currentItem()->text(), "Undo Renaming");
  contents->setCurrentRow(0);
  EXPECT_EQ(text->documentTitle(), "Brindle");
  QTest::mouseClick(help->findChild<QPushButton*>("helpBack"), Qt::LeftButton);
  EXPECT_EQ(text->documentTitle(), "Undo Renaming");
  if (const char* folder = std::getenv("BRINDLE_TEST_PICTURES"))
    help->grab().save(QStringLiteral("%1/help.png").arg(QString::fromLocal8Bit(folder)));
  QTest::keyClick(help, Qt::Key_Escape);
  EXPECT_EQ(help_window(), nullptr);
}

QString page_of(const QString& language, const QString& name) {
  return QStringLiteral(":/brindle/help/%1/%2").arg(language, name);
}

TEST(HelpPages, AreThoseOfEnglishAndTheirLinksLeadSomewhere) {
  static const QRegularExpression link(QStringLiteral("(?:href|src)=\"([^\"]+)\""));
  std::map<QString, int> sizes;
  for (const QString& language : QDir(QStringLiteral(":/brindle/help")).entryList(QDir::Dirs)) {
    const QString folder = page_of(language, {});
    QDirIterator pages(folder, {"*.html", "*.png"}, QDir::Files, QDirIterator::Subdirectories);
    while (pages.hasNext()) {
      QFile page(pages.next());
      ++sizes[language];
      EXPECT_TRUE(QFile::exists(page_of("en", page.fileName().mid(folder.size())))) << page.fileName().toStdString();
      if (!page.fileName().endsWith(".html")) continue;
      ASSERT_TRUE(page.open(QIODevice::ReadOnly));
      for (const auto& match : link.globalMatch(QString::fromUtf8(page.readAll())))
        EXPECT_TRUE(QFile::exists(folder + match.captured(1)) || QFile::exists(page_of("en", match.captured(1))))
            << page.fileName().toStdString() << ": " << match.captured(1).toStdString();
    }
  }
  EXPECT_GT(sizes["en"], 20);
  EXPECT_EQ(sizes["de"], sizes["en"]);
}

}  // namespace
}  // namespace brindle::test
