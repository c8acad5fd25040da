// Names of anybody's files, wherever the window shows them: as they are, on their line, and as text.

#include <sys/inotify.h>
#include <unistd.h>

#include <QAbstractItemView>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QTreeView>
#include <fstream>

#include "app/chain_controller.h"
#include "app/options_controller.h"
#include "app/preview_controller.h"
#include "app/profiles_controller.h"
#include "app/window_model.h"
#include "platform/file_name.h"
#include "texts/shown_text.h"
#include "window/dialogs.h"
#include "window/file_table_model.h"
#include "window/open_panel.h"
#include "window/sheets.h"
#include "window/text.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

// Sees whether anybody opens a file. A pipe would do what an attacker's does: hang the window, and the test with it.
class Bait {
 public:
  Bait() : watch_(::inotify_init1(IN_NONBLOCK)) {
    std::ofstream(path()) << "*{color:red}";
    EXPECT_GE(::inotify_add_watch(watch_, path().c_str(), IN_OPEN), 0);
  }
  Bait(const Bait&) = delete;
  Bait& operator=(const Bait&) = delete;
  ~Bait() { ::close(watch_); }

  std::string path() const { return folder_ / "bait"; }
  bool was_opened() const {
    char event[4096];
    return ::read(watch_, event, sizeof event) > 0;
  }

 private:
  TempTree folder_;
  int watch_;
};

std::string repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// No text turns the order of another, breaks its line, or reaches further than that line.
bool is_tame(QString text, bool lines) {
  if (lines) text.remove(u'\n');
  text.remove(QChar(0x2068)).remove(QChar(0x2069)).remove(QChar(0x200B));
  return in_one_line(text) == text;
}

class ForeignNamesTest : public WindowTest {
 protected:
  ForeignNamesTest() {
    std::string address = bait.path();
    for (std::size_t at = 0; (at = address.find('/', at)) != std::string::npos;) address.replace(at, 1, "&#47;");
    names = {"<img src=\"" + address + "\">",
             "<link rel=stylesheet type=text&#47;css href=" + address + "><b>x",
             "a&b",
             "\u202Egpj\nexe\t",
             "Z" + repeated("\u0301", 60),
             "שלום"};
  }
  ~ForeignNamesTest() override { QToolTip::hideText(); }

  void fill_folders() {
    for (const std::string& name : names) disk.make({name + ".txt", "folder/" + name + "/" + name});
    const Preferences& folders = controller->model().preferences();
    for (const std::string& name : names) {
      std::ofstream(folders.defaultLogFolderPath + "/" + name + "-7.xml") << "<files></files>";
      controller->model().settings().commit([&](RenameSettings& settings) {
        settings.selectedTab = 1;
        settings.insertDeleteInsert = decode_file_name(name);
        settings.renameFile = decode_file_name(disk / name);
        settings.photoExtensions.emplace_back(decode_file_name(name));
        settings.photoMetaDataList.emplace_back().tagCode = decode_file_name("<" + name + ">");
      });
      controller->chain().addToRule();
      EXPECT_TRUE(controller->profiles().saveNewProfile(folders.defaultProfileFolderPath + "/" + name + ".brprofile"));
      std::ofstream(folders.defaultRulesFolderPath + "/" + name + ".brrule") << "x";
    }
  }
  void fill_list() {
    std::vector<std::string> files;
    for (const std::string& name : names) files.push_back(disk / (name + ".txt"));
    drop_on_list(files);
    for (std::size_t row = 0; row < names.size(); ++row)
      controller->preview().set_new_name(row, decode_file_name(names[(row + 1) % names.size()]));
    for (int column = 0; column < table().model()->columnCount(); ++column) table().show_column(column, true);
  }

  static void check_tooltip(const QString& of) {
    QApplication::processEvents();
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
      const auto* label = qobject_cast<const QLabel*>(widget);
      if (label == nullptr || widget->objectName() != "qtooltip_label") continue;
      EXPECT_EQ(label->textFormat(), Qt::PlainText) << of.toStdString();
      EXPECT_TRUE(is_tame(label->text(), true)) << of.toStdString() << ": " << label->text().toStdString();
    }
  }
  static void check_view(QAbstractItemView& view, const QModelIndex& parent = {}) {
    for (int row = 0; row < view.model()->rowCount(parent); ++row) {
      for (int column = 0; column < view.model()->columnCount(parent); ++column) {
        const QModelIndex index = view.model()->index(row, column, parent);
        // As it is painted: the toolkit's panel needs the names themselves in its model.
        const auto* painter = qobject_cast<QStyledItemDelegate*>(view.itemDelegateForIndex(index));
        const QString text = index.data().toString();
        EXPECT_TRUE(is_tame(painter ? painter->displayText(text, QLocale()) : text, false))
            << view.objectName().toStdString() << row << column;
        QHelpEvent hover(QEvent::ToolTip, view.visualRect(index).center(), view.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(view.viewport(), &hover);
        check_tooltip(view.objectName());
      }
      check_view(view, view.model()->index(row, 0, parent));
    }
  }
  static void check_widgets() {
    QApplication::processEvents();
    for (QWidget* widget : QApplication::allWidgets()) {
      const QString name = widget->objectName();
      if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << name.toStdString();
        EXPECT_TRUE(is_tame(label->text(), true)) << name.toStdString();
      }
      EXPECT_TRUE(is_tame(widget->windowTitle(), false)) << name.toStdString();
      if (!widget->toolTip().isEmpty() && widget->isVisible()) {
        QToolTip::showText(widget->mapToGlobal(QPoint(5, 5)), widget->toolTip(), widget);
        check_tooltip(name);
      }
      if (auto* view = qobject_cast<QAbstractItemView*>(widget); view != nullptr && view->model() != nullptr)
        check_view(*view);
    }
  }
  void check_menus() {
    for (QMenu* menu : window->findChildren<QMenu*>()) {
      emit menu->aboutToShow();
      for (const QAction* action : menu->actions()) {
        EXPECT_TRUE(is_tame(action->text(), false)) << action->text().toStdString();
        EXPECT_FALSE(action->text().contains("a&b")) << action->text().toStdString();
      }
    }
  }

  Bait bait;
  std::vector<std::string> names;
};

