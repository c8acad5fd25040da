#include "window/window_memory.h"

#include <QDataStream>
#include <QEvent>
#include <QHeaderView>
#include <QIODevice>
#include <QMainWindow>
#include <QScreen>
#include <QSplitter>

#include "window/text.h"

namespace brindle {
namespace {

// Grows when columns or parts change: what an older window remembered is then forgotten.
constexpr qint32 version = 1;

// Tells the user defaults of a sheet's size when it is closed.
class SizeKeeper final : public QObject {
 public:
  SizeKeeper(QWidget& sheet, UserDefaults& defaults)
      : QObject(&sheet), defaults_(defaults), key_(std::string(user_default::sheet_size) + utf8(sheet.objectName())) {
    const QStringList parts = qt_text(defaults_.text(key_, u"")).split(u',');
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    if (!size.isEmpty()) sheet.resize(size.boundedTo(sheet.screen()->availableSize()));
    sheet.installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
      const QSize size = static_cast<QWidget*>(watched)->size();
      defaults_.set(key_, QStringLiteral("%1,%2").arg(size.width()).arg(size.height()).toStdU16String());
    }
    return false;
  }

 private:
  UserDefaults& defaults_;
  std::string key_;
};

}  // namespace

void keep_size(QWidget& sheet, UserDefaults& defaults) {
  new SizeKeeper(sheet, defaults);  // goes with the sheet
}

void remember_window(const WindowParts& parts, UserDefaults& defaults) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(QDataStream::Qt_6_0);
  stream << version << parts.window.saveGeometry() << parts.window.saveState(version) << parts.rows.saveState()
         << parts.methods.saveState() << parts.columns.saveState();
  defaults.set(user_default::window_state, PropertyValue(PropertyValue::Data(bytes.begin(), bytes.end())));
}

bool restore_window(const WindowParts& parts, UserDefaults& defaults) {
  const PropertyValue* value = defaults.find(user_default::window_state);
  const auto* data = value ? value->get_if<PropertyValue::Data>() : nullptr;
  if (data == nullptr) return false;
  const QByteArray bytes(reinterpret_cast<const char*>(data->data()), static_cast<qsizetype>(data->size()));
  QDataStream stream(bytes);
  stream.setVersion(QDataStream::Qt_6_0);
  qint32 written_by = 0;
  QByteArray geometry;
  QByteArray docks;
  QByteArray rows;
  QByteArray methods;
  QByteArray columns;
  stream >> written_by >> geometry >> docks >> rows >> methods >> columns;
  if (stream.status() != QDataStream::Ok || written_by != version) return false;
  parts.window.restoreGeometry(geometry);
  parts.window.restoreState(docks, version);
  parts.rows.restoreState(rows);
  parts.methods.restoreState(methods);
  parts.columns.restoreState(columns);
  return true;
}

}  // namespace brindle
