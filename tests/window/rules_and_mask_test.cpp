#include <QAbstractItemModelTester>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>

#include "app/options_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "metadata/metadata_catalogue.h"
#include "window/mask_editor.h"
#include "window/mask_table.h"
#include "window/panel_fixture.h"
#include "window/rules_drawer.h"

namespace brindle::test {
namespace {

class RulesDrawerTest : public PanelTest {
 protected:
  void show_drawer() {
    controller->rules_controller().setOpen(true);
    show(make_rules_drawer(*controller, nullptr), 300, 400);
    table = find<QTableView>("ruleTableView");
  }
  void add_prefix(const char16_t* text) {
    controller->model().settings().commit([=](RenameSettings& settings) {
      settings.selectedTab = 3;
      settings.prefixSuffixPrefix = text;
    });
    find<QToolButton>("addButton")->click();
  }
  std::u16string chain() const {
    std::u16string texts;
    for (const Rule& rule : controller->rules_controller().rules())
      texts += rule.settings.prefixSuffixPrefix.value_or(u"?") + (rule.isActive ? u"" : u"-");
    return texts;
  }

  QTableView* table = nullptr;
};

TEST_F(RulesDrawerTest, TheChainIsMadeByButtonsAndKeys) {
  show_drawer();
  const QAbstractItemModelTester tester(table->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_FALSE(find("clearButton")->isEnabled());
  picture(frame.get(), "rules_empty");
  for (const char16_t* text : {u"a", u"b", u"c"}) add_prefix(text);
  EXPECT_EQ(chain(), u"abc");

  table->setFocus();
  table->selectRow(2);
  EXPECT_EQ(values().prefixSuffixPrefix, u"c");
  EXPECT_FALSE(find("moveDown")->isEnabled());
  QTest::keyClick(table, Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(chain(), u"acb");
  EXPECT_EQ(table->currentIndex().row(), 1);
  QTest::keyClick(table, Qt::Key_Space);
  EXPECT_EQ(chain(), u"ac-b");
  controller->model().settings().commit([](RenameSettings& settings) { settings.prefixSuffixPrefix = u"new"; });
  find<QToolButton>("updateRuleButton")->click();
  EXPECT_TRUE(chain().starts_with(u"anew"));
  const QString summary = table->model()->index(1, 1).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(summary.contains("new") && summary.contains("Prefix")) << summary.toStdString();
  EXPECT_TRUE(table->model()->index(1, 2).data().toString().endsWith(": new"));
  controller->options().select_tab(Method::insert_delete);
  find<QToolButton>("updateRuleButton")->click();
  EXPECT_TRUE(QToolTip::text().contains("Prefix")) << QToolTip::text().toStdString();
  picture(frame.get(), "rules");
  QTest::keyClick(table, Qt::Key_Delete);
  EXPECT_EQ(chain(), u"ab");
  controller->options().select_tab(Method::from_list);
  EXPECT_FALSE(find("addButton")->isEnabled());
  find<QToolButton>("clearAllButton")->click();
  EXPECT_EQ(table->model()->rowCount(), 0);
}

TEST_F(RulesDrawerTest, AFileIsSavedAndOpened) {
  set_language(*find_language("de"));
  show_drawer();
  add_prefix(u"x");
  add_prefix(u"y");
  picture(frame.get(), "rules_german");
  ports.chooser.save_answers = {home / "chain.brrule"};
  find<QToolButton>("saveRuleButton")->click();
  find<QToolButton>("clearAllButton")->click();
  ports.chooser.open_answers = {{home / "chain.brrule"}};
  find<QToolButton>("openRuleButton")->click();
  EXPECT_EQ(chain(), u"xy");
  EXPECT_EQ(table->currentIndex().row(), 0);
}

class MaskEditorTest : public PanelTest {
 protected:
  void open() {
    editor = std::make_unique<MaskEditor>(*controller, nullptr);
    editor->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(editor.get()));
    table = editor->findChild<MaskTable*>("maskTable");
    outline = editor->findChild<QTreeWidget*>("maskOutline");
  }
  ~MaskEditorTest() override { editor.reset(); }
  QTreeWidgetItem* field(const char* title) const {
    const auto found = outline->findItems(title, Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_FALSE(found.isEmpty()) << title;
    return found.value(0);
  }
  void double_click(const char* title) const {
    const QPoint at = outline->visualItemRect(field(title)).center();
    QTest::mouseClick(outline->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(outline->viewport(), Qt::LeftButton, {}, at);
  }
  void press(const char* name) const { editor->findChild<QPushButton*>(name)->click(); }
  QStringList rows() const {
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row) texts << table->item(row, 0)->text();
    return texts;
  }
  void drop(QMimeData* data, int row) const {
    const QPoint at = row < table->rowCount() ? table->visualItemRect(table->item(row, 0)).topLeft() + QPoint(2, 2)
                                              : table->viewport()->rect().bottomLeft() + QPoint(2, -2);
    QDragEnterEvent enter(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table->viewport(), &event);
  }

  std::unique_ptr<MaskEditor> editor;
  MaskTable* table = nullptr;
  QTreeWidget* outline = nullptr;
};

TEST_F(MaskEditorTest, FieldsAreAddedFoundDroppedAndPutInOrder) {
  open();
  picture(editor.get(), "mask_editor_empty");
  double_click("Date");
  EXPECT_EQ(rows(), QStringList{"Date"});
  ports.desktop.custom_tag = u"Trip";
  double_click("Text of Your Own…");
  EXPECT_EQ(rows(), QStringList({"Date", "“Trip”"}));
  ports.desktop.custom_tag = std::nullopt;
  double_click("Text of Your Own…");

  QTest::keyClicks(editor->findChild<QLineEdit*>("maskSearch"), "copyright");
  EXPECT_EQ(outline->topLevelItemCount(), 1);
  EXPECT_EQ(outline->topLevelItem(0)->childCount(), 3);
  const std::unique_ptr<QMimeData> notice(fields_mime_data({find_field(u"<IPTC_Description_Copyright_Notice>")}));
  drop(notice.get(), 1);
  EXPECT_EQ(rows(), QStringList({"Date", "Copyright Notice", "“Trip”"}));
  drop(notice.get(), 7);
  press("maskClear");
  table->selectRow(2);
  press("maskMoveUp");
  table->moved(0, 3);
  EXPECT_EQ(rows(), QStringList({"“Trip”", "Copyright Notice", "Date"}));
  EXPECT_EQ(table->currentRow(), 2);
  picture(editor.get(), "mask_editor");
  QTest::keyClick(editor->findChild<QLineEdit*>("maskSearch"), Qt::Key_Return);
  QTest::keyClick(outline, Qt::Key_Return);
  EXPECT_TRUE(editor->isVisible());

  press("applyMask");
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(values().photoRenamingMask,
            u"<Trip><IPTC_Description_Copyright_Notice><IPTC_Description_Copyright_Status><EXIF_Date>");
}

TEST_F(MaskEditorTest, CancelLeavesTheMaskAndTheSearchSpeaksTheLanguageOfTheWindow) {
  set_language(*find_language("de"));
  open();
  double_click("Kameramodell");
  picture(editor.get(), "mask_editor_german");
  QTest::keyClicks(editor->findChild<QLineEdit*>("maskSearch"), "dringlich");
  EXPECT_EQ(outline->topLevelItemCount(), 1);
  QTest::keyClick(editor.get(), Qt::Key_Escape);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_TRUE(values().photoMetaDataList.empty());
}

}  // namespace
}  // namespace brindle::test
