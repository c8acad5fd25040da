#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "app/list_controller.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

QWidget* file_row(const PanelContext& context, QWidget* panel) {
  auto* file = new QLineEdit;
  file->setObjectName(QStringLiteral("renameFile"));
  file->setAccessibleName(localized_text("LISTFILE"));
  file->setReadOnly(true);
  file->setPlaceholderText(localized_text("NOLISTFILE"));
  context.bindings.follow({"renameFile"}, [file](const RenameSettings& settings) {
    file->setText(settings.renameFile ? qt_text(std::u16string_view(*settings.renameFile)) : QString());
    file->setToolTip(in_one_line(file->text()));
  });
  QPushButton* choose = push_button("browseRenameFile", "CHOOSEMORE", [&controller = context.controller, panel] {
    controller.list().browseRenameFile();
    auto* load = panel->findChild<QWidget*>(QStringLiteral("loadRenameFile"));
    if (load != nullptr && load->isEnabled()) load->setFocus();
  });
  return line({file, choose});
}

}  // namespace

QWidget* make_from_list_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::from_list, parent);
  BrindleAppController& controller = context.controller;
  // Chosen here for the list that is about to be loaded; the window's own choice follows when it is.
  const auto kinds = radio_buttons(context, panel.widget(), "isFolders", {"FILES", "FOLDERS"}, [](int) {});
  QPushButton* load = push_button("loadRenameFile", "LOADLIST",
                                  [kinds, &controller] { controller.list().loadRenameFile(kinds[1]->isChecked()); });
  load->setAutoDefault(true);  // Enter presses it, too
  enable_when(context, {"renameFile"}, {load}, [](const RenameSettings& s) { return !is_blank(s.renameFile); });
  FormColumn column(panel.columns());
  column.row("LISTFILE", file_row(context, panel.widget()));
  column.row("LISTHOLDS", line({kinds[0], kinds[1]}));
  column.row(new QWidget, line({load}));
  column.row(new QWidget, hint_label("LISTFORMAT"));
  return panel.widget();
}

}  // namespace brindle
