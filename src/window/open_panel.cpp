#include "window/open_panel.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QThreadPool>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/folder_model.h"
#include "window/keyboard.h"
#include "window/text.h"

namespace brindle {
namespace {

std::string joined(const std::string& folder, std::string_view name) {
  return (folder == "/" ? std::string() : folder) + '/' + std::string(name);
}

// Typed paths are relative to the folder shown; "~" is the home folder.
std::string typed_path(const QString& text, const std::string& folder) {
  std::string path = path_bytes(text);
  if (path == "~" || path.starts_with("~/")) path.replace(0, 1, path_bytes(QDir::homePath()));
  if (!path.starts_with('/')) path = joined(folder, path);
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

OpenPanel::~OpenPanel() {
  if (reading_) *reading_ = true;
}

// Going about.

void OpenPanel::go_to(std::string folder, std::string select, Way way) {
  if (reading_) *reading_ = true;
  reading_ = std::make_shared<std::atomic<bool>>(false);
  status_->setText(localized_text("PANELREADING"));
  QThreadPool::globalInstance()->start([self = QPointer<OpenPanel>(this), cancelled = reading_,
                                        folder = std::move(folder), select = std::move(select), way] {
    FolderListing listing = list_folder(folder, *cancelled);
    const auto show = [self, cancelled, select, way, listing = std::move(listing)]() mutable {
      if (self && !*cancelled) self->show_listing(std::move(listing), select, way);
    };
    QMetaObject::invokeMethod(qApp, show, Qt::QueuedConnection);
  });
}

void OpenPanel::show_listing(FolderListing listing, const std::string& select, Way way) {
  if (listing.error != 0 && listing.entries.empty()) return refuse(listing);
  if (way == Way::back) {
    left_.pop_back();
  } else if (!folder_.empty() && folder_ != listing.folder) {
    left_.push_back(folder_);
  }
  folder_ = listing.folder;
  path_->setText(path_text(folder_));
  back_->setEnabled(!left_.empty());
  up_->setEnabled(folder_ != "/");
  filter_->clear();
  model_->set_listing(std::move(listing));
  const int row = select.empty() ? -1 : model_->row_of(select);
  const QModelIndex index = model_->index(std::max(row, 0), 0);
  if (row >= 0) {
    table_->setCurrentIndex(index);
  } else {
    table_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  }
  table_->scrollTo(index);
}

void OpenPanel::refuse(const FolderListing& listing) {
  if (folder_.empty() && listing.folder != "/") return go_to(split_path(listing.folder).folder);
  if (listing.error == ENOTDIR && request_.files) {
    chosen_ = {listing.folder};
    return accept();
  }
  const std::string folder = in_sentence(decode_file_name(listing.folder));
  status_->setText(qt_text(localized_format("PANELUNREADABLE", folder, localized(system_error_text(listing.error)))));
}

void OpenPanel::go_up() {
  if (folder_ == "/") return;
  PathParts parts = split_path(folder_);
  go_to(std::move(parts.folder), std::move(parts.name));
}

void OpenPanel::go_back() {
  if (!left_.empty()) go_to(left_.back(), {}, Way::back);
}

void OpenPanel::go_home() {
  go_to(path_bytes(QDir::homePath()));
}

void OpenPanel::go_to_place() {
  const QListWidgetItem* place = places_->currentItem();
  if (place == nullptr) return;
  go_to(path_bytes(place->data(path_role).toString()));
  table_->setFocus();
}

void OpenPanel::open_typed_path() {
  go_to(typed_path(path_->text(), folder_));
  table_->setFocus();
}

void OpenPanel::open_row(int row) {
  if (row < 0 || row >= model_->rowCount()) return;
  const ListedEntry& entry = model_->entry(row);
  if (!entry.is_folder) return choose();
  go_to(joined(folder_, entry.name));
}

void OpenPanel::toggle_hidden() {
  hidden_->toggle();
}

void OpenPanel::edit_path() {
  path_->setFocus();
  path_->selectAll();
}

void OpenPanel::edit_filter() {
  filter_->setFocus();
  filter_->selectAll();
}

void OpenPanel::adopt_filter() {
  memory_.shows_hidden = hidden_->isChecked();
  model_->set_filter({request_.files, memory_.shows_hidden, request_.extensions, filter_->text()});
}

// Choosing.

std::vector<std::string> OpenPanel::selected_paths() const {
  std::vector<std::string> paths;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows()) {
    const ListedEntry& entry = model_->entry(index.row());
    if (entry.is_folder ? request_.folders : request_.files) paths.push_back(joined(folder_, entry.name));
  }
  return paths;
}

// With no folder selected, the one shown is meant.
bool OpenPanel::takes_folder_shown() const {
  return request_.folders && !request_.files && !folder_.empty();
}

void OpenPanel::show_selection() {
  const std::size_t count = selected_paths().size();
  choose_->setEnabled(count > 0 || takes_folder_shown());
  const auto items = static_cast<std::size_t>(model_->rowCount());
  status_->setText(
      qt_text(count > 0 ? localized_format("PANELCHOSEN", count, items) : localized_format("PANELCOUNT", items)));
}

void OpenPanel::choose() {
  std::vector<std::string> paths = selected_paths();
  if (paths.empty() && takes_folder_shown()) paths.push_back(folder_);
  if (paths.empty()) return;
  chosen_ = std::move(paths);
  memory_.folder = folder_;
  accept();
}

// Enter does what the part it is pressed in is for, and only then what the default button does.
bool OpenPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);  // NOLINT(cppcoreguidelines-pro-type-static-cast-downcast)
  if (watched == table_) return press_in_table(key);
  if (!is_enter(key) || key.modifiers().testFlag(Qt::ControlModifier)) return false;
  if (watched == path_) open_typed_path();
  if (watched == places_) go_to_place();
  if (watched == filter_) table_->setFocus();
  return true;
}

bool OpenPanel::press_in_table(const QKeyEvent& key) {
  if (is_enter(key) && !key.modifiers().testFlag(Qt::ControlModifier)) {
    if (table_->selectionModel()->selectedRows().size() > 1) {
      choose();
    } else {
      open_row(table_->currentIndex().row());
    }
    return true;
  }
  if (key.key() == Qt::Key_Backspace) {
    go_up();
    return true;
  }
  if (key.text() != QStringLiteral("/") && key.text() != QStringLiteral("~")) return false;
  path_->setText(key.text());
  path_->setFocus();
  return true;
}

}  // namespace brindle
