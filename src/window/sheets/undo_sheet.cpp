// The undo sheet: the logs, and what can be done with the chosen one.

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/undo_sheet_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/sheets/sheet_table.h"
#include "window/text.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

class UndoSheet final : public Sheet {
 public:
  UndoSheet(QWidget* parent, BrindleAppController& app);

 private:
  void make_table();
  void make_log_buttons();
  void make_progress();
  void show_state() override;
  /// Escape means the undo at hand, while there is one.
  void reject() override { controller_.isUndoing() ? controller_.cancel() : Sheet::reject(); }

  BrindleAppController& app_;
  UndoSheetController controller_;
  SheetTable* table_ = nullptr;
  QLabel* logs_ = nullptr;
  QLineEdit* path_ = nullptr;
  QLabel* status_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* open_ = nullptr;
  QPushButton* view_ = nullptr;
  QPushButton* delete_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* redo_ = nullptr;
  QPushButton* close_ = nullptr;
};

UndoSheet::UndoSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "UndoSheet", localized_text("UNDOFILESFOLDERSTITLE")), app_(app), controller_(app) {
  add_hint("UNDOHINT");
  make_table();
  make_log_buttons();
  make_progress();
  undo_ = add_default_button("undoRenaming", "UNDOBUTTON", [this] { controller_.undoRenaming(); });
  close_ = finish_buttons("SHEETCLOSE", [this] { controller_.showHelp(); });
  attach(controller_);
  table_->setFocus();
  resize(fontMetrics().averageCharWidth() * 95, fontMetrics().height() * 30);
  keep_size(*this, app.model().user_defaults());
}

void UndoSheet::make_table() {
  table_ = new SheetTable(
      "logFiles", "LOGLIST",
      {{"logFileName", "LOGCOLUMNNAME"}, {"dateCreated", "LOGCOLUMNDATE"}, {"filesCount", "LOGCOLUMNCOUNT", true}});
  table_->set_empty_text("NOLOGS");
  table_->show_sorted_by(1, false);
  table_->selected = [this](std::optional<std::size_t> row) {
    controller_.tableViewSelectionDidChange(row);
    undo_->setDefault(true);
  };
  table_->sorted = [this](std::string_view column, bool ascending) {
    controller_.sortDescriptorsDidChange(column, ascending);
  };
  add_key(*table_, QKeySequence::Delete, [this] { controller_.deleteLogFile(); });
  connect(table_, &QTreeWidget::itemDoubleClicked, this, [this] { controller_.viewLogFileContent(); });
  rows()->addWidget(table_, 1);
}

void UndoSheet::make_log_buttons() {
  logs_ = plain_label();
  logs_->setObjectName(QStringLiteral("logsLabel"));
  open_ = sheet_button("openLogFile", "OPENLOG", [this] { controller_.openLogFile(); });
  view_ = sheet_button("viewLogFileContent", "VIEWLOG", [this] { controller_.viewLogFileContent(); });
  delete_ = sheet_button("deleteLogFile", "DELETELOG", [this] { controller_.deleteLogFile(); });
  auto* row = new QHBoxLayout;
  row->addWidget(logs_);
  row->addStretch(1);
  redo_ = sheet_button("redo", "REDOBUTTON", [this] { controller_.redo(); });
  for (QPushButton* button : {redo_, open_, view_, delete_}) row->addWidget(button);
  rows()->addLayout(row);
}

void UndoSheet::make_progress() {
  path_ = path_line("currLogFilePath", "LOGPATH");
  rows()->addWidget(line({"LOGPATH", path_}));
  status_ = plain_label();
  status_->setObjectName(QStringLiteral("statusLabel"));
  progress_ = sheet_progress("undoProgress");
  cancel_ = sheet_button("cancelUndo", "SHEETCANCEL", [this] { controller_.cancel(); });
  auto* row = new QHBoxLayout;
  row->addWidget(status_, 1);
  row->addWidget(progress_, 1);
  row->addWidget(cancel_);
  QSizePolicy policy = cancel_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  cancel_->setSizePolicy(policy);
  rows()->addLayout(row);
}

void UndoSheet::show_state() {
  const bool undoing = controller_.isUndoing();
  // The list stays as it is while a log is undone.
  if (!undoing) {
    table_->show_rows(
        controller_.logFiles().size(),
        [this](std::string_view column, std::size_t row) { return controller_.objectValue(column, row); },
        controller_.selected_row());
  }
  logs_->setText(qt_text(controller_.logs_label()));
  show_path(path_, controller_.currLogFilePath());
  status_->setText(in_one_line(qt_text(controller_.status_label())));
  show_progress(progress_, undoing, app_.model().state());
  cancel_->setVisible(undoing);
  const bool has_log = !controller_.logFiles().empty() || !controller_.currLogFilePath().empty();
  for (QPushButton* button : {view_, delete_, undo_}) button->setEnabled(!undoing && has_log);
  const bool was_undoing = !table_->isEnabled();
  table_->setEnabled(!undoing);
  if (was_undoing && !undoing) {
    table_->setFocus();        // which it lost when it was disabled
    close_->setDefault(true);  // the next log is selected: Enter once more must not undo that, too
  }
  open_->setEnabled(!undoing);
  redo_->setEnabled(!undoing);
  close_->setEnabled(!undoing);
}

}  // namespace

void show_undo_sheet(QWidget* parent, BrindleAppController& app) {
  UndoSheet(parent, app).exec();
}

}  // namespace brindle
