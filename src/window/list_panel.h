#pragma once

// What stands in the place of the list: the file table, the loading box while a job has it, or the hint of an empty
// list. Main thread.

#include <QStackedWidget>
#include <cstdint>

#include "app/window_model.h"

class QTimer;

namespace brindle {

class BrindleAppController;
class ListController;
class Commands;
class FileTableView;
class LoadingBox;

class ListPanel final : public QStackedWidget {
 public:
  ListPanel(BrindleAppController& app, QWidget* parent);
  ~ListPanel() override;

  FileTableView& table() const { return *table_; }
  /// The buttons of the hint and of the loading box. Called once, when there are commands.
  void add_buttons(const Commands& commands);

 private:
  void show_job();
  void hold_still();
  void show_page();

  WindowModel& model_;
  ListController& list_commands_;
  FileTableView* table_;
  LoadingBox* loading_ = nullptr;
  QWidget* hint_;
  QTimer* loading_timer_;
  bool had_focus_ = false;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
