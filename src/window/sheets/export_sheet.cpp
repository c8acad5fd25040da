// The export sheet: which columns of the list go into the file.

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "app/export_sheet_controller.h"
#include "app/list_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

class ExportSheet final : public Sheet {
 public:
  ExportSheet(QWidget* parent, BrindleAppController& app);

 private:
  struct Choice {
    QCheckBox* box;
    bool ExportOptions::*option;
  };
  QWidget* choice(const char* name, TextKey text, bool ExportOptions::*option);
  void make_choices();
  void make_progress();
  void show_state() override;
  /// Escape means the export at hand, while there is one.
  void reject() override { controller_.isExporting() ? controller_.cancel() : Sheet::reject(); }

  BrindleAppController& app_;
  ExportSheetController controller_;
  std::vector<Choice> choices_;
  QProgressBar* progress_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QPushButton* export_ = nullptr;
  QPushButton* close_ = nullptr;
};

ExportSheet::ExportSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "ExportSheet", localized_text("EXPORTFILESTITLE")), app_(app), controller_(app) {
  QLabel* hint = add_hint("EXPORTHINT");
  hint->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  make_choices();
  make_progress();
  export_ = add_default_button("export", "EXPORTBUTTON", [this] { controller_.start_export(); });
  close_ = finish_buttons("SHEETCLOSE", [this] { controller_.showHelp(); });
  attach(controller_);
  export_->setFocus();
}

QWidget* ExportSheet::choice(const char* name, TextKey text, bool ExportOptions::*option) {
  QCheckBox* box = sheet_check(name, text, controller_.options().*option);
  choices_.push_back({box, option});
  connect(box, &QCheckBox::toggled, this, [this, option](bool on) {
    ExportOptions options = controller_.options();
    options.*option = on;
    controller_.setOptions(options);
  });
  return box;
}

void ExportSheet::make_choices() {
  auto* columns = new QGroupBox(localized_text("EXPORTCOLUMNS"));
  auto* column_rows = new QVBoxLayout(columns);
  column_rows->addWidget(choice("isFilename", "EXPORTNAME", &ExportOptions::isFilename));
  column_rows->addWidget(choice("isNewFilename", "EXPORTNEWNAME", &ExportOptions::isNewFilename));
  column_rows->addWidget(choice("isLocation", "EXPORTLOCATION", &ExportOptions::isLocation));
  rows()->addWidget(columns);
  QWidget* full = choice("isIncludeLocation", "EXPORTFULLPATHS", &ExportOptions::isIncludeLocation);
  full->setToolTip(localized_text("EXPORTFULLPATHSTIP"));
  rows()->addWidget(full);
  rows()->addWidget(choice("addColumnNamesInHeader", "EXPORTHEADER", &ExportOptions::addColumnNamesInHeader));
}

void ExportSheet::make_progress() {
  progress_ = sheet_progress("exportProgress");
  cancel_ = sheet_button("cancelExport", "SHEETCANCEL", [this] { controller_.cancel(); });
  QSizePolicy policy = cancel_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  cancel_->setSizePolicy(policy);
  auto* row = new QHBoxLayout;
  row->addWidget(progress_, 1);
  row->addWidget(cancel_);
  rows()->addLayout(row);
  rows()->addStretch(1);
}

void ExportSheet::show_state() {
  const bool exporting = controller_.isExporting();
  for (const auto& [box, option] : choices_) {
    box->setChecked(controller_.options().*option);
    // With full paths the folder has no column of its own.
    const bool stands_for_itself = option != &ExportOptions::isLocation || !controller_.options().isIncludeLocation;
    box->setEnabled(!exporting && stands_for_itself);
  }
  show_progress(progress_, exporting, app_.model().state());
  cancel_->setVisible(exporting);
  export_->setEnabled(!exporting);
  close_->setEnabled(!exporting);
}

}  // namespace

void show_export_sheet(QWidget* parent, BrindleAppController& app) {
  if (app.list().showExport()) ExportSheet(parent, app).exec();
}

}  // namespace brindle
