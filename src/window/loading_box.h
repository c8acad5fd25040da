#pragma once

#include <QWidget>

#include "app/window_state.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace brindle {

/// What a job does and how far it is, with a button that stops it. Main thread.
class LoadingBox final : public QWidget {
 public:
  explicit LoadingBox(QWidget* parent);

  void show_state(const WindowState& state);
  QPushButton* cancel_button() const { return cancel_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_path();

  QLabel* title_;
  QLabel* path_;
  QProgressBar* progress_;
  QLabel* count_;
  QPushButton* cancel_;
  QString full_path_;
};

}  // namespace brindle
