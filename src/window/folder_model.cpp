#include "window/folder_model.h"

#include <QApplication>
#include <QDateTime>
#include <QFontMetrics>
#include <QLocale>
#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "list/file_order.h"
#include "window/icons.h"
#include "window/text.h"

namespace brindle {
namespace {

bool has_one_of(std::string_view name, const std::vector<std::string_view>& extensions) {
  const QString shown = path_text(name);
  return extensions.empty() || std::ranges::any_of(extensions, [&](std::string_view extension) {
           return shown.endsWith(u'.' + qt_text(extension), Qt::CaseInsensitive);
         });
}

QIcon icon_of(const ListedEntry& entry) {
  ItemRecord record;
  record.name_data = entry.name.c_str();
  record.name_size = static_cast<std::uint16_t>(entry.name.size());
  record.kind = kind_bits(entry.is_folder, entry.is_link && !entry.is_folder);
  return item_icon(record, QFontMetrics(QFont()).height() + 2, qApp->devicePixelRatio());
}

}  // namespace

void FolderModel::set_listing(FolderListing listing) {
  beginResetModel();
  listing_ = std::move(listing);
  keys_.assign(listing_.entries.size(), {});
  for (std::size_t i = 0; i < keys_.size(); ++i) append_sort_key(listing_.entries[i].name, keys_[i]);
  fill();
  endResetModel();
}

void FolderModel::set_filter(Filter filter) {
  beginResetModel();
  filter_ = std::move(filter);
  fill();
  endResetModel();
}

void FolderModel::sort(int column, Qt::SortOrder order) {
  beginResetModel();
  sorted_column_ = column;
  ascending_ = order == Qt::AscendingOrder;
  fill();
  endResetModel();
}

bool FolderModel::is_shown(const ListedEntry& entry) const {
  if (!filter_.hidden && entry.name.starts_with('.')) return false;
  if (!filter_.part.isEmpty() && !path_text(entry.name).contains(filter_.part, Qt::CaseInsensitive)) return false;
  return entry.is_folder || (filter_.files && has_one_of(entry.name, filter_.extensions));
}

void FolderModel::fill() {
  shown_.clear();
  const auto& entries = listing_.entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (is_shown(entries[i])) shown_.push_back(i);
  }
  const auto order = [&](std::size_t a, std::size_t b) {
    if (sorted_column_ == size_column && entries[a].size != entries[b].size) return entries[a].size < entries[b].size;
    if (sorted_column_ == modified_column && entries[a].modified != entries[b].modified)
      return entries[a].modified < entries[b].modified;
    return std::tie(keys_[a], entries[a].name) < std::tie(keys_[b], entries[b].name);
  };
  std::ranges::sort(shown_, [&](std::size_t a, std::size_t b) {
    if (entries[a].is_folder != entries[b].is_folder) return entries[a].is_folder;
    return ascending_ ? order(a, b) : order(b, a);
  });
}

int FolderModel::row_of(std::string_view name) const {
  const auto found = std::ranges::find_if(shown_, [&](std::size_t i) { return listing_.entries[i].name == name; });
  return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

int FolderModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int FolderModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : column_count;
}

QString FolderModel::text(const ListedEntry& entry, int column) const {
  switch (column) {
    case name_column:
      return in_one_line(path_text(entry.name));
    case size_column:
      return entry.is_folder ? QString() : QLocale().formattedDataSize(entry.size, 1, QLocale::DataSizeSIFormat);
    default:
      return QLocale().toString(QDateTime::fromSecsSinceEpoch(entry.modified), QLocale::ShortFormat);
  }
}

QVariant FolderModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const ListedEntry& shown = entry(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return text(shown, index.column());
    case Qt::ToolTipRole:
      return text(shown, name_column);
    case Qt::DecorationRole:
      return index.column() == name_column ? QVariant(icon_of(shown)) : QVariant();
    case Qt::TextAlignmentRole:
      return static_cast<int>((index.column() == size_column ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant FolderModel::headerData(int section, Qt::Orientation orientation, int role) const {
  static constexpr std::array<std::string_view, column_count> titles = {"PANELNAME", "PANELSIZE", "PANELMODIFIED"};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= column_count) return {};
  return localized_text(titles.at(static_cast<std::size_t>(section)));
}

}  // namespace brindle
