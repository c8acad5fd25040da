#include "window/dialogs.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <QStyledItemDelegate>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "app/document_name.h"
#include "platform/file_name.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/text.h"

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

void make_bold(QLabel& label) {
  QFont bold = label.font();
  bold.setBold(true);
  label.setFont(bold);
}

// A line of some length, however short the words are; and a path is broken behind a folder, not led off the screen.
void set_texts(QMessageBox& box, const Alert& alert) {
  box.setInformativeText(QStringLiteral(" "));  // makes its label
  make_plain(box);
  // A title that the window manager may hide is said in the box as well.
  box.setText(in_lines(alert.title));
  if (auto* title = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) make_bold(*title);
  QString message = in_lines(alert.message);
  if (!alert.informative_text.empty()) message += QStringLiteral("\n\n") + in_lines(alert.informative_text);
  box.setInformativeText(message.replace(u'/', QStringLiteral("/\u200B")));
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  const int width = box.fontMetrics().averageCharWidth() * 54;
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// The name as it must end.
std::string with_extension(const SaveRequest& request, std::string path) {
  if (request.extension.empty() || request.other_extensions || has_extension(path, request.extension)) return path;
  return path.append(".").append(request.extension);
}

// The toolkit's own question would take the name for markup.
bool may_be_written(const SaveRequest& request, const std::string& path, AlertPort& alerts) {
  std::error_code ignored;
  if (!std::filesystem::exists(std::filesystem::symlink_status(path, ignored))) return true;
  Alert alert;
  alert.message_key = "FILEOVERWRITECONFIRM";
  alert.title = request.title;
  alert.message = localized_format(alert.message_key, in_sentence(decode_file_name(path.substr(path.rfind('/') + 1))));
  alert.buttons = {"YES", "NO"};
  return alerts.show(alert) == 0;
}

// Shows a name as fit for its row and leaves it to the dialog as it is.
class OneLineDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QString displayText(const QVariant& value, const QLocale& locale) const override {
    return in_one_line(QStyledItemDelegate::displayText(value, locale));
  }
};

// Of the toolkit's dialog, where it is used: no file is deleted or given another name from there, and so its questions
// about that, which would take the name for markup, are never asked.
void keep_files(QFileDialog& dialog) {
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  for (const char* name : {"qt_delete_action", "qt_rename_action"}) {
    auto* action = dialog.findChild<QAction*>(QString::fromLatin1(name));
    if (action == nullptr) continue;
    action->disconnect();
    action->setVisible(false);
  }
  for (auto* view : dialog.findChildren<QAbstractItemView*>()) {
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setItemDelegate(new OneLineDelegate(view));
  }
}

std::vector<std::string> run(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) return {};
  return paths_of(dialog.selectedUrls());
}

}  // namespace

std::size_t QtAlerts::show(const Alert& alert) {
  QMessageBox box(icon_of(alert.style), title_text(alert.title), {}, QMessageBox::NoButton, parent_());
  set_texts(box, alert);
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
  keep_files(dialog);
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
    std::string path = with_extension(request, chosen.front());
    if (may_be_written(request, path, alerts)) return path;
  }
}

}  // namespace brindle
