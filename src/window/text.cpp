#include "window/text.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

#include "list/file_system_item.h"
#include "platform/file_name.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {

QString localized_text(std::string_view key) {
  return qt_text(localized(key));
}

QString text_with_mnemonic(std::string_view key) {
  return qt_text(localized_with_mnemonic(key));
}

QString path_text(std::string_view bytes) {
  return qt_text(decode_file_name(bytes));
}

std::string path_bytes(const QString& text) {
  std::string bytes;
  if (!encode_path(utf16(text), bytes)) bytes.clear();
  return bytes;
}

QString in_one_line(const QString& name) {
  const std::u16string_view text(reinterpret_cast<const char16_t*>(name.utf16()),
                                 static_cast<std::size_t>(name.size()));
  return is_plain_line(text) ? name : qt_text(std::u16string_view(in_one_line(text)));
}

QString in_lines(std::string_view utf8) {
  return qt_text(std::u16string_view(in_lines(utf16(qt_text(utf8)))));
}

QString title_text(std::string_view utf8) {
  return in_one_line(qt_text(utf8)).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
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

namespace {

class Plainness final : public QObject {
 public:
  using QObject::QObject;

 protected:
  // A tooltip's label is polished before it is told its text.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Polish) return false;
    auto* label = qobject_cast<QLabel*>(watched);
    if (label != nullptr && label->textFormat() != Qt::PlainText) label->setTextFormat(Qt::PlainText);
    return false;
  }
};

}  // namespace

QLabel* plain_label(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* plain_label(const QString& text, QWidget* parent) {
  QLabel* label = plain_label(parent);
  label->setText(text);
  return label;
}

void make_plain(QWidget& dialog) {
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
}

void show_plain_text_only() {
  qApp->installEventFilter(new Plainness(qApp));
}

}  // namespace brindle
