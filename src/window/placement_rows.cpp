#include "window/placement_rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace brindle {

void add_placement_rows(const PanelContext& context, FormColumn& column, QWidget* owner, const PlacementMembers& place,
                        std::function<void(int)> chosen, std::vector<SettingKey> active_keys, const Condition& active) {
  const auto buttons =
      radio_buttons(context, owner, key_of(place.option),
                    {"ATBEGINNING", "ATEND", "ATPOSITION", "BEFORETHETEXT", "AFTERTHETEXT"}, std::move(chosen));
  NumberField* position = number_field(context, key_of(place.position), "CHARACTERPOSITION");
  QComboBox* direction = direction_box(context, key_of(place.direction));
  QLineEdit* before = text_field(context, key_of(place.before_text), "BEFORETHETEXT", 8);
  NumberField* before_occurrence = number_field(context, key_of(place.before_occurrence), "OCCURRENCE");
  QLineEdit* after = text_field(context, key_of(place.after_text), "AFTERTHETEXT", 8);
  NumberField* after_occurrence = number_field(context, key_of(place.after_occurrence), "OCCURRENCE");

  column.row(buttons[Placement::at_beginning]);
  column.row(buttons[Placement::at_end]);
  column.row(buttons[Placement::at_position], line({position, direction}));
  column.row(buttons[Placement::before_text], line({before, "OCCURRENCE", before_occurrence}));
  column.row(buttons[Placement::after_text], line({after, "OCCURRENCE", after_occurrence}));

  active_keys.push_back(key_of(place.option));
  const auto enable = [&](int option, std::vector<QWidget*> fields) {
    enable_when(context, active_keys, std::move(fields),
                [=, chosen_option = place.option](const RenameSettings& settings) {
                  return (!active || active(settings)) && settings.*chosen_option == option;
                });
  };
  enable(Placement::at_position, {position, direction});
  enable(Placement::before_text, {before, before_occurrence});
  enable(Placement::after_text, {after, after_occurrence});
  if (active) {
    for (QRadioButton* button : buttons) enable_when(context, active_keys, {button}, active);
  }
}

}  // namespace brindle
