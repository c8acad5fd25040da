#pragma once

// The options of the methods where a field alone cannot write them: choices that set the flags which belong together,
// masks, and the lists of extensions. Main thread.

#include <cstdint>
#include <functional>
#include <string_view>

#include "app/window_model.h"
#include "methods/rule.h"

namespace brindle {

class OptionsController {
 public:
  explicit OptionsController(MutableWindowModel& model) : model_(model), settings_(model.settings()) {}

  // The radio buttons of the method tabs (controller_methods.cpp).

  void select_tab(Method method);
  void alphaNumericIncrementDecrementChanged(bool decrement);
  void alphaNumericNumericAlphabeticChanged(bool alphabetic);
  void insertDeleteChanged(bool deletes);
  void insertOptionChanged(std::int32_t option);
  void replaceRemoveChanged(RuleVariant choice);  ///< replace, remove or remove_characters
  /// What goes with the characters: 0 each of them, 1 what lies between occurrences, 2 that and the occurrences.
  void replaceRemoveRemoveTypeChanged(std::int32_t type);
  void prefixSuffixChanged(bool date);
  void dateTimeOptionsChanged(std::int32_t option);
  void dateTimeDateTypeChanged(std::int32_t option);
  void generalOptionsChanged(std::int32_t option);
  void pathComponentsOptionsChanged(std::int32_t option);

  // Masks and extension lists (controller_masks.cpp).

  /// A token button of the audio tab: "<Artist>", …, or a text of the user's own in angle brackets.
  void id3RenamingMaskActions(std::u16string_view entry);
  void id3RenamingMaskRemoveLast();
  void setPhotoMetaDataList(FieldList fields);
  void ExtensionsEditorControllerDidFinish(std::int32_t itemType, TextList extensions);
  /// A mask holds its separators: when one changes, it is made anew from its list. (A record brings its masks along.)
  void rebuild_masks(const SettingsChange& change);

 private:
  const RenameSettings& values() const { return settings_.settings(); }
  void choose(RuleVariant variant, const std::function<void(RenameSettings&)>& edit);

  MutableWindowModel& model_;
  SettingsStore& settings_;
};

}  // namespace brindle
