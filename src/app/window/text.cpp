#include "app/window/text.h"

#include <algorithm>

#include "app/string_table.h"
#include "pipeline/file_system_item.h"
#include "platform/file_name.h"

namespace brindle {

QString localized_text(std::string_view key) {
  return qt_text(localized(key));
}

QString path_text(std::string_view bytes) {
  return qt_text(decode_file_name(bytes));
}

std::string path_bytes(const QString& text) {
  std::string bytes;
  if (!encode_path(utf16(text), bytes)) bytes.clear();
  return bytes;
}

QString in_one_line(QString name) {
  const auto shown = [](char16_t unit) -> char16_t {
    if (unit < 0x20) return static_cast<char16_t>(0x2400 + unit);
    if (unit == 0x7F) return u'\u2421';
    if (unit == u'\u2028' || unit == u'\u2029') return u'\u2424';
    return unit >= 0xEF80 && unit <= 0xEFFF ? u'\uFFFD' : unit;
  };
  const auto stays = [&](QChar unit) { return shown(unit.unicode()) == unit.unicode(); };
  if (std::all_of(name.cbegin(), name.cend(), stays)) return name;
  for (QChar& unit : name) unit = QChar(shown(unit.unicode()));
  return name;
}

QString display_path_text(std::string_view bytes) {
  return qt_text(FileSystemItem::getDisplayFilePath(decode_file_name(bytes)));
}

std::string path_bytes(const QUrl& url) {
  if (!url.isLocalFile()) return {};
  // The encoded form still has every byte of the name; the decoded one has replaced those that are no UTF-8.
  const QByteArray encoded = url.path(QUrl::FullyEncoded).toUtf8();
  return QByteArray::fromPercentEncoding(encoded).toStdString();
}

std::vector<std::string> paths_of(const QList<QUrl>& urls) {
  std::vector<std::string> paths;
  paths.reserve(static_cast<std::size_t>(urls.size()));
  for (const QUrl& url : urls) {
    std::string path = path_bytes(url);
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace brindle
