#include "app/window/dialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <optional>
#include <utility>
#include <vector>

#include "app/document_name.h"
#include "app/string_table.h"
#include "app/window/text.h"
#include "platform/file_name.h"

namespace brindle {
namespace {

QMessageBox::Icon icon_of(AlertStyle style) {
  switch (style) {
    case AlertStyle::informational:
      return QMessageBox::Information;
    case AlertStyle::critical:
      return QMessageBox::Critical;
    case AlertStyle::warning:
      break;
  }
  return QMessageBox::Warning;
}

// A line of some length, however short the words are; and a path is broken behind a folder, not led off the screen.
void set_message(QMessageBox& box, QString message) {
  message.replace(u'/', QStringLiteral("/\u200B"));
  box.setInformativeText(message.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  const int width = box.fontMetrics().averageCharWidth() * 54;
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// The name as it must end; none when the file that is then meant is not to be replaced.
std::optional<std::string> with_extension(const SaveRequest& request, std::string path, AlertPort& alerts) {
  if (request.extension.empty() || request.other_extensions || has_extension(path, request.extension)) return path;
  path.append(".").append(request.extension);
  if (!QFileInfo::exists(path_text(path))) return path;  // the dialog has asked for the name that was typed
  Alert alert;
  alert.message_key = "FILEOVERWRITECONFIRM";
  alert.title = request.title;
  alert.message = localized_format(alert.message_key, to_utf8(decode_file_name(path.substr(path.rfind('/') + 1))));
  alert.buttons = {"YES", "NO"};
  return alerts.show(alert) == 0 ? std::optional(path) : std::nullopt;
}

std::vector<std::string> run(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) return {};
  return paths_of(dialog.selectedUrls());
}

}  // namespace

std::size_t QtAlerts::show(const Alert& alert) {
  QMessageBox box(icon_of(alert.style), qt_text(alert.title), {}, QMessageBox::NoButton, parent_());
  // A title that the window manager may hide is said in the box as well.
  box.setText(QStringLiteral("<b>%1</b>").arg(qt_text(alert.title).toHtmlEscaped()));
  box.setTextFormat(Qt::RichText);
  QString message = qt_text(alert.message);
  if (!alert.informative_text.empty()) message += QStringLiteral("\n\n") + qt_text(alert.informative_text);
  set_message(box, std::move(message));
  std::vector<QPushButton*> buttons;
  std::vector<std::string_view> keys = alert.buttons;
  if (keys.empty()) keys.emplace_back("OK");
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const auto role = i == 0 ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
    buttons.push_back(box.addButton(localized_text(keys[i]), role));
  }
  box.setDefaultButton(buttons.front());
  box.setEscapeButton(buttons.back());
  box.exec();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (box.clickedButton() == buttons[i]) return i;
  }
  return buttons.size() - 1;
}

std::vector<std::string> QtChooser::choose(const OpenRequest& request) {
  if (opening) opening(memory_);
  OpenPanel panel(parent_(), request, memory_);
  if (panel.exec() != QDialog::Accepted) return {};
  if (opened) opened(memory_);
  return panel.chosen();
}

std::optional<std::string> QtChooser::choose(const SaveRequest& request) {
  QFileDialog dialog(parent_(), qt_text(request.title), path_text(request.folder));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  if (!request.extension.empty()) {
    QStringList filters = {QStringLiteral("*.") + qt_text(request.extension)};
    if (request.other_extensions) filters << QStringLiteral("*");
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(qt_text(request.extension));
  }
  if (!request.name.empty()) dialog.selectFile(path_text(request.name));
  QtAlerts alerts(parent_);
  for (;;) {
    const std::vector<std::string> chosen = run(dialog);
    if (chosen.empty()) return std::nullopt;
    if (auto path = with_extension(request, chosen.front(), alerts)) return path;
  }
}

}  // namespace brindle
