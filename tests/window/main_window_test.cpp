#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTimer>

#include "app/list_controller.h"
#include "app/rules_controller.h"
#include "app/undo_sheet_controller.h"
#include "app/window_model.h"
#include "window/commands.h"
#include "window/file_table_model.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

using MainWindowTest = WindowTest;

TEST_F(MainWindowTest, AFolderIsDroppedPreviewedWhileTypingRenamedAndUndone) {
  disk.make({"in/b 2.txt", "in/b 10.txt", "in/a.txt"});
  controller->list().setIncludeSubFolders(true);
  EXPECT_TRUE(find("emptyHint")->isVisible());
  picture("empty");
  drop_on_list({disk / "in"});
  EXPECT_EQ(table().model()->rowCount(), 3);
  EXPECT_TRUE(table().isVisible());

  find<QAction>("method1")->trigger();
  auto* text = find<QLineEdit>("insertDeleteInsert");
  text->setFocus();
  QTest::keyClicks(text, "new ");
  EXPECT_TRUE(QTest::qWaitFor([this] { return controller->model().state().rename_enabled; }));
  wait_until_idle();
  QStringList new_names = column_texts(new_name_column);
  new_names.sort();
  EXPECT_EQ(new_names, QStringList({"new a.txt", "new b 10.txt", "new b 2.txt"}));
  picture("live_preview");

  alerts.answers = {0};
  QTest::mouseClick(find<QPushButton>("button_rename"), Qt::LeftButton);
  wait_until_idle();
  EXPECT_EQ(alerts.take(), std::vector<std::string>{"ITEMRENAMINGMESSAGEFILES"});
  EXPECT_EQ(disk.names(), (std::vector<std::string>{"in", "in/new a.txt", "in/new b 10.txt", "in/new b 2.txt"}));
  EXPECT_EQ(cell(0, new_name_column), "Renaming (OK)");
  EXPECT_FALSE(find<QPushButton>("button_rename")->isEnabled());
  picture("renamed");

  alerts.answers = {0};
  UndoSheetController undo(*controller);
  undo.tableViewSelectionDidChange(0);
  undo.undoRenaming();
  wait_until_idle();
  EXPECT_EQ(disk.names(), (std::vector<std::string>{"in", "in/a.txt", "in/b 10.txt", "in/b 2.txt"}));
}

TEST_F(MainWindowTest, RowsAreMovedSortedAndRemovedByKeysAndTheSelectionStaysWithItsItems) {
  disk.make({"a1.txt", "a2.txt", "a10.txt"});
  drop_on_list({disk / "a2.txt", disk / "a10.txt", disk / "a1.txt"});
  table().setFocus();
  table().select_rows({2});
  table().setCurrentIndex(table().model()->index(2, name_column));
  QTest::keyClick(&table(), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(column_texts(name_column), QStringList({"a2.txt", "a1.txt", "a10.txt"}));
  EXPECT_EQ(table().selected_rows(), RowSet({1}));

  table().sort_by(name_column);
  EXPECT_EQ(column_texts(name_column), QStringList({"a1.txt", "a2.txt", "a10.txt"}));
  EXPECT_EQ(table().selected_rows(), RowSet({0}));
  EXPECT_EQ(table().currentIndex().row(), 0);
  table().sort_by(name_column);
  EXPECT_EQ(column_texts(name_column), QStringList({"a10.txt", "a2.txt", "a1.txt"}));
  EXPECT_EQ(table().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);

  QTest::keyClick(&table(), Qt::Key_Delete);
  EXPECT_EQ(column_texts(name_column), QStringList({"a10.txt", "a2.txt"}));
  EXPECT_EQ(table().selected_rows(), RowSet({1}));
  QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&table(), Qt::Key_Backspace);
  EXPECT_TRUE(find("emptyHint")->isVisible());
}

TEST_F(MainWindowTest, OneNewNameIsTypedInTheTable) {
  disk.make({"a.txt", "b.txt"});
  drop_on_list({disk / "a.txt", disk / "b.txt"});
  table().setFocus();
  const auto type = [this](int row, const QString& before, const QString& name) {
    table().setCurrentIndex(table().model()->index(row, name_column));
    QTest::keyClick(&table(), Qt::Key_F2);
    for (auto* editor : table().findChildren<QLineEdit*>(QStringLiteral("newNameEditor"))) {
      if (!editor->isVisible()) continue;
      EXPECT_EQ(editor->text(), before);
      editor->setText(name);
      QTest::keyClick(editor, Qt::Key_Return);
    }
    QApplication::processEvents();
  };
  type(0, "a.txt", "b.txt");
  EXPECT_EQ(cell(0, new_name_column), "File Already Exists");
  type(1, "b.txt", "c.txt");
  EXPECT_EQ(cell(1, new_name_column), "c.txt");
  EXPECT_TRUE(find<QPushButton>("button_rename")->isEnabled());
}

TEST_F(MainWindowTest, NamesThatAreNoUtf8ComeInByDrop) {
  const std::string name = "caf\xe9 100%.txt";
  disk.make({name});
  drop_on_list({disk / name});
  ASSERT_EQ(controller->model().files().size(), 1U);
  EXPECT_EQ(controller->model().files()[0].name(), name);
}

