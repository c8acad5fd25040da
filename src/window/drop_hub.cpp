#include "window/drop_hub.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "app/brindle_app_controller.h"
#include "app/preferences_controller.h"
#include "window/keyboard.h"
#include "window/text.h"
#include "window/url_drops.h"

namespace brindle {
namespace {

constexpr int side = 84;
// From the edges of the screen, when it has no place yet: over the empty end of the window's toolbar where that covers
// the screen, for the buttons that matter are at its foot.
constexpr int right_margin = 16;
constexpr int top_margin = 40;

QPoint on_screen(QPoint place) {
  const QScreen* screen = QGuiApplication::screenAt(place + QPoint(side / 2, side / 2));
  if (screen != nullptr) return place;
  const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
  return {area.right() - side - right_margin, area.top() + top_margin};
}

// A sheet of paper with a corner turned down, into which an arrow points.
void draw_sign(QPainter& painter, const QColor& color) {
  painter.setPen(QPen(color, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  QPainterPath tray;
  tray.moveTo(24, 46);
  tray.lineTo(24, 58);
  tray.quadTo(24, 62, 28, 62);
  tray.lineTo(56, 62);
  tray.quadTo(60, 62, 60, 58);
  tray.lineTo(60, 46);
  painter.drawPath(tray);
  painter.drawLine(QPointF(42, 20), QPointF(42, 49));
  painter.drawPolyline(QPolygonF({{32, 39}, {42, 49}, {52, 39}}));
}

}  // namespace

DropHub::DropHub(BrindleAppController& app, Dropped dropped)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      model_(app.model()),
      preferences_(app.preferences()),
      dropped_(std::move(dropped)) {
  setObjectName(QStringLiteral("drop_hub"));
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  setAcceptDrops(true);
  setFixedSize(side, side);
  setWindowTitle(localized_text("HUBTITLE"));
  setAccessibleName(localized_text("HUBTITLE"));
  setToolTip(localized_text("HUBHINT"));
  busy_.setStartValue(0.0);
  busy_.setEndValue(360.0);
  busy_.setDuration(1400);
  busy_.setLoopCount(-1);
  connect(&busy_, &QVariantAnimation::valueChanged, this, [this] { update(); });
  restore_position();
  observer_ = model_.add_observer([this](ChangedSet changed) { show_change(changed); });
  show_change(static_cast<ChangedSet>(~0U));
}

DropHub::~DropHub() {
  model_.remove_observer(observer_);
}

void DropHub::show_change(ChangedSet changed) {
  if (has(changed, Changed::preferences)) setVisible(model_.preferences().isShowHubIcon);
  if (!has(changed, Changed::state)) return;
  const bool executing = model_.state().isExecuting;
  if (executing == (busy_.state() == QAbstractAnimation::Running)) return;
  executing ? busy_.start() : busy_.stop();
  update();
}

void DropHub::restore_position() {
  const QStringList parts = qt_text(model_.user_defaults().text(user_default::hub_position, u"")).split(u',');
  bool has_x = false;
  bool has_y = false;
  const QPoint place(parts.value(0).toInt(&has_x), parts.value(1).toInt(&has_y));
  move(on_screen(has_x && has_y ? place : QPoint(-100000, -100000)));
}

void DropHub::keep_position() {
  model_.user_defaults().set(user_default::hub_position, QStringLiteral("%1,%2").arg(x()).arg(y()).toStdU16String());
}

void DropHub::set_highlighted(bool highlighted) {
  highlighted_ = highlighted;
  update();
}

void DropHub::hide_for_good() {
  Preferences preferences = model_.preferences();
  preferences.isShowHubIcon = false;
  preferences_.setPreferences(preferences);
}

void DropHub::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette colors = palette();
  QColor ground = highlighted_ ? colors.color(QPalette::Highlight) : colors.color(QPalette::Window);
  ground.setAlpha(highlighted_ ? 235 : 225);
  QColor line = colors.color(QPalette::WindowText);
  line.setAlpha(70);
  painter.setPen(QPen(line, 1));
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), 16, 16);
  draw_sign(painter, colors.color(highlighted_ ? QPalette::HighlightedText : QPalette::WindowText));
  if (busy_.state() != QAbstractAnimation::Running) return;
  painter.setPen(QPen(colors.color(QPalette::Highlight), 3, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(QRectF(rect()).adjusted(7, 7, -7, -7), static_cast<int>(-busy_.currentValue().toDouble() * 16),
                  70 * 16);
}

void DropHub::dragEnterEvent(QDragEnterEvent* event) {
  const bool is_busy = model_.state().is_busy();
  if (!holds_files(*event->mimeData()) || is_busy) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  set_highlighted(true);
}

void DropHub::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
  set_highlighted(false);
}

void DropHub::dropEvent(QDropEvent* event) {
  set_highlighted(false);
  event->setDropAction(Qt::CopyAction);
  event->accept();
  std::vector<std::string> paths = paths_of(event->mimeData()->urls());
  if (paths.empty()) return;
  // The sheet waits for an answer; the program that the files come from must not wait with it.
  QTimer::singleShot(0, this, [this, paths = std::move(paths)] { dropped_(paths); });
}

void DropHub::mousePressEvent(QMouseEvent* event) {
  grip_ = event->position().toPoint();
  moved_ = false;
}

void DropHub::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const QPoint to = event->globalPosition().toPoint() - grip_;
  if (!moved_ && (to - pos()).manhattanLength() < QApplication::startDragDistance()) return;
  moved_ = true;
  // Where programs may not place their windows the desktop moves this one itself.
  if (!QGuiApplication::platformName().startsWith(u"wayland") || !windowHandle()->startSystemMove()) move(to);
}

void DropHub::mouseReleaseEvent(QMouseEvent* /*event*/) {
  if (moved_) keep_position();
}

void DropHub::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
  model_.ports().desktop.bring_to_front();
}

void DropHub::keyPressEvent(QKeyEvent* event) {
  if (is_enter(*event) || event->key() == Qt::Key_Space) model_.ports().desktop.bring_to_front();
}

void DropHub::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu;
  menu.addAction(localized_text("HUBSHOWWINDOW"), this, [this] { model_.ports().desktop.bring_to_front(); });
  menu.addAction(localized_text("HUBHIDE"), this, [this] { hide_for_good(); });
  menu.exec(event->globalPos());
}

}  // namespace brindle
