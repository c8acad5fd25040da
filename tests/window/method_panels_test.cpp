#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QSpinBox>

#include "app/list_controller.h"
#include "app/window_model.h"
#include "methods/method_table.h"
#include "window/panel_fixture.h"
#include "window/token_strip.h"

namespace brindle::test {
namespace {

using MethodPanels = PanelTest;

QString example_of(const QWidget* panel) {
  return panel->findChild<QLabel*>("example")->text();
}

// Which keys a tab has but no field shows: those that follow from a choice.
bool follows_from_a_choice(std::string_view key) {
  static const QSet<QString> others = {
      "isAlphaNumericIncrement", "isAlphaNumericNumeric", "isInsertDeleteInsert",  "isReplaceRemoveReplace",
      "isReplaceRemoveRemove",   "isPrefixSuffixString",  "hasDateTimeCustomDate", "isReplaceRemoveRemoveCharacters",
      "photoRenamingMask",       "id3RenamingMask"};
  const QString name = qt_text(key);
  const bool is_option_flag = key.starts_with("isInsertDeleteInsertAt") || key.starts_with("isDateTimeAt") ||
                              key.starts_with("isPathComponentsAt") || key.starts_with("isGeneral");
  return is_option_flag || others.contains(name);
}

TEST_F(MethodPanels, EveryKeyHasAFieldThatSaysWhatItIs) {
  for (std::int32_t tab = 0; std::cmp_less(tab, method_table().size()); ++tab) {
    const QWidget* panel = show_panel(tab);
    for (const SettingRow& row : settings_table()) {
      if (row.method != static_cast<Method>(tab) || row.change == SettingChange::shown ||
          follows_from_a_choice(row.key))
        continue;
      EXPECT_NE(panel->findChild<QObject*>(qt_text(row.key)), nullptr) << row.key;
    }
    for (const QWidget* field : panel->findChildren<QWidget*>()) {
      if (field->focusPolicy() == Qt::NoFocus || !field->isVisible() || field->objectName().startsWith("qt_")) continue;
      const auto* button = qobject_cast<const QAbstractButton*>(field);
      EXPECT_FALSE((button != nullptr ? button->text() : field->accessibleName()).isEmpty())
          << field->objectName().toStdString();
    }
  }
}

TEST_F(MethodPanels, FitTheirPlaceInEveryLanguage) {
  for (const Language& language : languages()) {
    set_language(language);
    for (std::int32_t tab = 0; std::cmp_less(tab, method_table().size()); ++tab) {
      QWidget* panel = show_panel(tab);
      const std::string name = "panel" + std::to_string(tab) + "_" + std::string(language.code);
      EXPECT_LE(panel->minimumSizeHint().width(), 820) << name;
      EXPECT_LE(panel->minimumSizeHint().height(), 250) << name;
      picture(frame.get(), name);
    }
  }
  use_palette(true);
  show_panel(4);
  picture(frame.get(), "panel4_dark");
}

TEST_F(MethodPanels, FieldsFollowTheChoiceTheyBelongTo) {
  struct Case {
    std::int32_t tab;
    const char* chosen;
    const char* on;
    const char* off;
  };
  const Case cases[] = {
      {0, "isAlphaNumericAlphabetic1", "alphaNumericAlphabeticStartWith", "alphaNumericSeperator"},
      {0, "isAlphaNumericDecrement1", "alphaNumericDecrementBy", "alphaNumericSeperator"},
      {1, "insertDeleteInsertOptionIndex3", "insertDeleteInsertAtBeforeText", "insertDeleteInsertAtAfterText"},
      {1, "isInsertDeleteDelete1", "insertDeleteNumberOfCharacters", "insertDeleteInsert"},
      {2, "removeReplaceIndex2", "replaceRemoveRemoveType", "replaceRemoveWith"},
      {2, "removeReplaceIndex1", "isReplaceRemoveAllOccurrence", "replaceRemoveRemoveType"},
      {3, "isPrefixSuffixDate1", "prefixSuffixDatePart1", "prefixSuffixPrefix"},
      {4, "dateTimeOptionsIndex2", "dateTimeAtPositionNo", "dateTimeAtBeforeText"},
      {4, "isDateTimeColonReplace", "dateTimeColonReplace", "dateTimeCustomDate"},
      {5, "generalOptionIndex9", "generalRemoveFromStringOccurrence", "generalFileNameCase"},
      {7, "isPhotoRenamingSeperator", "photoRenamingSeperator", "photoRenamingColonReplace"},
      {8, "pathComponentsOptionsIndex4", "pathComponentsAtAfterOccurrence", "pathComponentsAtPositionDirection"},
  };
  for (const auto& [tab, chosen, on, off] : cases) {
    show_panel(tab);
    find<QAbstractButton>(chosen)->click();
    EXPECT_TRUE(find(on)->isEnabled()) << on;
    EXPECT_FALSE(find(off)->isEnabled()) << off;
  }
  EXPECT_TRUE(values().isAlphaNumericAlphabetic && values().isAlphaNumericDecrement);
  EXPECT_EQ(values().insertDeleteInsertOptionIndex, 3);
  EXPECT_TRUE(values().isReplaceRemoveRemove);
  EXPECT_TRUE(values().isGeneralRemoveFromString);
}

TEST_F(MethodPanels, TheExampleShowsWhatIsTyped) {
  const QWidget* panel = show_panel(1);
  EXPECT_TRUE(example_of(panel).contains("missing"));
  type("insertDeleteInsert", "My ");
  EXPECT_TRUE(example_of(panel).contains("My Photo 1.jpg")) << example_of(panel).toStdString();
  home.make({"in/shot.png"});
  controller->list().loadFiles({home / "in/shot.png"});
  ports.main_thread.run_posted();
  EXPECT_TRUE(example_of(panel).contains("My shot.png")) << example_of(panel).toStdString();

  panel = show_panel(4);
  find<QComboBox>("dateTimeFormatDatePart3")->setFocus();
  QTest::keyClick(find("dateTimeFormatDatePart3"), Qt::Key_Home);
  EXPECT_EQ(values().dateTimeFormatDatePart3, u"None");

  panel = show_panel(6);
  find<QAbstractButton>("Artist")->click();
  type("id3CustomText", " - ");
  QTest::keyClick(find("id3CustomText"), Qt::Key_Return);
  find<QAbstractButton>("TrackNumber")->click();
  EXPECT_EQ(find<TokenStrip>("id3RenamingTagsList")->texts(), QStringList({"Artist", "“ - ”", "Track Number"}));
  EXPECT_TRUE(example_of(panel).endsWith("Artist - 1.mp3")) << example_of(panel).toStdString();
  find<QAbstractButton>("isID3RenamingSeperator")->click();
  type("id3RenamingSeperator", "_");
  EXPECT_TRUE(example_of(panel).endsWith("Artist_ - 1.mp3")) << example_of(panel).toStdString();
  picture(frame.get(), "panel6_filled");
}

TEST_F(MethodPanels, NumberFieldsTakeNumbersAndNothingElse) {
  show_panel(1);
  find<QAbstractButton>("isInsertDeleteDelete1")->click();
  type("insertDeleteNumberOfCharacters", "a-3x01");
  EXPECT_EQ(values().insertDeleteNumberOfCharacters, u"30");  // 301 is more than a field takes
  type("insertDeleteNumberOfCharacters", "\b");
  find("insertDeleteFromCharacterPosition")->setFocus();
  EXPECT_EQ(values().insertDeleteNumberOfCharacters, u"1");
  QTest::keyClick(find("insertDeleteFromCharacterPosition"), Qt::Key_Down);
  EXPECT_EQ(values().insertDeleteFromCharacterPosition, u"1");
  // What a profile brings is shown as it is.
  controller->model().settings().commit(
      [](RenameSettings& settings) { settings.insertDeleteNumberOfCharacters = u"5000"; });
  EXPECT_EQ(find<QSpinBox>("insertDeleteNumberOfCharacters")->text(), "5000");
}

}  // namespace
}  // namespace brindle::test
