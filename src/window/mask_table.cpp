#include "window/mask_table.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <algorithm>

#include "app/photo_renaming_mask_editor_controller.h"
#include "metadata/metadata_catalogue.h"
#include "window/text.h"

namespace brindle {
namespace {

QString mime_type() {
  return QStringLiteral("application/x-brindle.") + qt_text(PhotoRenamingMaskEditorController::fields_type);
}

}  // namespace

QMimeData* fields_mime_data(const std::vector<const MetaDataField*>& fields) {
  QStringList tokens;
  for (const MetaDataField* field : fields) tokens.append(qt_text(std::u16string_view(field->tagCode)));
  auto* data = new QMimeData;
  data->setData(mime_type(), tokens.join(QLatin1Char('\n')).toUtf8());
  return data;
}

std::vector<const MetaDataField*> dropped_fields(const QMimeData* data) {
  std::vector<const MetaDataField*> fields;
  const QString tokens = QString::fromUtf8(data->data(mime_type()));
  for (const QString& token : tokens.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    if (const MetaDataField* field = find_field(utf16(token)); field != nullptr) fields.push_back(field);
  }
  return fields;
}

MaskTable::MaskTable(QWidget* parent) : QTableWidget(0, 2, parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setDragDropMode(DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  setDragDropOverwriteMode(false);
  setTabKeyNavigation(false);
  verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  verticalHeader()->hide();
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

bool MaskTable::takes(const QDropEvent* event) const {
  return event->source() == this || event->mimeData()->hasFormat(mime_type());
}

std::size_t MaskTable::row_at(const QDropEvent* event) const {
  const QPoint at = event->position().toPoint();
  const QModelIndex index = indexAt(at);
  if (!index.isValid()) return static_cast<std::size_t>(rowCount());
  const bool below = at.y() > visualRect(index).center().y();
  return static_cast<std::size_t>(index.row()) + (below ? 1U : 0U);
}

void MaskTable::dragEnterEvent(QDragEnterEvent* event) {
  QTableWidget::dragEnterEvent(event);
  event->setAccepted(takes(event));
}

void MaskTable::dragMoveEvent(QDragMoveEvent* event) {
  QTableWidget::dragMoveEvent(event);
  event->setAccepted(takes(event));
}

void MaskTable::dropEvent(QDropEvent* event) {
  if (!takes(event)) return;
  const std::size_t before = row_at(event);
  if (event->source() == this) {
    // Told as copied, so that the view does not take the row away by itself.
    event->setDropAction(Qt::CopyAction);
    if (moved && currentRow() >= 0) moved(static_cast<std::size_t>(currentRow()), before);
  } else if (dropped) {
    event->setDropAction(Qt::CopyAction);
    dropped(dropped_fields(event->mimeData()), before);
  }
  event->accept();
  setState(NoState);
  viewport()->update();
}

void MaskTable::paintEvent(QPaintEvent* event) {
  QTableWidget::paintEvent(event);
  if (rowCount() != 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

}  // namespace brindle
