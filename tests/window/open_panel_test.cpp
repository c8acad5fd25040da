#include "window/open_panel.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

#include "window/places.h"
#include "window_fixture.h"

namespace brindle::test {
namespace {

using Paths = std::vector<std::string>;

// What the panel chooses when `act` is done in it.
class PanelTest : public testing::Test {
 protected:
  void open(OpenRequest request) {
    memory.folder = disk.path();
    panel = std::make_unique<OpenPanel>(nullptr, request, memory);
    panel->show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return rows() > 0; }));
  }
  QTreeView& table() const { return *panel->findChild<QTreeView*>(QStringLiteral("panelTable")); }
  int rows() const { return table().model()->rowCount(); }
  void wait_for_rows() const {
    EXPECT_TRUE(QTest::qWaitFor([this] { return rows() > 0; }));
  }
  void wait_for_folder(const std::string& path) const {
    const auto* line = panel->findChild<QLineEdit*>(QStringLiteral("panelPath"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return line->text() == path_text(path); })) << path;
  }
  void press(Qt::Key key) const { QTest::keyClick(&table(), key); }
  void select(int row) const { table().setCurrentIndex(table().model()->index(row, 0)); }

  TempTree disk;
  OpenPanelMemory memory;
  std::unique_ptr<OpenPanel> panel;
};

TEST_F(PanelTest, ChoosesNamesThatAreNoUtf8AndLinksThatLeadNowhere) {
  disk.make({"plain.txt", "\xe9.txt", "fo\xffld/in.txt", ".hidden", "lost -> nowhere"});
  open({.title = "", .folder = "", .files = true, .folders = false, .multiple = true});
  ASSERT_EQ(rows(), 4);  // the folder first, and nothing hidden
  table().selectAll();
  press(Qt::Key_Return);
  EXPECT_THAT(panel->chosen(), testing::UnorderedElementsAre(disk / "plain.txt", disk / "\xe9.txt", disk / "lost"));

  open({.title = "", .folder = "", .files = true, .folders = false, .multiple = true});
  select(0);
  press(Qt::Key_Return);  // into the folder
  wait_for_folder(disk / "fo\xffld");
  select(0);
  press(Qt::Key_Return);
  EXPECT_EQ(panel->chosen(), Paths{disk / "fo\xffld/in.txt"});
}

TEST_F(PanelTest, ChoosesTheFolderShownWhenNoneIsSelectedAndNeverAFileForAFolder) {
  disk.make({"sub/file.txt"});
  open({.title = "", .folder = "", .files = false, .folders = true, .multiple = true});
  panel->go_to(disk / "sub");
  wait_for_folder(disk / "sub");
  EXPECT_EQ(rows(), 0);
  panel->findChild<QPushButton*>(QStringLiteral("panelChoose"))->click();
  EXPECT_EQ(panel->chosen(), Paths{disk / "sub"});
  EXPECT_EQ(memory.folder, disk / "sub");
}

TEST_F(PanelTest, BeginsAboveAFolderThatIsGoneAndStaysWhereItIsWhenAPathIsWrong) {
  disk.make({"here.jpg", "there.txt"});
  open({.title = "", .folder = disk / "gone/further", .files = true, .extensions = {"JPG"}});
  wait_for_folder(disk.path());
  EXPECT_EQ(rows(), 1);
  panel->go_to(disk / "not there");
  const auto* status = panel->findChild<QLabel*>(QStringLiteral("panelStatus"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return status->text().contains(QStringLiteral("not there")); }));
  EXPECT_EQ(rows(), 1);
}

TEST(Places, AreReadFromMountsAndBookmarks) {
  const auto mounts = mounted_places("proc /proc proc rw 0 0\n/dev/sdb1 /media/me/My\\040Disk vfat rw 0 0\n/dev/sdc");
  ASSERT_EQ(mounts.size(), 1U);
  EXPECT_EQ(mounts[0].path, "/media/me/My Disk");
  const auto marks = bookmarked_places("file:///a/b%E9 My title\nsftp://x/y\nfile:///c/d%20e\n\n");
  ASSERT_EQ(marks.size(), 2U);
  EXPECT_EQ(marks[0].path, "/a/b\xe9");
  EXPECT_EQ(marks[0].title, "My title");
  EXPECT_EQ(marks[1].title, "d e");
}

}  // namespace
}  // namespace brindle::test
