#pragma once

// The widget of a method's panel, which puts its columns one below the other where there is no room beside. Main
// thread.

#include <QWidget>

class QBoxLayout;

namespace brindle {

class PanelBody final : public QWidget {
 public:
  using QWidget::QWidget;

  /// The layout of the columns, in the panel's own layout.
  void set_columns(QBoxLayout* columns);

 protected:
  bool event(QEvent* event) override;
  /// What the panel lies in tells how much room there is: the panel itself is never narrower than what it shows.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void fit();
  int width_side_by_side() const;

  QBoxLayout* columns_ = nullptr;
};

}  // namespace brindle
