// The editor of the allowed extensions of photographs or songs.

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "app/extensions_editor_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/sheets/sheet_table.h"
#include "window/text.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

class ExtensionsSheet final : public Sheet {
 public:
  ExtensionsSheet(QWidget* parent, BrindleAppController& app, std::int32_t itemType);

 private:
  void make_table();
  void show_state() override;

  ExtensionsEditorController controller_;
  SheetTable* table_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* apply_ = nullptr;
};

ExtensionsSheet::ExtensionsSheet(QWidget* parent, BrindleAppController& app, std::int32_t itemType)
    : Sheet(parent, "ExtensionEditorSheet",
            localized_text(itemType == ExtensionsEditorController::photo ? "EXTENSIONSPHOTOTITLE"
                                                                         : "EXTENSIONSAUDIOTITLE")),
      controller_(app, itemType) {
  add_hint("EXTENSIONSHINT")->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
  make_table();
  apply_ = add_default_button("applyExtensions", "OK", [this] { controller_.apply(); });
  finish_buttons("SHEETCANCEL", [this] { controller_.showHelp(); });
  attach(controller_);
  table_->setFocus();
  keep_size(*this, app.model().user_defaults());
}

void ExtensionsSheet::make_table() {
  table_ = new SheetTable("extensions", "EXTENSIONSLIST", {{"extension", ""}});
  table_->selected = [this](std::optional<std::size_t> row) { controller_.select_row(row); };
  auto* remove = new QShortcut(QKeySequence::Delete, table_);
  remove->setContext(Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, this, [this] { controller_.remove(); });
  QPushButton* add = sheet_button("addExtension", "ADDEXTENSION", [this] { controller_.add(); });
  add->setToolTip(localized_text("ADDEXTENSIONTIP"));
  remove_ = sheet_button("removeExtension", "REMOVEEXTENSIONBUTTON", [this] { controller_.remove(); });
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(add);
  row->addWidget(remove_);
  rows()->addWidget(table_, 1);
  rows()->addLayout(row);
}

void ExtensionsSheet::show_state() {
  table_->show_rows(
      controller_.extensions().size(),
      [this](std::string_view, std::size_t row) { return utf8(qt_text(controller_.extensions()[row])); },
      controller_.selected_row());
  remove_->setEnabled(controller_.can_remove());
  apply_->setEnabled(controller_.can_apply());
}

}  // namespace

void show_extensions_sheet(QWidget* parent, BrindleAppController& app, std::int32_t itemType) {
  ExtensionsSheet(parent, app, itemType).exec();
}

}  // namespace brindle
