#include "window/window_style.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

#include "window/theme.h"

namespace brindle {
namespace {

// At least 3 to 1 on what lies on either side of it.
QColor outline_colour(const QPalette& palette) {
  return is_dark(palette) ? QColor(0x94, 0x94, 0x9a) : QColor(0x85, 0x85, 0x8b);
}

class WindowStyle final : public QProxyStyle {
 public:
  WindowStyle() : QProxyStyle(QStringLiteral("fusion")) {}

  using QProxyStyle::polish;
  void polish(QWidget* widget) override {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractItemView*>(widget) != nullptr) widget->installEventFilter(this);
  }
  using QProxyStyle::unpolish;
  void unpolish(QWidget* widget) override {
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool is_focused = option->state.testFlag(State_HasFocus);
    if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton) {
      // The style draws the ring of the keyboard itself.
      if (option->state.testFlag(State_Enabled) && !(is_focused && option->state.testFlag(State_KeyboardFocusChange)))
        draw_outline(*painter, *option, element == PE_IndicatorRadioButton, outline_colour(option->palette));
    } else if (element == PE_Frame && is_focused && qobject_cast<const QAbstractItemView*>(widget) != nullptr) {
      draw_outline(*painter, *option, false, option->palette.color(QPalette::Active, QPalette::Highlight));
    }
  }

 protected:
  // A frame is not drawn again by itself when the keyboard comes or goes.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) static_cast<QWidget*>(watched)->update();
    return QProxyStyle::eventFilter(watched, event);
  }

 private:
  static void draw_outline(QPainter& painter, const QStyleOption& option, bool round, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colour);
    painter.setBrush(Qt::NoBrush);
    const QRectF edge = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (round) {
      // As large as the style's own circle.
      const qreal side = qMin(edge.width(), edge.height()) - 1;
      painter.drawEllipse(QRectF(edge.center() - QPointF(side, side) / 2, QSizeF(side, side)));
    } else {
      painter.drawRoundedRect(edge, 1, 1);
    }
    painter.restore();
  }
};

}  // namespace

void use_window_style() {
  if (QApplication::style()->name() == QLatin1String("fusion")) QApplication::setStyle(new WindowStyle);
}

}  // namespace brindle
