#pragma once

// Prefix and Suffix: a fixed text, or a date of the file, before and/or behind the base of each name.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "methods/date_parts.h"
#include "methods/method_table.h"
#include "platform/date.h"
#include "text/date_format.h"

namespace brindle {

/// Used as they are; date and time are always both written, a space between them.
inline constexpr DatePartMembers prefix_suffix_parts = {
    {&RenameSettings::prefixSuffixDatePart1, &RenameSettings::prefixSuffixDateSeperator1,
     &RenameSettings::prefixSuffixDatePart2, &RenameSettings::prefixSuffixDateSeperator2,
     &RenameSettings::prefixSuffixDatePart3},
    {&RenameSettings::prefixSuffixTimePart1, &RenameSettings::prefixSuffixTimeSeperator1,
     &RenameSettings::prefixSuffixTimePart2, &RenameSettings::prefixSuffixTimeSeperator2,
     &RenameSettings::prefixSuffixTimePart3},
};

/// What prefixSuffixFileDateAttribute chooses; any other number is the start of the run as well.
enum DateAttribute : std::int32_t { date_of_now = 0, date_created = 1, date_modified = 2 };

class PrefixSuffixParameters final : public RenameStep {
 public:
  /// `now` is the start of the run.
  PrefixSuffixParameters(const RenameSettings& settings, Date now);
  NameOutcome make_name(StepRun& run) const override;

  struct Sides {
    std::u16string_view before;
    std::u16string_view behind;
  };

  /// The texts before and behind the name of this item; `text` is where a date is put together, and what the result may
  /// view. Asks the disk for the file's dates; when it cannot tell, the start of the run is used. Throws
  /// std::runtime_error for an unusable pattern.
  Sides sides(const FileSystemItem& item, std::u16string& text) const;

 private:
  Date date_of(const FileSystemItem& item) const;

  std::u16string prefix_;  // of the date as typed, of the name with "/" turned to ":"
  std::u16string suffix_;
  std::optional<DateFormatter> formatter_;  // none for texts
  std::int32_t attribute_;
  bool is_date_prefix_;
  bool is_date_suffix_;
  Date now_;
};

NameOutcome renameByPrefixSuffix(const PrefixSuffixParameters& parameters, const FileSystemItem& item,
                                 WorkingName& name);

extern const MethodRow prefix_suffix_method;

}  // namespace brindle
