#include "window/placement_rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace brindle {
namespace {

std::int32_t number_of(const RenameSettings& settings, SettingKey key) {
  return settings.*std::get<std::int32_t RenameSettings::*>(find_setting(key)->member);
}

}  // namespace

void add_placement_rows(const PanelContext& context, FormColumn& column, QWidget* owner, const PlacementKeys& keys,
                        std::function<void(int)> chosen, std::vector<SettingKey> active_keys, const Condition& active) {
  const auto buttons =
      radio_buttons(context, owner, keys.option,
                    {"ATBEGINNING", "ATEND", "ATPOSITION", "BEFORETHETEXT", "AFTERTHETEXT"}, std::move(chosen));
  NumberField* position = number_field(context, keys.position, "CHARACTERPOSITION");
  QComboBox* direction = direction_box(context, keys.direction);
  QLineEdit* before = text_field(context, keys.before_text, "BEFORETHETEXT", 8);
  NumberField* before_occurrence = number_field(context, keys.before_occurrence, "OCCURRENCE");
  QLineEdit* after = text_field(context, keys.after_text, "AFTERTHETEXT", 8);
  NumberField* after_occurrence = number_field(context, keys.after_occurrence, "OCCURRENCE");

  column.row(buttons[0]);
  column.row(buttons[1]);
  column.row(buttons[2], line({position, direction}));
  column.row(buttons[3], line({before, "OCCURRENCE", before_occurrence}));
  column.row(buttons[4], line({after, "OCCURRENCE", after_occurrence}));

  active_keys.push_back(keys.option);
  const auto enable = [&](int option, std::vector<QWidget*> fields) {
    enable_when(context, active_keys, std::move(fields), [=, key = keys.option](const RenameSettings& settings) {
      return (!active || active(settings)) && number_of(settings, key) == option;
    });
  };
  enable(2, {position, direction});
  enable(3, {before, before_occurrence});
  enable(4, {after, after_occurrence});
  if (active) {
    for (QRadioButton* button : buttons) enable_when(context, active_keys, {button}, active);
  }
}

}  // namespace brindle
