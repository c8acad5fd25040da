// The preferences: the folders of the user's data, and what the program does by itself.

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/preferences_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

using Browse = std::optional<std::string> (PreferencesController::*)(const std::string& current);

class PreferencesSheet final : public Sheet {
 public:
  PreferencesSheet(QWidget* parent, BrindleAppController& app);

 private:
  void make_folders();
  void add_folder(QFormLayout* form, const char* name, TextKey label, std::string Preferences::*folder, Browse browse);
  void make_flags();
  void apply();

  BrindleAppController& app_;
  Preferences edited_;
  QCheckBox* saves_profile_ = nullptr;
  QCheckBox* shows_hub_ = nullptr;
  QCheckBox* hidden_ = nullptr;
};

PreferencesSheet::PreferencesSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "PreferencesSheet", localized_text("PREFERENCESTITLE")),
      app_(app),
      edited_(app.model().preferences()) {
  make_folders();
  make_flags();
  rows()->addStretch(1);
  add_default_button("applyPreferences", "OK", [this] { apply(); });
  finish_buttons("SHEETCANCEL", [this] { app_.model().ports().desktop.show_help("Preferences.html"); });
  keep_size(*this, app.model().user_defaults());
}

void PreferencesSheet::make_folders() {
  auto* folders = new QGroupBox(localized_text("PREFERENCESFOLDERS"));
  auto* form = new QFormLayout(folders);
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  add_folder(form, "defaultLogFolderPath", "PREFERENCESLOGS", &Preferences::defaultLogFolderPath,
             &PreferencesController::browseLogFolderPath);
  add_folder(form, "defaultProfileFolderPath", "PREFERENCESPROFILES", &Preferences::defaultProfileFolderPath,
             &PreferencesController::browseProfileFolderPath);
  add_folder(form, "defaultRulesFolderPath", "PREFERENCESRULES", &Preferences::defaultRulesFolderPath,
             &PreferencesController::browseRulesFolderPath);
  rows()->addWidget(folders);
}

void PreferencesSheet::add_folder(QFormLayout* form, const char* name, TextKey label, std::string Preferences::*folder,
                                  Browse browse) {
  const std::string id = name;
  QLineEdit* path = path_line(id, label);
  show_path(path, edited_.*folder);
  QPushButton* chooses = sheet_button(id + "_browse", "PREFERENCESBROWSE", [this, path, folder, browse] {
    const std::optional<std::string> chosen = (app_.preferences().*browse)(edited_.*folder);
    if (!chosen) return;
    edited_.*folder = *chosen;
    show_path(path, *chosen);
  });
  QPushButton* resets = sheet_button(id + "_reset", "PREFERENCESDEFAULT", [this, path, folder] {
    edited_.*folder = default_preferences().*folder;
    show_path(path, edited_.*folder);
  });
  const QString about = localized_text(label);
  chooses->setAccessibleName(localized_text("PREFERENCESBROWSE") + QStringLiteral(" ") + about);
  resets->setAccessibleName(localized_text("PREFERENCESDEFAULT") + QStringLiteral(" ") + about);
  resets->setToolTip(localized_text("PREFERENCESDEFAULTTIP"));
  QLabel* text = plain_label(text_with_mnemonic(label) + QLatin1Char(':'));
  text->setBuddy(path);
  auto* field = new QHBoxLayout;
  field->addWidget(path, 1);
  field->addWidget(chooses);
  field->addWidget(resets);
  form->addRow(text, field);
}

void PreferencesSheet::make_flags() {
  saves_profile_ = sheet_check("automaticSaveCurrProfile", "PREFERENCESAUTOSAVE", edited_.automaticSaveCurrProfile);
  shows_hub_ = sheet_check("isShowHubIcon", "PREFERENCESHUB", edited_.isShowHubIcon);
  shows_hub_->setToolTip(localized_text("PREFERENCESHUBTIP"));
  hidden_ = sheet_check("includeHidden", "PREFERENCESHIDDEN", app_.model().include_hidden());
  hidden_->setToolTip(localized_text("PREFERENCESHIDDENTIP"));
  for (QCheckBox* box : {saves_profile_, shows_hub_, hidden_}) rows()->addWidget(box);
}

void PreferencesSheet::apply() {
  edited_.automaticSaveCurrProfile = saves_profile_->isChecked();
  edited_.isShowHubIcon = shows_hub_->isChecked();
  if (hidden_->isChecked() != app_.model().include_hidden()) app_.preferences().setIncludeHidden(hidden_->isChecked());
  app_.preferences().setPreferences(edited_);
  accept();
}

}  // namespace

void show_preferences_sheet(QWidget* parent, BrindleAppController& app) {
  PreferencesSheet(parent, app).exec();
}

}  // namespace brindle
