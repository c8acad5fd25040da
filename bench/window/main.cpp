// responsiveness [--files N] [--folder FOLDER] [--where]: what a person does to a list of N files (1,000,000) in the
// real window, and for how long the window stood still meanwhile. The files are made in FOLDER when they are not there.
// --where says what the main thread was at in gaps of more than 30 ms.

#include <sys/resource.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/list_controller.h"
#include "app/order_controller.h"
#include "app/preview_controller.h"
#include "app/window_model.h"
#include "texts/string_table.h"
#include "window/file_table_model.h"
#include "window/sample_folder.h"
#include "window/stage.h"
#include "window/text.h"

namespace brindle::bench {
namespace {

struct Options {
  std::size_t files = 1'000'000;
  std::string folder = "/dev/shm/brindle-responsiveness";
  bool where = false;
};

Options read_options(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--where") options.where = true;
    if (argument == "--files" && i + 1 < argc) options.files = std::stoul(argv[++i]);
    if (argument == "--folder" && i + 1 < argc) options.folder = argv[++i];
  }
  return options;
}

double peak_megabytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

class Session {
 public:
  explicit Session(const Options& options) : options_(options), middle_(static_cast<int>(options.files / 2)) {}
  void run();

 private:
  void run(const std::string& name, const std::function<void()>& acts, const std::function<bool()>& done = {}) {
    show(stage_.phase(name, acts, done));
  }
  void show(const Figure& figure);
  void trigger(const char* command) const { stage_.find<QAction>(command)->trigger(); }
  void key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&stage_.table(), static_cast<Qt::Key>(key), modifiers);
  }
  int row_count() { return stage_.table().model()->rowCount(); }
  QString cell(int row, int column) { return stage_.table().model()->index(row, column).data().toString(); }
  void load() {
    run(
        "load by a drop", [this] { stage_.drop({options_.folder}); }, [this] { return row_count() > 0; });
  }
  void go_to(int row) { stage_.table().setCurrentIndex(stage_.table().model()->index(row, name_column)); }
  void click_header(int column);
  void type(const std::string& name, const QString& text, int shown_row);
  void set_live_limit(bool all);

  void scroll();
  void sort();
  void select();
  void move();
  void preview_names();
  void rename_and_undo();
  void remove_and_clear();

  Options options_;
  int middle_;
  Stage stage_;
};

void Session::show(const Figure& figure) {
  std::printf("%-44s %9.0f %9.1f %9.1f %9zu\n", figure.phase.c_str(), figure.milliseconds, figure.gap.milliseconds,
              figure.gap.at_work, stage_.table().selected_count());
  if (!options_.where) return;
  for (const std::string& call : figure.gap.where) std::printf("      %.150s\n", call.c_str());
}

void Session::click_header(int column) {
  QHeaderView* header = stage_.table().horizontalHeader();
  const QPoint place(header->sectionViewportPosition(column) + 20, header->height() / 2);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

void Session::scroll() {
  run("to the end", [this] { key(Qt::Key_End, Qt::ControlModifier); });
  run("to the start", [this] { key(Qt::Key_Home, Qt::ControlModifier); });
  run(
      "100 pages down",
      [this] {
        for (int i = 0; i < 100; ++i) QTimer::singleShot(i * 20, &stage_, [this] { key(Qt::Key_PageDown); });
      },
      [this] { return stage_.table().currentIndex().row() > row_count() / 1000; });
  QScrollBar* bar = stage_.table().verticalScrollBar();
  run(
      "100 places by the scroll bar",
      [this, bar] {
        for (int i = 0; i < 100; ++i)
          QTimer::singleShot(i * 20, &stage_, [bar, i] { bar->setValue(bar->maximum() / 99 * i); });
      },
      [bar] { return bar->value() >= bar->maximum() / 99 * 99; });
  go_to(0);
}

void Session::sort() {
  run("sort by name", [this] { click_header(name_column); });
  run("sort by name, downwards", [this] { click_header(name_column); });
  run("sort by location", [this] { click_header(3); });
  run("sort by new name", [this] { click_header(new_name_column); });
}

void Session::select() {
  run("select all", [this] { trigger("selectAll"); });
  run("sort all selected", [this] { click_header(name_column); });
  go_to(0);
  run("one row alone", [this] { go_to(1); });
  go_to(middle_);
  run("select half the list by Shift+End", [this] { key(Qt::Key_End, Qt::ShiftModifier); });
  run("sort with half selected", [this] { click_header(3); });
  run("page down with that selected", [this] {
    for (int i = 0; i < 20; ++i) stage_.table().verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepAdd);
  });
  std::vector<std::size_t> scattered;
  for (std::size_t row = 0; row < options_.files; row += 10) scattered.push_back(row);
  run("select every tenth row", [this, &scattered] { stage_.table().select_rows(RowSet(scattered)); });
  run("Ctrl+click one more", [this] {
    QTest::mouseClick(stage_.table().viewport(), Qt::LeftButton, Qt::ControlModifier, {200, 100});
  });
}

