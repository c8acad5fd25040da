#include "window/mask_editor.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/window_model.h"
#include "window/form_rows.h"
#include "window/keyboard.h"
#include "window/mask_table.h"
#include "window/sheets.h"
#include "window/text.h"
#include "window/token_strip.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

constexpr int field_role = Qt::UserRole;

const MetaDataField* field_of(const QTreeWidgetItem* item) {
  return item == nullptr ? nullptr : static_cast<const MetaDataField*>(item->data(0, field_role).value<const void*>());
}

/// Hands its fields out as the table takes them.
class FieldOutline final : public QTreeWidget {
 public:
  using QTreeWidget::QTreeWidget;

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override {
    std::vector<const MetaDataField*> fields;
    for (const QTreeWidgetItem* item : items) {
      if (const MetaDataField* field = field_of(item); field != nullptr) fields.push_back(field);
    }
    return fields.empty() ? nullptr : fields_mime_data(fields);
  }

  // Enter adds a field; the sheet's default button is not meant.
  void keyPressEvent(QKeyEvent* event) override {
    QTreeWidget::keyPressEvent(event);
    if (is_enter(*event)) event->accept();
  }
};

QString outline_title(const MetaDataField& field) {
  return field.tagCode == u"<>" ? localized_text("MASKOWNTEXT") : field_title(field);
}

QVBoxLayout* titled_column(QWidget* widget, TextKey title, QWidget* buddy) {
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 0);
  QLabel* label = plain_label(text_with_mnemonic(title));
  label->setBuddy(buddy);
  column->addWidget(label);
  return column;
}

}  // namespace

MaskEditor::MaskEditor(BrindleAppController& app, QWidget* parent)
    : Sheet(parent, "PhotoRenamingMaskEditorSheet", localized_text("MASKEDITORTITLE")), controller_(app) {
  auto* halves = new QHBoxLayout;
  halves->setSpacing(fontMetrics().height());
  halves->addWidget(make_outline(), 1);
  halves->addWidget(make_table(), 1);
  rows()->addLayout(halves, 1);
  add_default_button("applyMask", "OK", [this] { controller_.ok(); });
  finish_buttons("MASKCANCEL", [this] { controller_.showHelp(); });
  show_outline();
  attach(controller_);
  search_->setFocus();
  resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 30);
  keep_size(*this, app.model().user_defaults());
}

MaskEditor::~MaskEditor() {
  controller_.changed = {};
  controller_.closed = {};
}

QWidget* MaskEditor::make_outline() {
  search_ = new QLineEdit;
  search_->setObjectName(QStringLiteral("maskSearch"));
  search_->setPlaceholderText(localized_text("MASKSEARCH"));
  search_->setAccessibleName(localized_text("MASKSEARCH"));
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
    controller_.filterItems(utf16(text));
    show_outline();
  });
  search_->installEventFilter(this);

  outline_ = new FieldOutline;
  outline_->setObjectName(QStringLiteral("maskOutline"));
  outline_->setAccessibleName(localized_text("MASKFIELDSAVAILABLE"));
  outline_->setHeaderHidden(true);
  outline_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  outline_->setDragEnabled(true);
  // A click on a group's own name is not for opening it: a double click on a field adds that.
  connect(outline_, &QTreeWidget::itemActivated, this, [this] { add_current(); });
  connect(outline_, &QTreeWidget::itemSelectionChanged, this,
          [this] { add_->setEnabled(field_of(outline_->currentItem()) != nullptr); });
  add_ = push_button("maskAdd", "MASKADD", [this] { add_current(); });
  add_->setToolTip(localized_text("MASKADDTIP"));
  add_->setEnabled(false);

  auto* widget = new QWidget;
  QVBoxLayout* column = titled_column(widget, "MASKFIELDSAVAILABLE", outline_);
  column->addWidget(search_);
  column->addWidget(outline_, 1);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(add_);
  column->addLayout(row);
  return widget;
}

