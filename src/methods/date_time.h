#pragma once

// Date and Time: a date of the file, or a date of the user's choice, put into the base of each name. Parameters are
// immutable; any number of threads may use them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "methods/placement.h"
#include "methods/rename_operation.h"
#include "platform/date.h"
#include "text/date_format.h"
#include "text/date_pattern.h"
#include "text/search_text.h"

namespace brindle {

/// The arguments as the settings hold them. "/" becomes ":" in all texts but the parts.
struct DateTimeArguments {
  std::int32_t dateTimeDateOptionIndex = 0;  ///< 0 creation, 1 modification, 2 the custom date
  std::optional<Date> dateTimeCustomDate = {};
  std::int32_t dateTimeOptionsIndex = 0;  ///< where it goes, as for Insert
  std::int32_t dateTimeAtPositionNo = 1;
  std::int32_t dateTimeAtPositionDirection = 0;
  std::u16string_view dateTimeAtBeforeText = {};
  std::int32_t dateTimeAtBeforeTextOccurrence = 1;
  std::u16string_view dateTimeAtAfterText = {};
  std::int32_t dateTimeAtAfterTextOccurrence = 1;
  bool hasDateFormat = true;
  bool hasTimeFormat = true;  ///< with neither format the pattern is "dd/MM/yyyy hh:mm:ss a"
  DateParts parts = {};
  bool isDateTimeColonReplace = false;  ///< every ":" of the date becomes dateTimeColonReplace
  std::u16string_view dateTimeColonReplace = {};
  std::u16string_view dateTimeSeparator = {};  ///< literally, between date and time when both are there
  std::u16string_view dateTimePrefix = {};     ///< stands before the date
  std::u16string_view dateTimeSuffix = {};
};

/// The pattern these arguments stand for.
std::u16string date_time_pattern(const DateTimeArguments& arguments);

class DateTimeParameters {
 public:
  explicit DateTimeParameters(const DateTimeArguments& arguments);

  const Placement& placement() const { return placement_; }

  /// Replaces `text` by prefix, date and suffix. Asks the disk for dates of the file. Throws std::system_error when
  /// they cannot be read, std::invalid_argument when no date is chosen, std::runtime_error for an unusable pattern.
  void write_text(const FileSystemItem& item, std::u16string& text) const;

 private:
  Date date_of(const FileSystemItem& item) const;

  Placement placement_;
  DateFormatter formatter_;
  std::int32_t source_;
  std::optional<Date> custom_date_;
  bool replaces_colons_;
  SearchText colon_;
  std::u16string colon_replacement_;
  std::u16string prefix_;
  std::u16string suffix_;
};

NameOutcome date_time(const DateTimeParameters& parameters, const FileSystemItem& item, WorkingName& name);

bool renameByDateTime(FileSystemItem& item, const DateTimeParameters& parameters, WorkingName& name,
                      std::u16string& error);

}  // namespace brindle
