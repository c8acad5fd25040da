#pragma once

// The entries of one folder as an open panel shows them: folders first, names in the program's own order.

#include <QAbstractTableModel>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/folder_handle.h"

namespace brindle {

class FolderModel final : public QAbstractTableModel {
 public:
  enum Column { name_column, size_column, modified_column, column_count };

  /// Which entries are shown. Folders are, whatever they are called.
  struct Filter {
    bool files = true;
    bool hidden = false;                         ///< names that begin with "."
    std::vector<std::string_view> extensions{};  ///< without dots, compared without case; empty: every file
    QString part{};                              ///< of the name, compared without case
  };

  explicit FolderModel(QObject* parent) : QAbstractTableModel(parent) {}

  void set_listing(FolderListing listing);
  void set_filter(Filter filter);
  const Filter& filter() const { return filter_; }
  const ListedEntry& entry(int row) const { return listing_.entries[shown_[static_cast<std::size_t>(row)]]; }
  /// Of an entry (bytes), or -1 where it is not shown.
  int row_of(std::string_view name) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  bool is_shown(const ListedEntry& entry) const;
  QString text(const ListedEntry& entry, int column) const;
  void fill();

  FolderListing listing_;
  std::vector<std::string> keys_;  // of names, by entry
  std::vector<std::size_t> shown_;
  Filter filter_;
  int sorted_column_ = name_column;
  bool ascending_ = true;
};

}  // namespace brindle