QWidget* MaskEditor::make_table() {
  table_ = new MaskTable;
  table_->setObjectName(QStringLiteral("maskTable"));
  table_->setAccessibleName(localized_text("MASKFIELDSCHOSEN"));
  table_->set_hint(localized_text("MASKEMPTY"));
  table_->setHorizontalHeaderLabels({localized_text("MASKCOLUMNFIELD"), localized_text("MASKCOLUMNGROUP")});
  table_->dropped = [this](const std::vector<const MetaDataField*>& fields, std::size_t row) {
    controller_.drop(fields, row);
  };
  table_->moved = [this](std::size_t from, std::size_t before) {
    controller_.select_row(from);
    for (std::size_t row = from; row > before; --row) controller_.moveUp();
    for (std::size_t row = from; row + 1 < before; ++row) controller_.moveDown();
  };
  connect(table_, &QTableWidget::itemSelectionChanged, this, [this] {
    const QList<QTableWidgetItem*> selected = table_->selectedItems();
    controller_.select_row(selected.isEmpty() ? std::nullopt
                                              : std::optional(static_cast<std::size_t>(selected.front()->row())));
  });
  auto* remove = new QShortcut(QKeySequence::Delete, table_);
  remove->setContext(Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, this, [this] { controller_.clearSelected(); });

  up_ = push_button("maskMoveUp", "MASKMOVEUP", [this] { controller_.moveUp(); });
  down_ = push_button("maskMoveDown", "MASKMOVEDOWN", [this] { controller_.moveDown(); });
  clear_ = push_button("maskClear", "MASKCLEAR", [this] { controller_.clearSelected(); });
  auto* widget = new QWidget;
  QVBoxLayout* column = titled_column(widget, "MASKFIELDSCHOSEN", table_);
  column->addWidget(table_, 1);
  column->addWidget(line({up_, down_, clear_}));
  return widget;
}

void MaskEditor::show_outline() {
  outline_->clear();
  for (const PhotoRenamingMaskEditorController::Group& group : controller_.outline()) {
    auto* top = new QTreeWidgetItem(outline_, {localized_text(utf8(qt_text(group.NAME)))});
    top->setFlags(Qt::ItemIsEnabled);
    QFont font = outline_->font();
    font.setBold(true);
    top->setFont(0, font);
    for (const MetaDataField* field : group.FIELDS) {
      auto* item = new QTreeWidgetItem(top, {outline_title(*field)});
      item->setData(0, field_role, QVariant::fromValue(static_cast<const void*>(field)));
      item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
    }
  }
  outline_->expandAll();
}

bool MaskEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched != search_ || event->type() != QEvent::KeyPress) return Sheet::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (!is_enter(key) && key.key() != Qt::Key_Down) return Sheet::eventFilter(watched, event);
  go_to_first_field();
  return true;
}

// From the search to what it has found.
void MaskEditor::go_to_first_field() {
  const QTreeWidgetItem* group = outline_->topLevelItem(0);
  if (group == nullptr || group->childCount() == 0) return;
  outline_->setCurrentItem(group->child(0));
  outline_->setFocus();
}

void MaskEditor::show_fields() {
  const QSignalBlocker silence(table_);
  if (shown_ != controller_.fields()) fill_table(controller_.fields());
  if (const std::optional<std::size_t> row = controller_.selected_row()) {
    table_->selectRow(static_cast<int>(*row));
  } else {
    table_->clearSelection();
  }
  up_->setEnabled(controller_.can_move_up());
  down_->setEnabled(controller_.can_move_down());
  clear_->setEnabled(controller_.can_clear());
}

void MaskEditor::fill_table(const FieldList& fields) {
  shown_ = fields;
  table_->setRowCount(static_cast<int>(fields.size()));
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const int row = static_cast<int>(i);
    table_->setItem(row, 0, new QTableWidgetItem(field_title(fields[i])));
    table_->setItem(row, 1,
                    new QTableWidgetItem(localized_text(is_custom_field(fields[i])
                                                            ? std::string("Custom")
                                                            : utf8(qt_text(std::u16string_view(fields[i].prefix))))));
  }
  table_->viewport()->update();
}

void MaskEditor::add_current() {
  if (const MetaDataField* field = field_of(outline_->currentItem()); field != nullptr) controller_.add(*field);
}

void show_photo_mask_sheet(QWidget* parent, BrindleAppController& app) {
  MaskEditor(app, parent).exec();
}

std::optional<std::u16string> ask_custom_tag_sheet(QWidget* parent) {
  // Over the mask editor, when that is what asks.
  QWidget* over = QApplication::activeModalWidget();
  QInputDialog dialog(over != nullptr ? over : parent);
  dialog.setObjectName(QStringLiteral("CustomTagValue"));
  dialog.setWindowTitle(localized_text("CUSTOMTAGTITLE"));
  dialog.setLabelText(localized_text("CUSTOMTAGPROMPT") + QLatin1Char(':'));
  dialog.setOkButtonText(localized_text("OK"));
  dialog.setCancelButtonText(localized_text("MASKCANCEL"));
  // No sheet has icons on its buttons, whatever the style thinks of those that it knows.
  for (QPushButton* button : dialog.findChildren<QPushButton*>()) button->setIcon({});
  if (dialog.exec() != QDialog::Accepted || dialog.textValue().isEmpty()) return std::nullopt;
  return utf16(dialog.textValue());
}

}  // namespace brindle
