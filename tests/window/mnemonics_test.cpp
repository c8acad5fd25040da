// The letters that are pressed with Alt: none has two meanings in one place, and what can have one does.

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>
#include <QToolButton>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/options_controller.h"
#include "methods/method_table.h"
#include "window/open_panel.h"
#include "window/sheets.h"
#include "window/sheets/help_window.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

class MnemonicsTest : public WindowTest {
 protected:
  static QChar letter_of(const QString& text) {
    const qsizetype mark = text.indexOf(u'&');
    return mark < 0 ? QChar() : text[mark + 1].toLower();
  }
  // What shows a command has the command's own keys.
  static bool shows_a_command(const QAbstractButton& button) {
    return qobject_cast<const QToolButton*>(&button) != nullptr || button.objectName().startsWith("button_");
  }
  static QStringList texts_of(const QWidget& window) {
    QStringList texts;
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
      for (const QAction* menu : bar->actions()) texts << menu->text();
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
      if (button->isVisibleTo(&window) && !shows_a_command(*button)) texts << button->text();
    for (const QLabel* label : window.findChildren<QLabel*>())
      if (label->buddy() != nullptr && label->isVisibleTo(&window)) texts << label->text();
    texts.removeAll(QString());
    return texts;
  }
  static QStringList texts_of(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions())
      if (!action->isSeparator()) texts << action->text();
    return texts;
  }

  // A text that stands twice in a place can have no letter.
  void look_at(const char* place, const QStringList& texts) {
    std::map<QChar, QString> owners;
    for (const QString& text : texts) {
      const QChar letter = letter_of(text);
      if (letter.isNull()) continue;
      const auto [owner, is_new] = owners.emplace(letter, text);
      EXPECT_TRUE(is_new) << place << ": " << text.toStdString() << " and " << owner->second.toStdString();
    }
    for (const QString& text : texts) {
      if (!letter_of(text).isNull()) continue;
      std::set<QChar>& taken = letterless_[QString(text).remove(u':')];
      for (const auto& [letter, owner] : owners) taken.insert(letter);
      if (texts.count(text) > 1)
        for (const QChar letter : text.toLower()) taken.insert(letter);
    }
  }
  // Of a text without a letter: each that it could have is taken in a place where it stands.
  void expect_no_letter_is_left_over() {
    for (const auto& [text, taken] : std::exchange(letterless_, {}))
      for (const QChar letter : text.toLower())
        EXPECT_TRUE(!letter.isLetter() || taken.contains(letter))
            << text.toStdString() << " could have " << letter.toLatin1();
  }
  void look_at_panels() {
    for (const MethodRow* method : method_table()) {
      controller->options().select_tab(method->method);
      for (const char* page : {"emptyHint", "loadingBox"}) {
        find<QStackedWidget>("listPanel")->setCurrentWidget(find(page));
        look_at(std::string(method->title).c_str(), texts_of(*window));
      }
    }
  }
  void look_at_menus() {
    for (const QAction* menu : window->menuBar()->actions()) look_at(qPrintable(menu->text()), texts_of(*menu->menu()));
    QTimer::singleShot(0, window.get(), [this] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      look_at("the list's menu", texts_of(*menu));
      menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, table().viewport()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(table().viewport(), &event);
  }

 private:
  std::map<QString, std::set<QChar>> letterless_;
};

TEST_F(MnemonicsTest, HaveOneMeaningInEachPlace) {
  disk.make({"a.jpg"});
  OpenPanelMemory memory;
  const OpenRequest request = {.title = "", .folder = disk.path(), .files = true, .folders = true, .multiple = true};
  const std::vector<std::pair<const char*, std::function<void()>>> sheets = {
      {"undo", [this] { show_undo_sheet(window.get(), *controller); }},
      {"profiles", [this] { show_profiles_sheet(window.get(), *controller); }},
      {"rules", [this] { show_rules_sheet(window.get(), *controller); }},
      {"export", [this] { show_export_sheet(window.get(), *controller); }},
      {"preferences", [this] { show_preferences_sheet(window.get(), *controller); }},
      {"live preview", [this] { show_live_preview_sheet(window.get(), *controller); }},
      {"extensions", [this] { show_extensions_sheet(window.get(), *controller, 0); }},
      {"photo mask", [this] { show_photo_mask_sheet(window.get(), *controller); }},
      {"dropped items", [this] { show_choose_items_sheet(window.get(), *controller, {disk / "a.jpg"}); }},
      {"about", [this] { show_about(window.get()); }},
      {"open panel", [&] { OpenPanel(window.get(), request, memory).exec(); }},
  };
  for (const Language& language : languages()) {
    SCOPED_TRACE(language.code);
    close();
    set_language(language);
    open();
    look_at_panels();
    drop_on_list({disk / "a.jpg"});
    look_at_menus();
    for (const auto& [name, show] : sheets) with_sheet(show, [&, name = name] { look_at(name, texts_of(*sheet)); });
    look_at("help", texts_of(HelpWindow()));
    expect_no_letter_is_left_over();
  }
}

}  // namespace
}  // namespace brindle::test
