#pragma once

// Widgets side by side, and on the next line where there is no more room. Main thread.

#include <QLayout>
#include <memory>
#include <vector>

namespace brindle {

class FlowLayout final : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent);

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return lay_out({0, 0, width, 0}, false); }
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;

 private:
  /// The height that it takes; moves the items when it is to.
  int lay_out(const QRect& rect, bool moves) const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace brindle
