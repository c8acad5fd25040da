// The profile sheet: the saved profiles, and a name for a new one.

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/profile_sheet_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/sheets/sheet_table.h"
#include "window/text.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

class ProfileSheet final : public Sheet {
 public:
  ProfileSheet(QWidget* parent, BrindleAppController& app);

 private:
  void make_new_name();
  void make_table();
  void show_state() override;

  ProfileSheetController controller_;
  SheetTable* table_ = nullptr;
  QLineEdit* name_ = nullptr;
  QPushButton* save_ = nullptr;
  QPushButton* open_ = nullptr;
};

ProfileSheet::ProfileSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "ProfileSheet", localized_text("PROFILETITLE")), controller_(app) {
  add_hint("PROFILEHINT");
  make_table();
  make_new_name();
  open_ = add_default_button("loadProfile", "OPENPROFILE", [this] { controller_.loadProfile(); });
  finish_buttons("SHEETCLOSE", [this] { controller_.showHelp(); });
  controller_.sortDescriptorsDidChange("profileName", true);
  attach(controller_);
  if (!controller_.profiles().empty()) controller_.tableViewSelectionDidChange(0);
  controller_.profiles().empty() ? name_->setFocus() : table_->setFocus();
  resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 26);
  keep_size(*this, app.model().user_defaults());
}

void ProfileSheet::make_table() {
  table_ = new SheetTable("profiles", "PROFILELIST",
                          {{"profileName", "PROFILECOLUMNNAME"}, {"dateCreated", "PROFILECOLUMNDATE"}});
  table_->set_empty_text("NOPROFILES");
  table_->show_sorted_by(0, true);
  table_->selected = [this](std::optional<std::size_t> row) { controller_.tableViewSelectionDidChange(row); };
  table_->sorted = [this](std::string_view column, bool ascending) {
    controller_.sortDescriptorsDidChange(column, ascending);
  };
  connect(table_, &QTreeWidget::itemDoubleClicked, this, [this] { controller_.loadProfile(); });
  add_key(*table_, QKeySequence::Delete, [this] { controller_.deleteProfile(); });
  rows()->addWidget(table_, 1);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(sheet_button("deleteProfile", "DELETEPROFILE", [this] { controller_.deleteProfile(); }));
  rows()->addLayout(row);
}

void ProfileSheet::make_new_name() {
  name_ = new QLineEdit;
  name_->setObjectName(QStringLiteral("newProfileName"));
  name_->setAccessibleName(localized_text("NEWPROFILENAME"));
  name_->setClearButtonEnabled(true);
  save_ = sheet_button("saveProfile", "SAVEPROFILE", [this] { controller_.saveProfile(); });
  save_->setToolTip(localized_text("SAVEPROFILETIP"));
  // Enter means what stands beside the field that one types in.
  connect(name_, &QLineEdit::textChanged, this, [this](const QString& text) {
    controller_.setNewProfileName(utf16(text));
    save_->setDefault(!text.isEmpty());
    open_->setDefault(text.isEmpty());
  });
  rows()->addWidget(line({"NEWPROFILENAME", name_, save_}));
}

void ProfileSheet::show_state() {
  table_->show_rows(
      controller_.profiles().size(),
      [this](std::string_view column, std::size_t row) { return controller_.objectValue(column, row); },
      controller_.selected_row());
  const QString name = qt_text(controller_.newProfileName());
  if (name_->text() != name) name_->setText(name);
}

}  // namespace

void show_profiles_sheet(QWidget* parent, BrindleAppController& app) {
  ProfileSheet(parent, app).exec();
}

}  // namespace brindle