TEST_F(MainWindowTest, SizeColumnsAndSplittersAreFoundAgain) {
  table().show_column(new_name_column + 2, true);
  table().setColumnWidth(name_column, 123);
  find<QAction>("showRules")->trigger();
  window->resize(1000, 650);
  window->close_now();
  // A loop that begins and ends takes the wish to quit back, which would end the sheets of later tests.
  QTimer::singleShot(0, qApp, &QApplication::quit);
  QApplication::exec();
  close();
  open();
  EXPECT_TRUE(table().is_column_shown(new_name_column + 2));
  EXPECT_EQ(table().columnWidth(name_column), 123);
  EXPECT_TRUE(find("rulesDrawer")->isVisible());
  EXPECT_TRUE(controller->rules_controller().isOpen());
}

TEST_F(MainWindowTest, EveryCommandHasATextAndKeysOfItsOwnInEveryLanguage) {
  for (const Language& language : languages()) {
    set_language(language);
    close();
    open();
    QSet<QString> keys;
    for (const Command& command : all_commands()) {
      const auto* action = find<QAction>(std::string(command.id).c_str());
      EXPECT_NE(action->text(), qt_text(command.text));
      EXPECT_FALSE(action->shortcuts().isEmpty()) << command.id;
      for (const QKeySequence& key : action->shortcuts()) {
        EXPECT_FALSE(keys.contains(key.toString())) << command.id;
        keys << key.toString();
      }
    }
  }
}

TEST_F(MainWindowTest, FoldersModeEmptiesTheListAndTakesSubfolders) {
  disk.make({"in/sub/deep/", "in/a.txt"});
  controller->list().setIncludeSubFolders(true);
  drop_on_list({disk / "in"});
  EXPECT_EQ(column_texts(name_column), QStringList{"a.txt"});
  find<QRadioButton>("modeFolders")->click();
  EXPECT_TRUE(controller->model().files().empty());
  EXPECT_TRUE(controller->model().values().isIncludeSubFolders);
  drop_on_list({disk / "in"});
  EXPECT_EQ(column_texts(name_column), QStringList({"sub", "deep"}));
}

struct Look {
  const char* name;
  std::size_t language;
  bool dark;
};

class InEveryLook : public WindowTest, public testing::WithParamInterface<Look> {};

TEST_P(InEveryLook, TheWindowFitsItsSmallestScreen) {
  set_language(languages()[GetParam().language]);
  use_palette(GetParam().dark);
  close();
  open();
  disk.make({"Holiday/IMG_0001.JPG", "Holiday/IMG_0002.JPG", "Holiday/notes (1).txt", "Holiday/Tune.mp3",
             "Holiday/Sub/IMG_0003.JPG"});
  controller->list().setIncludeSubFolders(true);
  drop_on_list({disk / "Holiday"});
  find<QAction>("method2")->trigger();
  auto* search = find<QLineEdit>("replaceRemoveThis");
  QTest::keyClicks(search, "IMG_");
  QTest::keyClicks(find<QLineEdit>("replaceRemoveWith"), "Beach ");
  trigger("preview");
  picture(GetParam().name);
  EXPECT_LE(window->minimumSizeHint().width(), 1024);
  EXPECT_LE(window->minimumSizeHint().height(), 700);
  EXPECT_EQ(column_texts(new_name_column).filter("Beach").size(), 3);
  find<QAction>("showRules")->trigger();
  picture((std::string(GetParam().name) + "_rules").c_str());
}

INSTANTIATE_TEST_SUITE_P(MainWindow, InEveryLook,
                         testing::Values(Look{"light", 0, false}, Look{"dark", 0, true}, Look{"german", 1, false},
                                         Look{"german_dark", 1, true}),
                         [](const auto& look) { return std::string(look.param.name); });

TEST_F(WindowTest, ShowsNamesInOneLineAndOpensTheDrawerWithARuleFile) {
  disk.make({"a\nb.txt", "\xff.txt"});
  drop_on_list({disk / "a\nb.txt", disk / "\xff.txt"});
  EXPECT_EQ(column_texts(1), (QStringList{QStringLiteral("a\u240Ab.txt"), QStringLiteral("\uFFFD.txt")}));
  EXPECT_FALSE(find("rulesDrawer")->isVisible());
  controller->rules_controller().setOpen(true);
  EXPECT_TRUE(find("rulesDrawer")->isVisible());
}

TEST_F(WindowTest, EnterTakesATypedNameAndEndsTheTyping) {
  disk.make({"a.txt"});
  drop_on_list({disk / "a.txt"});
  table().setCurrentIndex(table().model()->index(0, 1));
  trigger("editName");
  auto* editor = table().findChild<QLineEdit*>(QStringLiteral("newNameEditor"));
  ASSERT_NE(editor, nullptr);
  editor->setText(QStringLiteral("b.txt"));
  editor->setModified(true);
  QTest::keyClick(editor, Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return table().findChild<QLineEdit*>() == nullptr; }));
  EXPECT_EQ(cell(0, 2), QStringLiteral("b.txt"));
}

// Counts how often anything asks for another layout.
class LayoutCounter final : public QObject {
 public:
  int requests = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) ++requests;
    return false;
  }
};

// Two layouts that follow each other would keep a processor busy for as long as the window is open.
TEST_F(WindowTest, AWindowThatNobodyTouchesRests) {
  for (int method = 0; method < 10; ++method) {
    find<QAction>(qPrintable(QStringLiteral("method%1").arg(method)))->trigger();
    QTest::qWait(50);
    LayoutCounter counter;
    qApp->installEventFilter(&counter);
    QTest::qWait(100);
    qApp->removeEventFilter(&counter);
    EXPECT_LE(counter.requests, 5) << "method " << method;
  }
}

}  // namespace
}  // namespace brindle::test
