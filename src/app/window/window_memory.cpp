#include "app/window/window_memory.h"

#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>
#include <QMainWindow>
#include <QSplitter>

namespace brindle {
namespace {

// Grows when columns or parts change: what an older window remembered is then forgotten.
constexpr qint32 version = 1;

}  // namespace

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
