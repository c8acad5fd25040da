// What to do with the paths that were dropped on the hub.

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/pasteboard_items_controller.h"
#include "texts/string_table.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/url_drops.h"

namespace brindle {
namespace {

constexpr std::size_t most_names = 5;

// The names of the first paths, a line each.
QString names_of(const std::vector<std::string>& paths, const QFontMetrics& metrics) {
  QStringList names;
  for (std::size_t i = 0; i < std::min(paths.size(), most_names); ++i) {
    const QString path = in_one_line(display_path_text(paths[i]));
    names << metrics.elidedText(path, Qt::ElideMiddle, metrics.averageCharWidth() * 56);
  }
  if (paths.size() > most_names) names << qt_text(localized_format("CHOOSEITEMSMORE", paths.size() - most_names));
  return names.join(u'\n');
}

class ChooseItemsSheet final : public Sheet {
 public:
  ChooseItemsSheet(QWidget* parent, BrindleAppController& app, std::vector<std::string> paths);

 private:
  QRadioButton* choice(const char* name, TextKey text, bool folders);
  void show_state() override;

  PasteboardItemsController controller_;
  QLabel* count_ = plain_label(this);
  QLabel* names_ = plain_label(this);
  QRadioButton* files_ = nullptr;
  QRadioButton* folders_ = nullptr;
  QCheckBox* subfolders_ = nullptr;
};

ChooseItemsSheet::ChooseItemsSheet(QWidget* parent, BrindleAppController& app, std::vector<std::string> paths)
    : Sheet(parent, "PasteboardItemsSheet", localized_text("CHOOSEITEMSTITLE")), controller_(app, std::move(paths)) {
  names_->setObjectName(QStringLiteral("droppedNames"));
  names_->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  rows()->addWidget(count_);
  rows()->addWidget(names_);
  rows()->addSpacing(fontMetrics().height() / 2);
  files_ = choice("isFiles", "CHOOSEITEMSFILES", false);
  folders_ = choice("isFolders", "CHOOSEITEMSFOLDERS", true);
  subfolders_ = sheet_check("isProcessSubfolders", "CHOOSEITEMSSUBFOLDERS", controller_.isProcessSubfolders());
  connect(subfolders_, &QCheckBox::toggled, this, [this](bool on) { controller_.setProcessSubfolders(on); });
  rows()->addWidget(subfolders_);
  rows()->addStretch(1);
  add_default_button("applyItems", "CHOOSEITEMSADD", [this] { controller_.apply(); });
  finish_buttons("SHEETCANCEL", [this] { controller_.showHelp(); });
  attach(controller_);
  accept_file_drops(this, [this](const std::vector<std::string>& more) { controller_.add_files(more); });
  files_->setFocus();
}

QRadioButton* ChooseItemsSheet::choice(const char* name, TextKey text, bool folders) {
  auto* button = new QRadioButton(text_with_mnemonic(text));
  button->setObjectName(QString::fromLatin1(name));
  connect(button, &QRadioButton::clicked, this, [this, folders] { controller_.filesFoldersOptionChanged(folders); });
  rows()->addWidget(button);
  return button;
}

void ChooseItemsSheet::show_state() {
  count_->setText(qt_text(localized_format("CHOOSEITEMSCOUNT", controller_.Files().size())));
  names_->setText(names_of(controller_.Files(), fontMetrics()));
  files_->setChecked(controller_.isFiles());
  folders_->setChecked(controller_.isFolders());
  subfolders_->setChecked(controller_.isProcessSubfolders());
}

}  // namespace

void show_choose_items_sheet(QWidget* parent, BrindleAppController& app, std::vector<std::string> paths) {
  ChooseItemsSheet(parent, app, std::move(paths)).exec();
}

}  // namespace brindle
