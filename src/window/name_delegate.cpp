#include "window/name_delegate.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <QTimer>
#include <algorithm>

#include "window/file_table_model.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

ItemStatus status_in(const QModelIndex& index) {
  return static_cast<ItemStatus>(index.data(FileTableModel::status_role).toInt());
}

QTextLayout::FormatRange changed_format(ChangedPart part, const QStyleOptionViewItem& option) {
  QTextLayout::FormatRange range;
  range.start = static_cast<int>(part.start);
  range.length = static_cast<int>(part.end - part.start);
  range.format.setFontWeight(QFont::Bold);
  if (!(option.state & QStyle::State_Selected)) range.format.setBackground(changed_ground(option.palette));
  return range;
}

void lay_out(QTextLayout& layout) {
  QTextOption text_option;
  text_option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(text_option);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(1e6);
  layout.endLayout();
}

// Cut at the end, with an ellipsis, when it is wider than the cell.
void draw(QPainter* painter, const QRect& area, QString text, QTextLayout::FormatRange changed, const QFont& font) {
  const auto format = [&](QTextLayout& layout) {
    layout.setFont(font);
    layout.setCacheEnabled(false);
    if (changed.length > 0) layout.setFormats({changed});
    lay_out(layout);
  };
  QTextLayout layout(text);
  format(layout);
  if (layout.lineAt(0).naturalTextWidth() > area.width()) {
    const qreal room = area.width() - QFontMetricsF(font).horizontalAdvance(QChar(0x2026));
    const int cut = layout.lineAt(0).xToCursor(std::max(room, 0.0), QTextLine::CursorOnCharacter);
    text = text.left(cut) + QChar(0x2026);
    changed.length = std::max(0, std::min(changed.length, cut - changed.start));
    layout.setText(text);
    format(layout);
  }
  const qreal top = area.top() + (area.height() - layout.lineAt(0).height()) / 2;
  layout.draw(painter, QPointF(area.left(), top), {}, area);
}

// Typing begins with the name selected, its extension spared.
void select_base(QLineEdit* editor) {
  const qsizetype dot = editor->text().lastIndexOf(u'.');
  if (dot > 0) {
    editor->setSelection(0, static_cast<int>(dot));
  } else {
    editor->selectAll();
  }
}

}  // namespace

void NameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const QString text = std::exchange(cell.text, QString());
  const QWidget* widget = cell.widget;
  QStyle* style = widget ? widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);
  if (text.isEmpty()) return;

  const bool selected = cell.state & QStyle::State_Selected;
  const QPalette::ColorGroup group = cell.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
  const ItemStatus status = status_in(index);
  QTextLayout::FormatRange changed;
  if (status == ItemStatus::proposed)
    changed = changed_format(changed_part(index.data(FileTableModel::current_name_role).toString(), text), cell);
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
  painter->save();
  painter->setClipRect(cell.rect, Qt::IntersectClip);  // marks piled on a letter reach further than its line
  const bool is_problem = index.data(FileTableModel::problem_role).toBool();
  painter->setPen(selected     ? cell.palette.color(group, QPalette::HighlightedText)
                  : is_problem ? problem_colour(cell.palette)
                               : status_colour(status, cell.palette));
  draw(painter, cell.rect.adjusted(margin, 0, -margin, 0), text, changed, cell.font);
  painter->restore();
}

QWidget* NameDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& /*index*/) const {
  auto* editor = new QLineEdit(parent);
  editor->setObjectName(QStringLiteral("newNameEditor"));
  editor->setAccessibleName(localized_text("COLUMNNEWFILENAME"));
  editor->setFrame(false);
  editor->setAutoFillBackground(true);
  return editor;
}

void NameDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* field = qobject_cast<QLineEdit*>(editor);
  if (field->isModified()) return;
  field->setText(index.data(Qt::EditRole).toString());
  // The view selects all when the editor has the keyboard.
  QTimer::singleShot(0, field, [field] { select_base(field); });
}

namespace {

bool splits(QTextBoundaryFinder& finder, qsizetype place) {
  finder.setPosition(place);
  return !finder.isAtBoundary();
}

}  // namespace

ChangedPart changed_part(const QString& old_name, const QString& new_name) {
  QTextBoundaryFinder old_characters(QTextBoundaryFinder::Grapheme, old_name);
  QTextBoundaryFinder new_characters(QTextBoundaryFinder::Grapheme, new_name);
  const qsizetype shorter = std::min(old_name.size(), new_name.size());
  qsizetype start = 0;
  while (start < shorter && old_name[start] == new_name[start]) ++start;
  while (start > 0 && (splits(old_characters, start) || splits(new_characters, start))) --start;
  qsizetype same_end = 0;
  while (same_end < shorter - start &&
         old_name[old_name.size() - 1 - same_end] == new_name[new_name.size() - 1 - same_end])
    ++same_end;
  while (same_end > 0 &&
         (splits(old_characters, old_name.size() - same_end) || splits(new_characters, new_name.size() - same_end)))
    --same_end;
  return {start, new_name.size() - same_end};
}

}  // namespace brindle
