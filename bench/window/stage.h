#pragma once

// The real main window over the real controller and worker, for a program that drives and watches it.

#include <QElapsedTimer>
#include <QObject>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/window_model.h"
#include "support/driven_window.h"
#include "window/file_table_view.h"
#include "window/watchdog.h"

namespace brindle::bench {

/// Answers every question with its first button.
class Consent final : public AlertPort {
 public:
  std::size_t show(const Alert& /*alert*/) override { return 0; }
};

class NoChooser final : public ChooserPort {
 public:
  std::vector<std::string> choose(const OpenRequest& /*request*/) override { return {}; }
  std::optional<std::string> choose(const SaveRequest& /*request*/) override { return {}; }
};

/// What a phase took.
struct Figure {
  std::string phase;
  double milliseconds = 0;  ///< until the list that it led to was painted
  Gap gap;
};

class Stage final : public QObject {
 public:
  Stage();
  ~Stage() override;

  /// Runs `acts` under the watchdog, until no job runs, `done` says so, and what changed has been painted.
  Figure phase(const std::string& name, const std::function<void()>& acts, const std::function<bool()>& done = {});

  BrindleAppController& app() { return *driven_.controller; }
  MainWindow& window() { return *driven_.window; }
  FileTableView& table() const { return *table_; }
  template <class Widget = QWidget>
  Widget* find(const char* name) const {
    return driven_.child<Widget>(name);
  }
  void drop(const std::vector<std::string>& paths) const { driven_.drop(find("listPanel"), paths); }
  bool is_idle() const { return driven_.is_idle(); }
  /// Closes the window as a person does, and frees all.
  void close();

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  Watchdog watchdog_;
  Consent alerts_;
  NoChooser chooser_;
  test::DrivenWindow driven_{alerts_, chooser_};
  FileTableView* table_ = nullptr;
  QElapsedTimer clock_;
  double last_paint_ = 0;  // on clock_, ms
};

}  // namespace brindle::bench
