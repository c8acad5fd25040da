#pragma once

// Date and Time: a date of the file, or a date of the user's choice, put into the base of each name.

#include <cstdint>
#include <string>

#include "methods/date_parts.h"
#include "methods/placement.h"
#include "platform/date.h"
#include "text/date_format.h"
#include "text/search_text.h"

namespace brindle {

inline constexpr PlacementMembers date_placement = {
    &RenameSettings::dateTimeOptionsIndex,
    {&RenameSettings::isDateTimeAtBeginning, &RenameSettings::isDateTimeAtEnd, &RenameSettings::isDateTimeAtPosition,
     &RenameSettings::isDateTimeAtBeforeText, &RenameSettings::isDateTimeAtAfterText},
    &RenameSettings::dateTimeAtPositionNo,
    &RenameSettings::dateTimeAtPositionDirection,
    &RenameSettings::dateTimeAtBeforeText,
    &RenameSettings::dateTimeAtBeforeTextOccurrence,
    &RenameSettings::dateTimeAtAfterText,
    &RenameSettings::dateTimeAtAfterTextOccurrence,
};

inline constexpr DatePartMembers date_time_parts = {
    {&RenameSettings::dateTimeFormatDatePart1, &RenameSettings::dateTimeFormatDateSeperator1,
     &RenameSettings::dateTimeFormatDatePart2, &RenameSettings::dateTimeFormatDateSeperator2,
     &RenameSettings::dateTimeFormatDatePart3},
    {&RenameSettings::dateTimeFormatTimePart1, &RenameSettings::dateTimeFormatTimeSeperator1,
     &RenameSettings::dateTimeFormatTimePart2, &RenameSettings::dateTimeFormatTimeSeperator2,
     &RenameSettings::dateTimeFormatTimePart3},
};

/// What dateTimeDateOptionIndex chooses.
enum DateSource : std::int32_t { creation_date = 0, modification_date = 1, custom_date = 2 };

/// The pattern these settings stand for; with neither format "dd/MM/yyyy hh:mm:ss a".
std::u16string date_time_pattern(const RenameSettings& settings);

class DateTimeParameters final : public RenameStep {
 public:
  explicit DateTimeParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  const Placement& placement() const { return placement_; }

  /// Replaces `text` by prefix, date and suffix. Asks the disk for dates of the file. Throws std::system_error when
  /// they cannot be read, std::invalid_argument when no date is chosen, std::runtime_error for an unusable pattern.
  void write_text(const FileSystemItem& item, std::u16string& text) const;

 private:
  Date date_of(const FileSystemItem& item) const;

  Placement placement_;
  DateFormatter formatter_;
  std::int32_t source_;
  Date custom_date_;
  bool replaces_colons_;
  SearchText colon_;
  std::u16string colon_replacement_;
  std::u16string prefix_;
  std::u16string suffix_;
};

NameOutcome renameByDateTime(const DateTimeParameters& parameters, const FileSystemItem& item, WorkingName& name);

extern const MethodRow date_time_method;

}  // namespace brindle
