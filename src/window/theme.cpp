#include "window/theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleOption>
#include <QToolTip>
#include <QWidget>

namespace brindle {
namespace {

void set_disabled(QPalette& palette, const QColor& text) {
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, text);
}

// The style's own, of more contrast: white on its selections, what is disabled and what explains could hardly be read.
QPalette light_palette() {
  QPalette palette = QApplication::style()->standardPalette();
  palette.setColor(QPalette::Highlight, QColor(0x1f, 0x6f, 0xb5));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(0x6b, 0x6b, 0x71));
  palette.setColor(QPalette::Link, QColor(0x14, 0x52, 0xb8));
  set_disabled(palette, QColor(0x85, 0x85, 0x8a));
  return palette;
}

QPalette dark_palette() {
  const QColor window(0x3a, 0x3a, 0x3f);
  const QColor base(0x22, 0x22, 0x26);
  const QColor text(0xec, 0xec, 0xee);
  QPalette palette(text, QColor(0x4a, 0x4a, 0x50), QColor(0x68, 0x68, 0x6e), QColor(0x18, 0x18, 0x1a),
                   QColor(0x30, 0x30, 0x34), text, Qt::white, base, window);
  palette.setColor(QPalette::AlternateBase, QColor(0x2a, 0x2a, 0x2e));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xb5));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(0x4a, 0x4a, 0x50));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, QColor(0xa4, 0xa4, 0xaa));
  palette.setColor(QPalette::Link, QColor(0x7d, 0xb4, 0xff));
  set_disabled(palette, QColor(0x98, 0x98, 0x9e));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x45, 0x45, 0x4a));
  return palette;
}

// What the desktop portal says: 1 is dark, 2 light, 0 no preference.
int portal_colour_scheme() {
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  call << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  call.setAutoStartService(false);
  const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 300);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return 0;
  QVariant value = reply.arguments().constFirst();
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toInt();
}

}  // namespace

QColor problem_colour(const QPalette& palette) {
  return is_dark(palette) ? QColor(0xff, 0x8a, 0x80) : QColor(0xb7, 0x1c, 0x1c);
}

QColor status_colour(ItemStatus status, const QPalette& palette) {
  const bool dark = is_dark(palette);
  if (status == ItemStatus::renaming_ok) return dark ? QColor(0x7d, 0xb4, 0xff) : QColor(0x14, 0x52, 0xb8);
  if (is_terminal(status)) return problem_colour(palette);
  return palette.color(QPalette::Active, QPalette::Text);
}

QColor quiet_colour(const QPalette& palette) {
  return is_dark(palette) ? QColor(0xa8, 0xa8, 0xae) : QColor(0x5c, 0x5c, 0x62);
}

QColor changed_ground(const QPalette& palette) {
  return is_dark(palette) ? QColor(0x2e, 0x55, 0x3c) : QColor(0xd3, 0xee, 0xda);
}

bool is_dark(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Base).lightness() < 128;
}

void follow_desktop_theme() {
  const QPalette standard = QApplication::style()->standardPalette();
  const bool desktop_has_colours = QApplication::palette().highlight() != standard.highlight();
  use_window_style();
  if (is_dark(QApplication::palette())) return;
  if (const bool dark = portal_colour_scheme() == 1; dark || !desktop_has_colours) use_palette(dark);
}

void use_palette(bool dark) {
  const QPalette palette = dark ? dark_palette() : light_palette();
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

int spacing(const QWidget& widget) {
  return widget.fontMetrics().height() / 2;
}

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
