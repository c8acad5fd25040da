#include "window/desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QMimeData>
#include <QProcess>
#include <QToolTip>
#include <QUrl>
#include <QWidget>

#include "window/text.h"

namespace brindle {
namespace {

// What file managers put on the clipboard: "copy" or "cut", then an address a line.
constexpr auto copied_files_type = "x-special/gnome-copied-files";

QList<QUrl> urls_of_lines(const QByteArray& lines) {
  QList<QUrl> urls;
  for (const QByteArray& line : lines.split('\n')) {
    if (line.startsWith("file:")) urls << QUrl::fromEncoded(line.trimmed());
  }
  return urls;
}

}  // namespace

void QtDesktop::show_tooltip(TooltipAnchor anchor, std::string_view /*key*/, const std::string& text) {
  QWidget* widget = window_ ? window_->tooltip_anchor(anchor) : nullptr;
  if (widget == nullptr) return;
  const QPoint place = widget->mapToGlobal(QPoint(widget->width() / 2, widget->height() / 2));
  QToolTip::showText(place, in_lines(text), widget, {}, 6000);
}

void QtDesktop::hide_tooltip() {
  QToolTip::hideText();
}

void QtDesktop::end_editing() {
  if (window_) window_->end_editing();
}

void QtDesktop::focus_setting(std::string_view key) {
  if (window_) window_->focus_setting(key);
}

void QtDesktop::focus_list() {
  if (window_) window_->focus_list();
}

void QtDesktop::bring_to_front() {
  if (window_) window_->bring_to_front();
}

void QtDesktop::beep() {
  QApplication::beep();
}

bool QtDesktop::open_with_default_application(const std::string& path) {
  // An address made of encoded bytes, so that a name that is no UTF-8 is found too.
  const QByteArray encoded = QByteArray::fromStdString(path).toPercentEncoding("/");
  return QDesktopServices::openUrl(QUrl::fromEncoded("file://" + encoded));
}

void QtDesktop::show_help(std::string_view page) {
  if (window_) window_->show_help(page);
}

std::vector<std::string> QtDesktop::files_on_clipboard() {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  if (data == nullptr) return {};
  std::vector<std::string> paths = paths_of(urls_of_lines(data->data(copied_files_type)));
  return paths.empty() ? paths_of(data->urls()) : paths;
}

std::optional<std::u16string> QtDesktop::ask_custom_tag() {
  return window_ ? window_->ask_custom_tag() : std::nullopt;
}

void QtDesktop::quit() {
  // A start that failed may be before the loop runs, which would swallow a plain quit().
  QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
}

}  // namespace brindle
