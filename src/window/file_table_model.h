#pragma once

// The file list as a table: columns of columns.h. It answers from the list in memory, and never while a job has it; the
// photo fields of rows that are seen are read on another thread and shown when they are there. Main thread.

#include <QAbstractTableModel>
#include <QColor>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "app/window_model.h"

class QTimer;

namespace brindle {

class BrindleAppController;
class PreviewController;

class FileTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The name on disk in display form (QString): what a new name is compared with.
  static constexpr int current_name_role = Qt::UserRole;
  /// The ItemStatus of the row (int).
  static constexpr int status_role = Qt::UserRole + 1;
  static constexpr int problem_role = Qt::UserRole + 2;  ///< whether the item will not get its name

  FileTableModel(BrindleAppController& app, QObject* parent);
  ~FileTableModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  /// Whether the list may be read now.
  bool is_readable() const { return !model_.state().isExecuting; }
  /// Rows whose new name will be given by a renaming.
  std::size_t renameable_count() const { return renameable_count_; }

  /// The size and density of icons.
  void set_icons(int side, qreal device_pixel_ratio);

 signals:
  /// Rows may stand elsewhere now; `rowCount` is as before. (Otherwise the model was reset.)
  void order_changed();

 private:
  void show_change(ChangedSet changed);
  void show_rows();
  void show_names();
  void count_renameable();
  const FileSystemItem& item(int row) const;
  QVariant text(int row, int column) const;
  QVariant new_name_text(int row) const;
  QVariant photo_text(int row, int column) const;
  QVariant tooltip(int row, int column) const;
  std::string remark_of(std::size_t row) const;
  void request_photo_fields();

  WindowModel& model_;
  PreviewController& preview_;
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

// The columns of the file table, in their first order.

struct Column {
  std::string_view identifier;  ///< as in FileSystemItem::displayField; what the list is sorted by
  std::string_view title;       ///< key of the string table
  int characters;               ///< the width it begins with
  bool is_shown;                ///< until somebody chooses otherwise
  bool is_photo;                ///< read from the file, when it is seen
};

inline constexpr std::array<Column, 12> columns = {{
    {"icon", "COLUMNICON", 4, true, false},
    {"filenameWithExtension", "COLUMNFILENAMEWITHEXTENSION", 36, true, false},
    {"newFilename", "COLUMNNEWFILENAME", 36, true, false},
    {"fileLocation", "COLUMNFILELOCATION", 22, true, false},
    {"filename", "COLUMNFILENAME", 28, false, false},
    {"fileExtension", "COLUMNFILEEXTENSION", 10, false, false},
    {"fileWithPath", "COLUMNFILEWITHPATH", 50, false, false},
    {"fileType", "COLUMNFILETYPE", 10, false, false},
    {"make", "COLUMNMAKE", 16, false, true},
    {"model", "COLUMNMODEL", 18, false, true},
    {"dimensions", "COLUMNDIMENSIONS", 14, false, true},
    {"pictureTaken", "COLUMNPICTURETAKEN", 24, false, true},
}};

inline constexpr int icon_column = 0;
inline constexpr int name_column = 1;
inline constexpr int new_name_column = 2;

}  // namespace brindle
