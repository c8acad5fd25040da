#pragma once

// The core's texts and paths as the toolkit's, and back. File names never pass through the toolkit's own conversions,
// which lose bytes that are not UTF-8.

#include <QList>
#include <QString>
#include <QUrl>
#include <string>
#include <string_view>
#include <vector>

class QLabel;
class QString;
class QWidget;

namespace brindle {

inline QString qt_text(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}
inline QString qt_text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
inline std::u16string utf16(const QString& text) {
  return text.toStdU16String();
}
inline std::string utf8(const QString& text) {
  return text.toStdString();
}

/// The text of a key of the string table.
QString localized_text(std::string_view key);
/// The same for what is reached by Alt and a letter: buttons, labels of fields, menus. "&" stands before the letter.
QString text_with_mnemonic(std::string_view key);

/// A path or a name (bytes) as text. Every byte string comes back exactly through path_bytes.
QString path_text(std::string_view bytes);
std::string path_bytes(const QString& text);

/// A name, a path or another text of anybody's as texts/shown_text.h has it on one line. Not to be edited or copied.
QString in_one_line(const QString& name);
/// The same of a message of several lines, UTF-8.
QString in_lines(std::string_view utf8);
/// The same for a window's title, where the toolkit takes "[*]" for its own sign.
QString title_text(std::string_view utf8);

/// A path as shown to people: ":" of the disk is "/" in its last component's name.
QString display_path_text(std::string_view bytes);

/// The bytes of the path of a "file:" address; "" for any other.
std::string path_bytes(const QUrl& url);
std::vector<std::string> paths_of(const QList<QUrl>& urls);

// The toolkit takes a text that looks like markup for markup, and opens the files that it names. Texts here hold names
// of anybody's files, so all are plain text: labels are made here, and of those that the toolkit makes (tooltips, its
// own dialogs) none is left to guess. Main thread.

/// A label that never takes its text for markup: the only way to make one.
QLabel* plain_label(QWidget* parent = nullptr);
QLabel* plain_label(const QString& text, QWidget* parent = nullptr);

/// The same of all labels in a dialog of the toolkit's that exist already, before they are told any text.
void make_plain(QWidget& dialog);

/// From now on every label of the program, tooltips among them, is plain at the latest when it is about to be shown.
void show_plain_text_only();

}  // namespace brindle
