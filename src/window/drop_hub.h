#pragma once

// The drop hub: a small window that stays on top, takes files and folders from anywhere on the screen, and asks what to
// make of them. It shows that the program is at work, and remembers where it was put.

#include <QPoint>
#include <QVariantAnimation>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/window_model.h"

namespace brindle {

class BrindleAppController;
class PreferencesController;

class DropHub final : public QWidget {
 public:
  using Dropped = std::function<void(std::vector<std::string> paths)>;

  /// Shown and hidden with the preference `isShowHubIcon`. `dropped` gets the paths of a drop (bytes).
  DropHub(BrindleAppController& app, Dropped dropped);
  ~DropHub() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void show_change(ChangedSet changed);
  void restore_position();
  void keep_position();
  void set_highlighted(bool highlighted);
  void hide_for_good();

  WindowModel& model_;
  PreferencesController& preferences_;
  Dropped dropped_;
  std::uint32_t observer_ = 0;
  QVariantAnimation busy_;
  QPoint grip_;  // where in the hub the mouse holds it
  bool moved_ = false;
  bool highlighted_ = false;
};

}  // namespace brindle
