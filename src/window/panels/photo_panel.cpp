#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "app/window_model.h"
#include "methods/photo_renaming.h"
#include "window/date_parts_rows.h"
#include "window/mask_rows.h"
#include "window/method_panels.h"
#include "window/sheets.h"
#include "window/text.h"
#include "window/token_strip.h"

namespace brindle {
namespace {

constexpr std::int32_t photo_items = 0;

QWidget* photo_mask_row(const PanelContext& context) {
  TokenStrip* strip = mask_strip(context, "photoMetaDataList", "PHOTOMASKHINT");
  QPushButton* edit = push_button("editPhotoMask", "EDITMASK", [strip, &controller = context.controller] {
    show_photo_mask_sheet(strip->window(), controller);
  });
  edit->setToolTip(localized_text("EDITMASKTIP"));
  return line({"MASKLABEL", strip, edit});
}

}  // namespace

QWidget* make_photo_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::photo, parent);
  panel.head(photo_mask_row(context));
  FormColumn left(panel.columns(), 4);
  left.row("DATEFORMAT", date_picker(context, photo_parts));
  left.row("TIMEFORMAT", time_picker(context, photo_parts));
  add_extensions_row(context, left, "photoExtensions", photo_items);
  FormColumn right(panel.columns(), 3);
  add_switched_text(context, right, "isPhotoRenamingSeperator", "WITHSEPARATOR", "photoRenamingSeperator",
                    "MASKSEPARATORTIP");
  add_switched_text(context, right, "isPhotoRenamingColonReplace", "REPLACECOLONS", "photoRenamingColonReplace",
                    "REPLACECOLONSTIP");
  QLineEdit* padding = text_field(context, "photoPaddingMask", "NUMBERPADDING", 6);
  padding->setPlaceholderText(QStringLiteral("000"));
  padding->setToolTip(localized_text("PHOTOPADDINGTIP"));
  right.row("NUMBERPADDING", padding);
  right.row(check_box(context, "isPhotoResetSequenceOnEachFolder", "RESTARTINFOLDER"));
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
