#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>
#include <array>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

// In the order of the buttons, which `removeReplaceIndex` counts.
constexpr std::array choices = {RuleVariant::replace, RuleVariant::remove, RuleVariant::remove_characters};
constexpr std::int32_t single_characters = 0;  // of the remove type

RuleVariant choice_of(const RenameSettings& settings) {
  if (settings.isReplaceRemoveReplace) return RuleVariant::replace;
  return settings.isReplaceRemoveRemoveCharacters ? RuleVariant::remove_characters : RuleVariant::remove;
}
bool replaces(const RenameSettings& settings) {
  return choice_of(settings) == RuleVariant::replace;
}
bool removes_characters(const RenameSettings& settings) {
  return choice_of(settings) == RuleVariant::remove_characters;
}
// Whether occurrences are counted at all, and whether from one to another.
bool counts(const RenameSettings& settings) {
  return !removes_characters(settings) || settings.replaceRemoveRemoveType != single_characters;
}
bool counts_some(const RenameSettings& settings) {
  return counts(settings) && (removes_characters(settings) || !settings.isReplaceRemoveAllOccurrence);
}
const std::vector<SettingKey> choice_keys = {"isReplaceRemoveReplace", "isReplaceRemoveRemove",
                                             "isReplaceRemoveRemoveCharacters", "replaceRemoveRemoveType",
                                             "isReplaceRemoveAllOccurrence"};

void add_text_rows(const PanelContext& context, FormColumn& column) {
  column.row("FINDTHIS", text_field(context, "replaceRemoveThis", "FINDTHIS"));
  QLineEdit* with = text_field(context, "replaceRemoveWith", "REPLACEWITH");
  column.row("REPLACEWITH", with);
  BrindleAppController& controller = context.controller;
  QComboBox* type = choice_box(context, "replaceRemoveRemoveType", "REMOVETYPE",
                               {{"REMOVEEACH", {}}, {"REMOVEBETWEEN", {}}, {"REMOVEBETWEENTOO", {}}});
  QObject::connect(type, &QComboBox::activated, type,
                   [&controller](int index) { controller.options().replaceRemoveRemoveTypeChanged(index); });
  column.row("REMOVETYPE", type);
  column.row(check_box(context, "isReplaceRemoveCaseSensitive", "CASESENSITIVE"));
  enable_when(context, choice_keys, {with}, replaces);
  enable_when(context, choice_keys, {type}, removes_characters);
}

void add_range_rows(const PanelContext& context, FormColumn& column) {
  column.row("COUNTFROM", line({direction_box(context, "replaceRemovePositionDirection")}));
  column.row("STARTATCHARACTER", line({number_field(context, "replaceRemoveStartFromCharacter", "STARTATCHARACTER")}));
  QCheckBox* all = check_box(context, "isReplaceRemoveAllOccurrence", "ALLOCCURRENCES");
  NumberField* first = number_field(context, "replaceRemoveStartOnOccurrence", "FIRSTOCCURRENCE");
  NumberField* count = number_field(context, "replaceRemoveOccuranceCount", "OCCURRENCECOUNT");
  column.row(all);
  column.row("FIRSTOCCURRENCE", line({first}));
  column.row("OCCURRENCECOUNT", line({count}));
  enable_when(context, choice_keys, {all}, [](const RenameSettings& s) { return !removes_characters(s); });
  enable_when(context, choice_keys, {first, count}, counts_some);
}

}  // namespace

QWidget* make_replace_remove_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::replace_remove, parent);
  BrindleAppController& controller = context.controller;
  const auto kinds =
      radio_buttons(context, panel.widget(), "removeReplaceIndex", {"REPLACETEXT", "REMOVETEXT", "REMOVECHARACTERS"},
                    [&controller](int button) {
                      controller.options().replaceRemoveChanged(choices.at(static_cast<std::size_t>(button)));
                    });
  // The flags decide what is done, not the index.
  context.bindings.follow({"removeReplaceIndex", "isReplaceRemoveReplace", "isReplaceRemoveRemoveCharacters"},
                          [kinds](const RenameSettings& settings) {
                            const auto* chosen = std::ranges::find(choices, choice_of(settings));
                            kinds[static_cast<std::size_t>(chosen - choices.begin())]->setChecked(true);
                          });
  panel.head(line({kinds[0], kinds[1], kinds[2]}));
  FormColumn left(panel.columns());
  add_text_rows(context, left);
  FormColumn right(panel.columns());
  add_range_rows(context, right);
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
