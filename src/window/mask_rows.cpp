#include "window/mask_rows.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "window/sheets.h"
#include "window/text.h"
#include "window/token_strip.h"

namespace brindle {
namespace {

template <class Value>
const Value& value_of(const RenameSettings& settings, SettingKey key) {
  return settings.*std::get<Value RenameSettings::*>(find_setting(key)->member);
}

}  // namespace

TokenStrip* mask_strip(const PanelContext& context, SettingKey list, TextKey hint) {
  auto* strip = new TokenStrip(localized_text(hint));
  strip->setObjectName(qt_text(list));
  strip->setAccessibleName(localized_text("RENAMINGMASK"));
  context.bindings.follow({list}, [strip, list](const RenameSettings& settings) {
    strip->set_fields(value_of<FieldList>(settings, list));
  });
  return strip;
}

void add_switched_text(const PanelContext& context, FormColumn& column, SettingKey flag, TextKey label, SettingKey text,
                       TextKey tip) {
  QLineEdit* field = text_field(context, text, label, 6);
  QCheckBox* box = check_box(context, flag, label);
  box->setToolTip(localized_text(tip));
  field->setToolTip(localized_text(tip));
  column.row(box, field);
  enable_when(context, {flag}, {field}, [flag](const RenameSettings& s) { return value_of<bool>(s, flag); });
}

void add_extensions_row(const PanelContext& context, FormColumn& column, SettingKey list, std::int32_t itemType) {
  // Not bound: the list is edited in its sheet, where a mistake is noticed.
  auto* field = new QLineEdit;
  field->setObjectName(qt_text(list));
  field->setAccessibleName(localized_text("EXTENSIONS"));
  field->setReadOnly(true);
  field->setFocusPolicy(Qt::ClickFocus);
  context.bindings.follow({list}, [field, list](const RenameSettings& settings) {
    QStringList names;
    for (const std::u16string& name : value_of<TextList>(settings, list)) {
      names.append(qt_text(std::u16string_view(name)));
    }
    field->setText(names.join(QStringLiteral("; ")));
    field->setToolTip(in_one_line(field->text()));
    field->setCursorPosition(0);
  });
  QPushButton* edit = push_button(itemType == 0 ? "editPhotoExtensions" : "editAudioExtensions", "EDITMORE",
                                  [field, itemType, &controller = context.controller] {
                                    show_extensions_sheet(field->window(), controller, itemType);
                                  });
  edit->setToolTip(localized_text("EDITEXTENSIONSTIP"));
  column.row("EXTENSIONS", line({field, edit}));
}

}  // namespace brindle
