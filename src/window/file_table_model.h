#pragma once

// The file list as a table: columns of columns.h. It answers from the list in memory, and never while a job has it; the
// photo fields of rows that are seen are read on another thread and shown when they are there. Main thread.

#include <QAbstractTableModel>
#include <QColor>
#include <cstdint>
#include <vector>

#include "app/brindle_app_controller.h"

class QTimer;

namespace brindle {

class FileTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The name on disk in display form (QString): what a new name is compared with.
  static constexpr int current_name_role = Qt::UserRole;
  /// The ItemStatus of the row (int).
  static constexpr int status_role = Qt::UserRole + 1;

  FileTableModel(BrindleAppController& app, QObject* parent);
  ~FileTableModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  /// Whether the list may be read now.
  bool is_readable() const { return !app_.state().isExecuting; }
  /// Rows whose new name will be given by a renaming.
  std::size_t renameable_count() const { return renameable_count_; }

  /// The size and density of icons.
  void set_icons(int side, qreal device_pixel_ratio);

 signals:
  /// Rows may stand elsewhere now; `rowCount` is as before. (Otherwise the model was reset.)
  void order_changed();

 private:
  void follow(ChangedSet changed);
  void show_rows();
  void show_names();
  void count_renameable();
  const FileSystemItem& item(int row) const;
  QVariant text(int row, int column) const;
  QVariant new_name_text(int row) const;
  QVariant photo_text(int row, int column) const;
  QVariant tooltip(int row, int column) const;
  void request_photo_fields();

  BrindleAppController& app_;
  std::uint32_t observer_ = 0;
  int rows_ = 0;
  std::size_t renameable_count_ = 0;
  int icon_side_ = 16;
  qreal icon_ratio_ = 1;
  mutable FileSystemItem item_;  // one object for all rows: its buffers stay
  mutable int item_row_ = -1;
  mutable std::vector<std::size_t> wanted_photos_;
  QTimer* photo_timer_;
};

}  // namespace brindle
