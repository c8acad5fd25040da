#include "methods/date_time.h"

#include <stdexcept>

#include "platform/date.h"
#include "text/string_utilities.h"

namespace brindle {
namespace {

Placement date_placement(const DateTimeArguments& arguments) {
  return Placement({.option_index = arguments.dateTimeOptionsIndex,
                    .position = arguments.dateTimeAtPositionNo,
                    .direction = arguments.dateTimeAtPositionDirection,
                    .before_text = arguments.dateTimeAtBeforeText,
                    .before_occurrence = arguments.dateTimeAtBeforeTextOccurrence,
                    .after_text = arguments.dateTimeAtAfterText,
                    .after_occurrence = arguments.dateTimeAtAfterTextOccurrence});
}

// A text as a literal of a date pattern.
std::u16string quoted(std::u16string_view text) {
  std::u16string literal = u"'";
  append_replaced(text, SearchText(u"'", true), u"''", 1, -1, literal);
  return literal + u'\'';
}

}  // namespace

std::u16string date_time_pattern(const DateTimeArguments& arguments) {
  if (!arguments.hasDateFormat && !arguments.hasTimeFormat) return u"dd/MM/yyyy hh:mm:ss a";
  const std::u16string seperators[] = {on_disk(arguments.parts.dateSeperator1), on_disk(arguments.parts.dateSeperator2),
                                       on_disk(arguments.parts.timeSeperator1),
                                       on_disk(arguments.parts.timeSeperator2)};
  DateParts parts = arguments.parts;
  parts.dateSeperator1 = seperators[0];
  parts.dateSeperator2 = seperators[1];
  parts.timeSeperator1 = seperators[2];
  parts.timeSeperator2 = seperators[3];
  std::u16string pattern;
  if (arguments.hasDateFormat) pattern += date_pattern(parts);
  const bool both = arguments.hasDateFormat && arguments.hasTimeFormat;
  if (both && !arguments.dateTimeSeparator.empty()) pattern += quoted(on_disk(arguments.dateTimeSeparator));
  if (arguments.hasTimeFormat) pattern += time_pattern(parts);
  return pattern;
}

DateTimeParameters::DateTimeParameters(const DateTimeArguments& arguments)
    : placement_(date_placement(arguments)),
      formatter_(date_time_pattern(arguments)),
      source_(arguments.dateTimeDateOptionIndex),
      custom_date_(arguments.dateTimeCustomDate),
      replaces_colons_(arguments.isDateTimeColonReplace),
      colon_(u":", true),
      colon_replacement_(on_disk(arguments.dateTimeColonReplace)),
      prefix_(on_disk(arguments.dateTimePrefix)),
      suffix_(on_disk(arguments.dateTimeSuffix)) {}

Date DateTimeParameters::date_of(const FileSystemItem& item) const {
  if (source_ == 2 && custom_date_) return *custom_date_;
  if (source_ != 0 && source_ != 1) throw std::invalid_argument("no date has been chosen");
  const Result<FileDates> dates = file_dates(item.disk_path());
  if (!dates.ok()) throw std::runtime_error("the file's date cannot be read: " + dates.reason());
  return source_ == 0 ? dates->creation : dates->modification;
}

void DateTimeParameters::write_text(const FileSystemItem& item, std::u16string& text) const {
  text = prefix_;
  if (replaces_colons_) {
    append_replaced(formatter_.format(date_of(item)), colon_, colon_replacement_, 1, -1, text);
  } else {
    formatter_.append(date_of(item), text);
  }
  text.append(suffix_);
}

NameOutcome date_time(const DateTimeParameters& parameters, const FileSystemItem& item, WorkingName& name) {
  parameters.write_text(item, name.scratch);
  return parameters.placement().place(name.scratch, name);
}

bool renameByDateTime(FileSystemItem& item, const DateTimeParameters& parameters, WorkingName& name,
                      std::u16string& error) {
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return date_time(parameters, item, working); });
}

}  // namespace brindle