void Session::move() {
  go_to(middle_);
  run("one row up", [this] { key(Qt::Key_Up, Qt::ControlModifier); });
  key(Qt::Key_End, Qt::ShiftModifier);
  run("half the list up", [this] { key(Qt::Key_Up, Qt::ControlModifier); });
  run("half the list to the start",
      [this] { stage_.app().order().move_rows(RowSet(stage_.table().selected_rows()), 0); });
  go_to(0);
}

void Session::set_live_limit(bool all) {
  LivePreviewPreferences preferences = stage_.app().model().live_preview();
  preferences.isLivePreviewEnabled = true;
  preferences.isLivePreviewAllFiles = all;
  stage_.app().preview().setLivePreviewPreferences(preferences);
}

void Session::type(const std::string& name, const QString& text, int shown_row) {
  auto* field = stage_.find<QLineEdit>("insertDeleteInsert");
  field->setFocus();
  run(
      name, [field, text] { QTest::keyClicks(field, text); },
      [this, field, shown_row] {
        return stage_.app().model().state().rename_enabled &&
               cell(shown_row, new_name_column).startsWith(field->text());
      });
}

void Session::preview_names() {
  stage_.find<QAction>("method1")->trigger();
  type("live preview of 2,500 (first)", QStringLiteral("a"), 0);
  for (int i = 0; i < 3; ++i) type("live preview of 2,500", QStringLiteral("b"), 2400);
  set_live_limit(true);
  type("live preview of all", QStringLiteral("c"), row_count() - 1);
  set_live_limit(false);
  run("full preview", [this] { trigger("preview"); });
  go_to(10);
  run("one name by hand", [this] {
    trigger("editName");
    auto* editor = stage_.find<QLineEdit>("newNameEditor");
    editor->setText(QStringLiteral("by hand.txt"));
    QTest::keyClick(editor, Qt::Key_Return);
  });
  run("sort by new name", [this] { click_header(new_name_column); });
}

void Session::rename_and_undo() {
  run("rename on the disk", [this] { trigger("rename"); });
  run("undo (its sheet, and closing it)", [this] {
    auto* timer = new QTimer(&stage_);
    timer->callOnTimeout([this, timer] {
      auto* sheet = stage_.find("UndoSheet");
      auto* button = sheet ? sheet->findChild<QPushButton*>(QStringLiteral("undoRenaming")) : nullptr;
      if (button == nullptr || !stage_.is_idle()) return;
      if (timer->property("pressed").toBool()) {
        timer->deleteLater();
        return QTest::keyClick(sheet, Qt::Key_Escape);
      }
      timer->setProperty("pressed", true);
      button->click();
    });
    timer->start(20);
    trigger("undo");
  });
}

void Session::remove_and_clear() {
  go_to(middle_);
  key(Qt::Key_End, Qt::ShiftModifier);
  const int before = row_count();
  run(
      "remove half the list", [this] { trigger("remove"); }, [this, before] { return row_count() < before; });
  run("load what is there already once more", [this] { stage_.drop({options_.folder}); });
  run(
      "clear the list", [this] { trigger("clear"); }, [this] { return row_count() == 0; });
  load();
}

void Session::run() {
  std::printf("%-44s %9s %9s %9s %9s\n", "", "ms", "gap, ms", "at work", "selected");
  stage_.app().list().setIncludeSubFolders(true);
  load();
  std::printf("%-44s %9d\n", "  (rows)", row_count());
  scroll();
  sort();
  select();
  move();
  preview_names();
  rename_and_undo();
  remove_and_clear();
  QElapsedTimer clock;
  clock.start();
  stage_.close();
  std::printf("%-44s %9lld\n", "quit", static_cast<long long>(clock.elapsed()));
  std::printf("%-44s %9.0f\n", "peak memory, MB", peak_megabytes());
}

int run(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const Options options = read_options(argc, argv);
  const std::string home =
      std::filesystem::temp_directory_path() / ("brindle-responsiveness-" + std::to_string(getpid()));
  for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    ::setenv(name, (home + "/" + name).c_str(), 1);
  if (!make_sample_folder(options.folder, options.files)) {
    std::fprintf(stderr, "the files cannot be made in %s\n", options.folder.c_str());
    return 1;
  }
  const QApplication toolkit(argc, argv);
  Session(options).run();
  std::error_code error;
  std::filesystem::remove_all(home, error);
  return 0;
}

}  // namespace
}  // namespace brindle::bench

int main(int argc, char** argv) {
  return brindle::bench::run(argc, argv);
}
