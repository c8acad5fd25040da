// The program about itself.

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/app_info.h"
#include "texts/string_table.h"
#include "window/icons.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

class AboutSheet final : public Sheet {
 public:
  explicit AboutSheet(QWidget* parent);

 private:
  QLabel* add_text(QVBoxLayout* column, const char* name, const QString& text);
};

AboutSheet::AboutSheet(QWidget* parent) : Sheet(parent, "AboutSheet", localized_text("ABOUTTITLE")) {
  QLabel* picture = plain_label();
  const int side = fontMetrics().height() * 5;
  picture->setPixmap(application_icon().pixmap(QSize(side, side), devicePixelRatioF()));
  picture->setAlignment(Qt::AlignTop);
  picture->setAccessibleName(qt_text(getAppTitle()));
  auto* texts = new QVBoxLayout;
  QLabel* name = add_text(texts, "aboutName", qt_text(getAppTitle()));
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  name->setFont(large);
  add_text(texts, "aboutVersion", qt_text(localized_format("ABOUTVERSION", appVersion())));
  texts->addSpacing(spacing(*this));
  add_text(texts, "aboutText", localized_text("ABOUTTEXT"));
  QLabel* licence = add_text(texts, "aboutLicence", localized_text("ABOUTLICENCE"));
  licence->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
  texts->addStretch(1);
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing(*this) * 3);
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addLayout(texts, 1);
  rows()->addLayout(row);
  finish_buttons("SHEETCLOSE", {})->setDefault(true);
}

QLabel* AboutSheet::add_text(QVBoxLayout* column, const char* name, const QString& text) {
  QLabel* label = plain_label(text);
  label->setObjectName(QString::fromLatin1(name));
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(label);
  return label;
}

}  // namespace

void show_about(QWidget* parent) {
  AboutSheet(parent).exec();
}

}  // namespace brindle
