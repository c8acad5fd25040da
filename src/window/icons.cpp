#include "window/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QMimeDatabase>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <memory>
#include <string>
#include <unordered_map>

#include "list/file_list.h"
#include "window/text.h"

namespace brindle {
namespace {

QString file_of(std::string_view name) {
  return QStringLiteral(":/brindle/icons/%1.svg").arg(qt_text(name));
}

QSvgRenderer& drawing(const QString& file) {
  static std::unordered_map<std::string, std::unique_ptr<QSvgRenderer>> drawings;
  auto& found = drawings[file.toStdString()];
  if (!found) found = std::make_unique<QSvgRenderer>(file);
  return *found;
}

QColor ink(QIcon::Mode mode) {
  const QPalette palette = QApplication::palette();
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::WindowText);
  if (mode == QIcon::Selected) return palette.color(QPalette::HighlightedText);
  return palette.color(QPalette::WindowText);
}

QPixmap drawn(const QString& file, QSize pixels, const QColor& colour) {
  const QString key = QStringLiteral("%1 %2 %3").arg(file).arg(pixels.width()).arg(colour.rgba());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(pixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  drawing(file).render(&painter, QRectF(QPointF(0, 0), QSizeF(pixels)));
  if (colour.isValid()) {
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), colour);
  }
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

class LineIconEngine final : public QIconEngine {
 public:
  LineIconEngine(QString on, QString off) : on_(std::move(on)), off_(std::move(off)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    QPixmap pixmap = drawn(state == QIcon::On ? on_ : off_, size, ink(mode));
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
  }
  QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override { return size; }
  QIconEngine* clone() const override { return new LineIconEngine(*this); }

 private:
  QString on_;
  QString off_;
};

QString kind_by_content_type(const QString& type) {
  if (type.startsWith(QLatin1String("image/"))) return file_of("picture");
  if (type.startsWith(QLatin1String("audio/"))) return file_of("audio");
  return file_of("file");
}

// Extensions are few, and names many.
QString file_icon(std::string_view name) {
  static std::unordered_map<std::string, QString> icons;
  const std::size_t dot = name.rfind('.');
  const std::string extension(dot == std::string_view::npos ? std::string_view() : name.substr(dot));
  if (extension.size() > 16) return file_of("file");
  const auto known = icons.find(extension);
  if (known != icons.end()) return known->second;
  static const QMimeDatabase database;
  const QString type =
      database.mimeTypeForFile(QStringLiteral("x") + path_text(extension), QMimeDatabase::MatchExtension).name();
  if (icons.size() > 4096) icons.clear();
  return icons.emplace(extension, kind_by_content_type(type)).first->second;
}

bool is_error(ItemStatus status) {
  return status > ItemStatus::no_new_name && status < ItemStatus::renaming_ok;
}

QString kind_icon(const ItemRecord& item) {
  // An item that stays as it is shows the generic folder, unless it is a file.
  if (item.type() == ItemType::alias && !is_error(item.status)) return file_of("link");
  return item.type() == ItemType::file ? file_icon(item.name()) : file_of("folder");
}

QPixmap item_pixmap(const QString& kind, const QString& overlay, int pixels, const QColor& colour) {
  if (overlay.isEmpty()) return drawn(kind, {pixels, pixels}, colour);
  const QString key = QStringLiteral("item %1 %2 %3 %4").arg(kind, overlay).arg(pixels).arg(colour.rgba());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = drawn(kind, {pixels, pixels}, colour);
  const int part = pixels * 5 / 8;
  QPainter painter(&pixmap);
  painter.drawPixmap(pixels - part, pixels - part, drawn(overlay, {part, part}, {}));
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace

QIcon icon(std::string_view name) {
  return switch_icon(name, name);
}

QIcon switch_icon(std::string_view on, std::string_view off) {
  if (!QFile::exists(file_of(on)) || !QFile::exists(file_of(off))) return {};
  return QIcon(new LineIconEngine(file_of(on), file_of(off)));
}

QIcon application_icon() {
  return QIcon(QStringLiteral(":/brindle/brindle.svg"));
}

QIcon item_icon(const ItemRecord& item, int side, qreal device_pixel_ratio) {
  const QString kind = kind_icon(item);
  const bool error = is_error(item.status);
  const bool overlaid = error || item.status == ItemStatus::renaming_ok;
  const QString overlay = overlaid ? file_of(error ? "Error" : "Success") : QString();
  const int pixels = qRound(side * device_pixel_ratio);
  QIcon icon;
  for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
    QPixmap pixmap = item_pixmap(kind, overlay, pixels, ink(mode));
    pixmap.setDevicePixelRatio(device_pixel_ratio);
    icon.addPixmap(pixmap, mode);
  }
  return icon;
}

}  // namespace brindle
