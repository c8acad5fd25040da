// What the live preview does.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/preview_controller.h"
#include "app/window_model.h"
#include "settings/field_filter.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

constexpr std::int32_t usual_limit = 2500;

// A field of a whole number: what is no number is not taken, and an empty one becomes the usual number when it is left.
QLineEdit* limit_field(const std::u16string& value) {
  auto* field = new QLineEdit(qt_text(value));
  field->setObjectName(QStringLiteral("livePreviewFilesLimit"));
  field->setAccessibleName(localized_text("LIVEPREVIEWLIMIT"));
  field->setMaximumWidth(field->fontMetrics().averageCharWidth() * 14);
  field->setAlignment(Qt::AlignRight);
  QObject::connect(field, &QLineEdit::textEdited, field, [field](const QString& text) {
    if (text.isEmpty()) return;
    const QString number = qt_text(numeric_field_text(utf16(text), usual_limit));
    if (number != text) field->setText(number);
  });
  QObject::connect(field, &QLineEdit::editingFinished, field,
                   [field] { field->setText(qt_text(numeric_field_text(utf16(field->text()), usual_limit))); });
  return field;
}

class LivePreviewSheet final : public Sheet {
 public:
  LivePreviewSheet(QWidget* parent, BrindleAppController& app);

 private:
  void show_what_counts();
  void apply();

  BrindleAppController& app_;
  QCheckBox* enabled_;
  QCheckBox* all_files_;
  QLineEdit* limit_;
  QWidget* limit_row_ = nullptr;
};

LivePreviewSheet::LivePreviewSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "LivePreviewSheet", localized_text("LIVEPREVIEWTITLE")),
      app_(app),
      enabled_(
          sheet_check("isLivePreviewEnabled", "LIVEPREVIEWENABLED", app.model().live_preview().isLivePreviewEnabled)),
      all_files_(sheet_check("isLivePreviewAllFiles", "LIVEPREVIEWALLITEMS",
                             app.model().live_preview().isLivePreviewAllFiles)),
      limit_(limit_field(app.model().live_preview().livePreviewFilesLimit)) {
  add_hint("LIVEPREVIEWHINT")->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  limit_row_ = line({"LIVEPREVIEWLIMIT", limit_});
  for (QWidget* row : {static_cast<QWidget*>(enabled_), static_cast<QWidget*>(all_files_), limit_row_})
    rows()->addWidget(row);
  rows()->addStretch(1);
  add_default_button("applyLivePreview", "OK", [this] { apply(); });
  finish_buttons("SHEETCANCEL", [this] { app_.model().ports().desktop.show_help("Live-preview.html"); });
  connect(enabled_, &QCheckBox::toggled, this, [this] { show_what_counts(); });
  connect(all_files_, &QCheckBox::toggled, this, [this] { show_what_counts(); });
  show_what_counts();
}

void LivePreviewSheet::show_what_counts() {
  all_files_->setEnabled(enabled_->isChecked());
  limit_row_->setEnabled(enabled_->isChecked() && !all_files_->isChecked());
}

void LivePreviewSheet::apply() {
  LivePreviewPreferences preferences;
  preferences.isLivePreviewEnabled = enabled_->isChecked();
  preferences.isLivePreviewAllFiles = all_files_->isChecked();
  preferences.livePreviewFilesLimit = numeric_field_text(utf16(limit_->text()), usual_limit);
  app_.preview().setLivePreviewPreferences(preferences);
  accept();
}

}  // namespace

void show_live_preview_sheet(QWidget* parent, BrindleAppController& app) {
  LivePreviewSheet(parent, app).exec();
}

}  // namespace brindle
