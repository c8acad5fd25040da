// The handlers of the radio buttons on the method tabs.

#include "app/options_controller.h"

namespace brindle {

// Edits a choice and brings the flags and indexes of its method in line, without leaving the tab shown.
void OptionsController::choose(RuleVariant variant, const std::function<void(RenameSettings&)>& edit) {
  settings_.commit([&](RenameSettings& settings) {
    edit(settings);
    const std::int32_t tab = settings.selectedTab;
    select_variant(settings, variant);
    settings.selectedTab = tab;
  });
}

void OptionsController::select_tab(Method method) {
  settings_.commit([method](RenameSettings& settings) {
    // The list file is forgotten when its tab is left.
    if (selected_method(settings) == Method::from_list && method != Method::from_list) settings.renameFile.reset();
    settings.selectedTab = tab_of(method);
  });
}

void OptionsController::alphaNumericIncrementDecrementChanged(bool decrement) {
  settings_.commit([decrement](RenameSettings& settings) {
    settings.isAlphaNumericIncrement = !decrement;
    settings.isAlphaNumericDecrement = decrement;
    settings.alphaNumericIncrementDecrementIndex = decrement ? 1 : 0;
  });
}

void OptionsController::alphaNumericNumericAlphabeticChanged(bool alphabetic) {
  choose(alphabetic ? RuleVariant::alphabetic : RuleVariant::numeric, [](RenameSettings&) {});
}

void OptionsController::insertDeleteChanged(bool deletes) {
  choose(deletes ? RuleVariant::delete_characters : RuleVariant::insert, [](RenameSettings&) {});
}

void OptionsController::insertOptionChanged(std::int32_t option) {
  choose(RuleVariant::insert, [option](RenameSettings& settings) { settings.insertDeleteInsertOptionIndex = option; });
}

void OptionsController::replaceRemoveChanged(RuleVariant choice) {
  choose(choice, [choice](RenameSettings& settings) {
    settings.isReplaceRemoveRemoveCharacters = choice == RuleVariant::remove_characters;
    // Only with this flag a rule made of these options removes characters too.
    if (choice == RuleVariant::remove_characters) settings.isReplaceRemoveAllOccurrence = true;
  });
  settings_.signal();
}

void OptionsController::replaceRemoveRemoveTypeChanged(std::int32_t type) {
  settings_.commit([type](RenameSettings& settings) { settings.replaceRemoveRemoveType = type; });
}

void OptionsController::prefixSuffixChanged(bool date) {
  settings_.commit([date](RenameSettings& settings) {
    settings.isPrefixSuffixString = !date;
    settings.isPrefixSuffixDate = date;
    settings.prefixSuffixIndex = date ? 1 : 0;
  });
}

void OptionsController::dateTimeOptionsChanged(std::int32_t option) {
  choose(RuleVariant::date_time, [option](RenameSettings& settings) { settings.dateTimeOptionsIndex = option; });
  settings_.signal();
}

void OptionsController::dateTimeDateTypeChanged(std::int32_t option) {
  settings_.commit([option](RenameSettings& settings) {
    settings.dateTimeDateOptionIndex = option;
    settings.hasDateTimeCustomDate = option == 2;
  });
  settings_.signal();
}

void OptionsController::generalOptionsChanged(std::int32_t option) {
  choose(RuleVariant::general, [option](RenameSettings& settings) { settings.generalOptionIndex = option; });
  settings_.signal();
}

void OptionsController::pathComponentsOptionsChanged(std::int32_t option) {
  choose(RuleVariant::path_components,
         [option](RenameSettings& settings) { settings.pathComponentsOptionsIndex = option; });
}

}  // namespace brindle
