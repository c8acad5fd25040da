// What can be measured of how the window looks: contrast, room, and the way of the Tab key.

#include <QFontInfo>
#include <algorithm>
#include <cmath>
#include <string>

#include "app/options_controller.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

// As in WCAG 2.1.
double luminance(const QColor& colour) {
  const auto linear = [](float part) {
    return part <= 0.03928F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}
double contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax(luminance(a), luminance(b));
  return (light + 0.05) / (dark + 0.05);
}

TEST(Theme, EveryTextCanBeReadInBothThemes) {
  for (const bool dark : {false, true}) {
    use_palette(dark);
    const QPalette colours = QApplication::palette();
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase}) {
      const QColor ground = colours.color(role);
      EXPECT_GE(contrast(colours.color(QPalette::PlaceholderText), ground), 4.5) << dark << role;
      EXPECT_GE(contrast(quiet_colour(colours), ground), 4.5) << dark << role;
      EXPECT_GE(contrast(colours.color(QPalette::Disabled, QPalette::Text), ground), 3) << dark << role;
      for (const ItemStatus status : {ItemStatus::renaming_ok, ItemStatus::no_new_name})
        EXPECT_GE(contrast(status_colour(status, colours), ground), 4.5) << dark << role;
    }
    EXPECT_GE(contrast(colours.color(QPalette::HighlightedText), colours.color(QPalette::Highlight)), 4.5) << dark;
    EXPECT_GE(contrast(colours.color(QPalette::Text), changed_ground(colours)), 4.5) << dark;
  }
  use_palette(false);
}

using LooksTest = WindowTest;

QString next_stop(const QWidget* from) {
  const QWidget* next = from->nextInFocusChain();
  while ((next->focusPolicy() & Qt::TabFocus) == 0 || !next->isVisible() || next->objectName().startsWith("qt_"))
    next = next->nextInFocusChain();
  return next->objectName();
}

TEST_F(LooksTest, TheTabKeyGoesThroughTheWindowAsItIsRead) {
  for (std::int32_t tab = 0; tab < 10; ++tab) {
    controller->options().select_tab(static_cast<Method>(tab));
    const QString first = next_stop(find("methodList"));
    EXPECT_NE(find(("methodPanel" + std::to_string(tab)).c_str())->findChild<QWidget*>(first), nullptr)
        << tab << first.toStdString();
  }
  controller->options().select_tab(Method::insert_delete);
  EXPECT_EQ(next_stop(find("isInsertDeleteDelete0")), "insertDeleteInsert");
  EXPECT_EQ(next_stop(find("optionHidden")), "hint_addFiles");
}

// The fonts that desktops bring; tools/setup installs them.
constexpr const char* font_families[] = {"DejaVu Sans", "Noto Sans", "Cantarell", "Liberation Sans"};

class InEachFont : public WindowTest, public testing::WithParamInterface<const char*> {
 protected:
  InEachFont() {
    QFont font = usual_;
    font.setFamilies({GetParam()});
    EXPECT_EQ(QFontInfo(font).family(), GetParam()) << "the font is not installed; tools/setup test does that";
    QApplication::setFont(font);
  }
  ~InEachFont() override { QApplication::setFont(usual_); }

  QFont usual_ = QApplication::font();
};

TEST_P(InEachFont, NoPanelScrollsSidewaysBesideTheRules) {
  for (const Language& language : languages()) {
    close();
    set_language(language);
    open();
    find<QAction>("showRules")->trigger();
    EXPECT_TRUE(find("ruleTableView")->isVisible());
    for (std::int32_t tab = 0; tab < 10; ++tab) {
      controller->options().select_tab(static_cast<Method>(tab));
      QApplication::processEvents();
      const QWidget* panel = find(("methodPanel" + std::to_string(tab)).c_str());
      EXPECT_LE(panel->width(), panel->parentWidget()->width()) << tab << language.code;
      picture(("font_" + std::string(GetParam()) + std::string(language.code) + std::to_string(tab)).c_str());
    }
  }
}

std::string without_spaces(const testing::TestParamInfo<const char*>& family) {
  std::string name = family.param;
  std::erase(name, ' ');
  return name;
}
INSTANTIATE_TEST_SUITE_P(Looks, InEachFont, testing::ValuesIn(font_families), without_spaces);

}  // namespace
}  // namespace brindle::test
