#include <QAbstractItemModelTester>
#include <QAction>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <thread>

#include "app/jobs_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preview_controller.h"
#include "window/file_table_model.h"
#include "window/name_delegate.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

struct NamePair {
  const char16_t* old_name;
  const char16_t* new_name;
  const char16_t* changed;
};

TEST(NameDifference, IsWhatLiesBetweenTheCommonEndsInWholeCharacters) {
  const NamePair pairs[] = {
      {u"a.txt", u"a.txt", u""},
      {u"photo.jpg", u"my photo.jpg", u"my "},
      {u"IMG_1.jpg", u"Beach 1.jpg", u"Beach "},
      {u"aa.txt", u"a.txt", u""},
      {u"e\u0301.txt", u"e\u0300.txt", u"e\u0300"},                   // one accent for another: the letter goes along
      {u"\U0001F468\u200D\U0001F469", u"\U0001F468", u"\U0001F468"},  // a joined character is one
      {u"", u"x", u"x"},
  };
  for (const auto& [old_name, new_name, changed] : pairs) {
    const QString text = QString::fromUtf16(new_name);
    const ChangedPart part = changed_part(QString::fromUtf16(old_name), text);
    EXPECT_EQ(text.mid(part.start, part.end - part.start), QString::fromUtf16(changed)) << text.toStdString();
  }
}

using FileTableTest = WindowTest;

TEST_F(FileTableTest, TheModelKeepsItsPromisesThroughEveryChange) {
  const QAbstractItemModelTester tester(table().model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  disk.make({"a.txt", "b.jpg", "sub/c.mp3"});
  for (int column = 0; column < table().model()->columnCount(); ++column) table().show_column(column, true);
  drop_on_list({disk / "a.txt", disk / "b.jpg", disk / "sub/c.mp3"});
  controller->options().select_tab(Method::prefix_suffix);
  controller->preview().actionPreview();
  wait_until_idle();
  controller->preview().set_new_name(0, u"b.jpg");
  table().sort_by(new_name_column);
  table().sort_by(8);
  wait_until_idle();
  controller->list().RemoveFiles({0, 2});
  EXPECT_EQ(table().model()->rowCount(), 1);
}

TEST_F(FileTableTest, CellsSayWhatTheListHolds) {
  disk.make({"sub/a:b.tar.gz", "sub/d/"});
  drop_on_list({disk / "sub/a:b.tar.gz"});
  const QStringList expected = {
      "", "a/b.tar.gz", "", qt_text(disk / "sub"), "a/b.tar", "gz", qt_text(disk / "sub/a:b.tar.gz"), "File"};
  for (int column = 0; column < expected.size(); ++column) EXPECT_EQ(cell(0, column), expected[column]) << column;

  // A name that cannot be says why.
  controller->preview().set_new_name(0, std::u16string(300, u'x'));
  EXPECT_EQ(cell(0, new_name_column), "No Changes");
  const QString tip = table().model()->index(0, new_name_column).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.contains("long")) << tip.toStdString();
}

TEST_F(FileTableTest, ThePictureOfARowIsShownScaledAndOtherFilesAreSaidToHaveNone) {
  disk.make({"b.txt"});
  ASSERT_TRUE(QImage(3000, 1000, QImage::Format_RGB32).save(qt_text(disk / "a.png")));
  drop_on_list({disk / "a.png", disk / "b.txt"});
  table().setFocus();
  table().setCurrentIndex(table().model()->index(0, name_column));
  QTest::keyClick(&table(), Qt::Key_Space);
  const auto* shown = find<QLabel>("popupPicture");
  EXPECT_TRUE(QTest::qWaitFor([shown] { return !shown->pixmap(Qt::ReturnByValue).isNull(); }));
  EXPECT_NEAR(shown->pixmap(Qt::ReturnByValue).width(), shown->pixmap(Qt::ReturnByValue).height() * 3, 3);
  EXPECT_EQ(find<QLabel>("popupFields")->text(), "3000 x 1000");
  QTest::keyClick(&table(), Qt::Key_Down);
  EXPECT_TRUE(QTest::qWaitFor([shown] { return shown->text() == qt_text(localized("PICTUREUNREADABLE")); }));
  QTest::keyClick(&table(), Qt::Key_Space);
  EXPECT_FALSE(find("imagePopup")->isVisible());
}

TEST_F(FileTableTest, LongWorkShowsItsBoxAndIsCancelledByItsButton) {
  disk.make({"a.txt"});
  drop_on_list({disk / "a.txt"});
  const auto until_cancelled = [](const JobControl& control) {
    while (!control.cancelled()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  };
  ASSERT_TRUE(controller->jobs().run_job({.job = Job::loading, .work = until_cancelled}));
  EXPECT_FALSE(find<QAction>("preview")->isEnabled());
  EXPECT_TRUE(QTest::qWaitFor([this] { return find("loadingBox")->isVisible(); }));
  picture("loading");
  QTest::mouseClick(find<QPushButton>("loadingCancel"), Qt::LeftButton);
  wait_until_idle();
  EXPECT_TRUE(table().isVisible());
  EXPECT_EQ(cell(0, name_column), "a.txt");
}

TEST_F(FileTableTest, ALongSelectionIsOneRange) {
  for (int i = 0; i < 3000; ++i) disk.make({"many/f" + std::to_string(i)});
  controller->list().setIncludeSubFolders(true);
  drop_on_list({disk / "many"});
  ASSERT_EQ(table().model()->rowCount(), 3000);
  table().selectAll();
  EXPECT_EQ(table().selectionModel()->selection().size(), 1);
  EXPECT_EQ(table().selected_count(), 3000U);
  table().sort_by(name_column);
  EXPECT_EQ(table().selected_count(), 3000U);
}

}  // namespace
}  // namespace brindle::test
