#pragma once

// The mask as a table that takes fields from the outline, and lets its rows be dragged into order.

#include <QTableWidget>
#include <functional>
#include <vector>

#include "settings/meta_data_field.h"

namespace brindle {

/// Fields on their way: pointers into the catalogue, as long as this program runs.
QMimeData* fields_mime_data(const std::vector<const MetaDataField*>& fields);
std::vector<const MetaDataField*> dropped_fields(const QMimeData* data);

class MaskTable final : public QTableWidget {
 public:
  explicit MaskTable(QWidget* parent = nullptr);

  /// Fields came from the outline, before a row.
  std::function<void(const std::vector<const MetaDataField*>&, std::size_t)> dropped;
  /// A row of the table was dragged before another.
  std::function<void(std::size_t, std::size_t)> moved;

  void set_hint(const QString& hint) { hint_ = hint; }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool takes(const QDropEvent* event) const;
  std::size_t row_at(const QDropEvent* event) const;

  QString hint_;
};

}  // namespace brindle
