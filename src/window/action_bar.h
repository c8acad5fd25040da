#pragma once

#include <QWidget>
#include <cstdint>

#include "app/window_model.h"

class QLabel;

namespace brindle {

class Commands;
class FileTableView;

/// The foot of the window: what the list holds, how long the last action took, and what could not be read; and the two
/// buttons that everything leads to. Main thread.
class ActionBar final : public QWidget {
 public:
  ActionBar(WindowModel& model, FileTableView& table, const Commands& commands, QWidget* parent);
  ~ActionBar() override;

 private:
  void show_state();

  WindowModel& model_;
  FileTableView& table_;
  QLabel* count_;
  QLabel* renameable_;
  QLabel* selected_;
  QLabel* time_;
  QLabel* unreadable_;  // its tooltip lists them
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