TEST_F(ForeignNamesTest, ArePlainTextInTheWholeWindow) {
  fill_folders();
  fill_list();
  find<QAction>("showRules")->trigger();
  chooser.save_answers = {disk / (names[5] + "[*].brprofile")};
  controller->profiles().saveAsProfile();
  for (std::int32_t tab = 0; tab < 10; ++tab) {
    controller->options().select_tab(static_cast<Method>(tab));
    QApplication::processEvents();
  }
  QTest::keyClick(&table(), Qt::Key_Space);
  check_widgets();
  check_menus();
  picture("foreign_names");
  EXPECT_TRUE(window->windowTitle().contains("שלום[*][*]")) << window->windowTitle().toStdString();
  EXPECT_FALSE(bait.was_opened());
  // What is edited and renamed is the name itself.
  for (std::size_t row = 0; row < names.size(); ++row)
    EXPECT_EQ(path_bytes(table().model()->index(static_cast<int>(row), new_name_column).data(Qt::EditRole).toString()),
              names[(row + 1) % names.size()]);
}

TEST_F(ForeignNamesTest, ArePlainTextInEverySheet) {
  fill_folders();
  fill_list();
  OpenPanelMemory memory;
  for (const std::string& name : names) memory.recent.push_back(disk / ("folder/" + name));
  const std::vector<std::function<void()>> sheets = {
      [this] { show_undo_sheet(window.get(), *controller); },
      [this] { show_profiles_sheet(window.get(), *controller); },
      [this] { show_rules_sheet(window.get(), *controller); },
      [this] { show_preferences_sheet(window.get(), *controller); },
      [this] { show_extensions_sheet(window.get(), *controller, 0); },
      [this] { show_photo_mask_sheet(window.get(), *controller); },
      [this] {
        show_choose_items_sheet(window.get(), *controller, {disk / names[0], disk / names[3]});
      },
      [&] {
        const OpenRequest request = {
            .title = "", .folder = disk.path(), .files = true, .folders = true, .multiple = true};
        OpenPanel(window.get(), request, memory).exec();
      },
  };
  for (const auto& show : sheets) {
    with_sheet(show, [this] {
      EXPECT_TRUE(QTest::qWaitFor([this] {
        const auto* entries = sheet->findChild<QTreeView*>("panelTable");
        return entries == nullptr || entries->model()->rowCount() > 0;
      }));
      check_widgets();
      picture(("foreign_" + sheet->objectName()).toUtf8(), *sheet);
    });
  }
  EXPECT_FALSE(bait.was_opened());
}

TEST_F(ForeignNamesTest, ArePlainTextInQuestionsAndInTheToolkitsOwnPanel) {
  QtAlerts questions([this] { return window.get(); });
  for (const std::string& name : names) {
    Alert alert;
    alert.title = alert.message = alert.informative_text = name;
    with_sheet([&] { questions.show(alert); },
               [this] {
                 check_widgets();
                 picture("foreign_question", *sheet);
               });
  }
  // An answer that a file stands in the way of.
  fill_folders();
  QtChooser panels([this] { return window.get(); });
  bool asked = false;
  QTimer answers;
  answers.callOnTimeout([&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (qobject_cast<QMessageBox*>(dialog) != nullptr) asked = true;
    if (!asked || dialog == nullptr) return;
    check_widgets();
    dialog->reject();  // the question, and the panel that is shown again
  });
  with_sheet(
      [&] {
        const SaveRequest request = {
            .title = "Save", .folder = disk.path(), .name = names[1] + ".txt", .extension = "txt"};
        EXPECT_FALSE(panels.choose(request).has_value());
      },
      [&] {
        auto* panel = qobject_cast<QFileDialog*>(sheet);
        ASSERT_NE(panel, nullptr);
        EXPECT_TRUE(QTest::qWaitFor([&] { return panel->findChild<QTreeView*>()->model()->rowCount() > 0; }));
        check_widgets();
        answers.start(10);
        panel->findChild<QLineEdit*>("fileNameEdit")->setFocus();
        QTest::keyClick(panel->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
      });
  EXPECT_TRUE(asked);
  EXPECT_FALSE(bait.was_opened());
}

TEST_F(ForeignNamesTest, MarksPiledOnALetterStayInTheirRow) {
  disk.make({"a.txt", "b.txt", "c.txt"});
  drop_on_list({disk / "a.txt", disk / "b.txt", disk / "c.txt"});
  for (std::size_t row = 0; row < 3; ++row) controller->preview().set_new_name(row, u"x");
  const auto other_rows = [this] {
    QApplication::processEvents();
    const QImage all = table().viewport()->grab().toImage();
    const QRect own = table().visualRect(table().model()->index(1, new_name_column));
    return std::make_pair(all.copy(0, 0, all.width(), own.top()),
                          all.copy(0, own.bottom() + 1, all.width(), own.height()));
  };
  const auto before = other_rows();
  controller->preview().set_new_name(1, u"x" + std::u16string(30, u'\u0301') + std::u16string(30, u'\u0323'));
  EXPECT_TRUE(before == other_rows());
}

}  // namespace
}  // namespace brindle::test
