#pragma once

// The picture of a row, scaled, with its photo fields below. The file is read on a thread of its own, within bounds of
// size; what was asked for last is shown. Main thread.

#include <QFrame>
#include <QImage>
#include <cstdint>
#include <memory>
#include <string>

#include "app/window_model.h"

class QLabel;

namespace brindle {

class PictureReader;

class ImagePopup final : public QFrame {
 public:
  ImagePopup(WindowModel& model, QWidget* owner);
  ~ImagePopup() override;

  /// Shows a row of the list, beside the mouse or the row; says so where the file holds no picture.
  void show_row(std::size_t row);
  /// The same, but stays away where the name tells of no picture.
  void show_row_when_picture(std::size_t row);

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void show_image(const QImage& image);
  void show_fields(const PhotoFields& fields);
  void place();

  WindowModel& model_;
  QLabel* picture_;
  QLabel* name_;
  QLabel* fields_;
  std::unique_ptr<PictureReader> reader_;
  std::uint64_t request_ = 0;  // the last one; answers to others are stale
};

}  // namespace brindle
