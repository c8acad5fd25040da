#pragma once

// What stands in the place of the list: the file table, the loading box while a job has it, or the hint of an empty
// list. Main thread.

#include <QStackedWidget>
#include <cstdint>

#include "app/brindle_app_controller.h"

class QTimer;

namespace brindle {

class Commands;
class FileTableView;
class LoadingBox;

class ListPanel final : public QStackedWidget {
 public:
  ListPanel(BrindleAppController& app, QWidget* parent);
  ~ListPanel() override;

  FileTableView& table() const { return *table_; }
  /// The doors that the hint and the loading box offer. Called once, when there are commands.
  void add_doors(const Commands& commands);

 private:
  void follow();
  void hold_still();
  void show_page();

  BrindleAppController& app_;
  FileTableView* table_;
  LoadingBox* loading_ = nullptr;
  QWidget* hint_;
  QTimer* loading_timer_;
  bool had_focus_ = false;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
