#include "window/file_table_model.h"

#include <QTimer>
#include <algorithm>
#include <limits>

#include "app/brindle_app_controller.h"
#include "app/preview_controller.h"
#include "list/file_system_item.h"
#include "platform/file_name.h"
#include "texts/remark_text.h"
#include "texts/shown_text.h"
#include "window/icons.h"
#include "window/text.h"

namespace brindle {
namespace {

const Column& column_at(int column) {
  return columns.at(static_cast<std::size_t>(column));
}

// Rows beyond are scrolled past before their files are read.
constexpr std::size_t most_wanted_photos = 512;

}  // namespace

FileTableModel::FileTableModel(BrindleAppController& app, QObject* parent)
    : QAbstractTableModel(parent), model_(app.model()), preview_(app.preview()), photo_timer_(new QTimer(this)) {
  photo_timer_->setSingleShot(true);
  photo_timer_->callOnTimeout(this, [this] { request_photo_fields(); });
  observer_ = model_.add_observer([this](ChangedSet changed) { show_change(changed); });
  show_rows();
}

FileTableModel::~FileTableModel() {
  model_.remove_observer(observer_);
}

void FileTableModel::show_change(ChangedSet changed) {
  item_row_ = -1;
  if (!is_readable()) return;
  if (has(changed, Changed::rows)) {
    show_rows();
  } else if (has(changed, Changed::names)) {
    show_names();
  }
}

void FileTableModel::show_rows() {
  item_ = {};  // folders may have other numbers now
  item_row_ = -1;
  wanted_photos_.clear();
  const int rows = is_readable() ? static_cast<int>(std::min<std::size_t>(model_.files().size(), INT32_MAX)) : 0;
  if (rows == rows_) {
    emit order_changed();
    return show_names();
  }
  beginResetModel();
  rows_ = rows;
  count_renameable();
  endResetModel();
}

void FileTableModel::show_names() {
  item_row_ = -1;
  count_renameable();
  if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

void FileTableModel::count_renameable() {
  renameable_count_ = is_readable() ? model_.files().renameable_count() : 0;
}

int FileTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int FileTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

const FileSystemItem& FileTableModel::item(int row) const {
  if (item_row_ != row) model_.files().read(static_cast<std::size_t>(row), item_);
  item_row_ = row;
  return item_;
}

QVariant FileTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || !is_readable()) return {};
  const int row = index.row();
  const ItemRecord& record = model_.files()[static_cast<std::size_t>(row)];
  switch (role) {
    case Qt::DisplayRole:
      return in_one_line(text(row, index.column()).toString());
    case Qt::EditRole:
      if (index.column() != new_name_column) return {};
      return record.status == ItemStatus::proposed ? text(row, new_name_column) : text(row, name_column);
    case Qt::DecorationRole:
      if (index.column() != icon_column) return {};
      return item_icon(record, icon_side_, icon_ratio_);
    case Qt::ToolTipRole:
      return tooltip(row, index.column());
    case current_name_role:
      return in_one_line(text(row, name_column).toString());
    case status_role:
      return static_cast<int>(record.status);
    case problem_role:
      return record.problem != Problem::none;
    default:
      return {};
  }
}

QVariant FileTableModel::text(int row, int column) const {
  const Column& shown = column_at(column);
  if (column == icon_column) return {};
  if (column == new_name_column) return new_name_text(row);
  if (shown.is_photo) return photo_text(row, column);
  const auto field = item(row).displayField(shown.identifier);
  if (!field) return {};
  if (shown.identifier == "fileType") return localized_text(*field == u"FILE" ? "TYPEFILE" : "TYPEFOLDER");
  return qt_text(std::u16string_view(*field));
}

// The fixed texts are shown in the user's language.
QVariant FileTableModel::new_name_text(int row) const {
  const ItemStatus status = model_.files()[static_cast<std::size_t>(row)].status;
  if (is_terminal(status)) return localized_text(to_utf8(status_text(status)));
  const auto field = item(row).displayField("newFilename");
  return field ? qt_text(std::u16string_view(*field)) : QString();
}

QVariant FileTableModel::photo_text(int row, int column) const {
  const auto fields = model_.photo_fields().find(model_.files(), static_cast<std::size_t>(row));
  if (!fields) {
    if (wanted_photos_.size() < most_wanted_photos) wanted_photos_.push_back(static_cast<std::size_t>(row));
    if (!photo_timer_->isActive()) photo_timer_->start(20);
    return {};
  }
  FileSystemItem shown;
  shown.photo() = *fields;
  const auto field = shown.displayField(column_at(column).identifier);
  return field ? qt_text(std::u16string_view(*field)) : QString();
}

void FileTableModel::request_photo_fields() {
  if (is_readable() && !wanted_photos_.empty()) {
    std::ranges::sort(wanted_photos_);
    wanted_photos_.erase(std::unique(wanted_photos_.begin(), wanted_photos_.end()), wanted_photos_.end());
    model_.photo_fields().request(model_.files(), wanted_photos_);
  }
  wanted_photos_.clear();
}

QVariant FileTableModel::tooltip(int row, int column) const {
  const auto place = static_cast<std::size_t>(row);
  const FileList& files = model_.files();
  const std::string_view wanted = files.wanted(place);
  const std::string remark = remark_of(place);
  const QString tip = in_one_line(text(row, column == icon_column ? name_column : column).toString());
  if ((remark.empty() && wanted.empty()) || (column != icon_column && column != new_name_column)) return tip;
  QString name = in_one_line(text(row, new_name_column).toString());
  if (!wanted.empty())
    name += QStringLiteral(": ") + in_one_line(qt_text(FileSystemItem::getDisplayFilePath(decode_file_name(wanted))));
  if (remark.empty()) return name;
  QString why = qt_text(remark);
  why.replace(0, 1, why.left(1).toUpper());  // as a sentence of its own
  return name + QStringLiteral("\n\n") + in_one_line(why);
}

// Why the row has its status, will not get its name, or is worth a second look.
std::string FileTableModel::remark_of(std::size_t row) const {
  const FileList& files = model_.files();
  const ItemRecord& record = files[row];
  if (record.problem != Problem::none) return problem_text(files, row);
  return record.reason != 0 ? reason_in_words(files.reason(row)) : warning_text(files, row);
}

QVariant FileTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const QString title = localized_text(column_at(section).title);
  switch (role) {
    case Qt::DisplayRole:
      return section == icon_column ? QString() : title;
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return title;
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}

Qt::ItemFlags FileTableModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags row = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
  return index.column() == new_name_column && is_readable() ? row | Qt::ItemIsEditable : row;
}

bool FileTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || index.column() != new_name_column || !is_readable()) return false;
  const QString name = value.toString();
  if (name == data(index, Qt::EditRole).toString()) return false;
  preview_.set_new_name(static_cast<std::size_t>(index.row()), utf16(name));
  return true;
}

void FileTableModel::set_icons(int side, qreal device_pixel_ratio) {
  icon_side_ = side;
  icon_ratio_ = device_pixel_ratio;
}

}  // namespace brindle
