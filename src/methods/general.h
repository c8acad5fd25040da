#pragma once

// General: one of twelve transformations of the whole name. Odd options leave the name as it is.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "methods/method_table.h"
#include "text/search_text.h"

namespace brindle {

/// What generalOptionIndex chooses. Any other index changes nothing.
enum class GeneralOption : std::int32_t {
  convert_filename_case = 0,
  convert_extension = 1,
  remove_extension = 2,
  change_extension = 3,  ///< of files; everything else loses its extension
  reverse = 4,           ///< unit by unit
  remove_spaces = 5,
  swap_from_seperator = 6,
  swap_from_position = 7,
  remove_after_string = 8,  ///< keeps the occurrence
  remove_from_string = 9,   ///< drops the occurrence; keeps what follows it where nothing else would be left
  filename_mask = 10,       ///< as long as the mask: padded by its first units, or cut to the last units of the name
  convert_windows_compatible = 11,
};

/// The characters that Windows forbids in names, each with what it finally becomes. They are replaced one after the
/// other, so a replacement that holds a later one of them is itself worked on.
class WindowsReplacements {
 public:
  WindowsReplacements() = default;
  explicit WindowsReplacements(std::u16string_view replacement);

  /// Throws std::length_error when the replacements of replacements would make a text of more than 65,536 units.
  void append_compatible(std::u16string_view text, std::u16string& out) const;

 private:
  static constexpr std::u16string_view forbidden = u"/\\:*?\"<>|";
  std::array<std::u16string, 9> becomes_;
  std::array<bool, 9> too_long_{};
};

/// The chosen option made ready; the texts of other options stay empty.
struct GeneralParameters final : RenameStep {
  explicit GeneralParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;
  bool is_about_extensions() const override {
    return option >= GeneralOption::convert_extension && option <= GeneralOption::change_extension;
  }

  GeneralOption option;
  std::int32_t letter_case = 0;  ///< 1 upper, 2 lower, 3 proper; any other leaves the text alone
  std::int32_t number = 0;       ///< position or occurrence, from 1
  std::u16string text;           ///< new extension or mask; "/" is ":" here and in `search`
  SearchText search;
  WindowsReplacements windows;
};

NameOutcome renameByGeneral(const GeneralParameters& parameters, ItemType type, WorkingName& name);

extern const MethodRow general_method;

}  // namespace brindle
