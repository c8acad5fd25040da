#include "methods/date_time.h"

#include <stdexcept>

#include "platform/date.h"
#include "platform/translation.h"
#include "text/string_utilities.h"

namespace brindle {
namespace {

constexpr std::u16string_view full_date = u"dd/MM/yyyy hh:mm:ss a";

// A text as a literal of a date pattern.
std::u16string quoted(std::u16string_view text) {
  std::u16string literal = u"'";
  append_replaced(text, SearchText(u"'", true), u"''", 1, -1, literal);
  return literal + u'\'';
}

}  // namespace

std::u16string date_time_pattern(const RenameSettings& settings) {
  const bool has_date = settings.hasDateFormat;
  const bool has_time = settings.hasTimeFormat;
  if (!has_date && !has_time) return std::u16string(full_date);
  const DateParts parts = date_parts(settings, date_time_parts);
  std::u16string pattern;
  if (has_date) pattern += pattern_on_disk(date_pattern, parts);
  if (has_date && has_time && !is_blank(settings.dateTimeSeparator)) {
    pattern += quoted(on_disk(*settings.dateTimeSeparator));
  }
  if (has_time) pattern += pattern_on_disk(time_pattern, parts);
  return pattern;
}

DateTimeParameters::DateTimeParameters(const RenameSettings& settings)
    : placement_(settings, date_placement),
      formatter_(date_time_pattern(settings)),
      source_(settings.dateTimeDateOptionIndex),
      custom_date_(settings.dateTimeCustomDate),
      replaces_colons_(settings.isDateTimeColonReplace),
      colon_(u":", true),
      colon_replacement_(on_disk(text_of(settings.dateTimeColonReplace))),
      prefix_(on_disk(text_of(settings.dateTimePrefix))),
      suffix_(on_disk(text_of(settings.dateTimeSuffix))) {}

NameOutcome DateTimeParameters::make_name(StepRun& run) const {
  return renameByDateTime(*this, run.item, run.name);
}

Date DateTimeParameters::date_of(const FileSystemItem& item) const {
  if (source_ == custom_date) return custom_date_;
  if (source_ != creation_date && source_ != modification_date)
    throw std::invalid_argument(std::string(to_translate("no date has been chosen")));
  const Result<FileDates> dates = file_dates(item.disk_path());
  if (!dates.ok())
    throw std::runtime_error(std::string(to_translate("the file's date cannot be read")) + ": " + dates.reason());
  return source_ == creation_date ? dates->creation : dates->modification;
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

NameOutcome renameByDateTime(const DateTimeParameters& parameters, const FileSystemItem& item, WorkingName& name) {
  parameters.write_text(item, name.scratch);
  return parameters.placement().place(name.scratch, name);
}

namespace {

void select_date_flags(RenameSettings& settings, RuleVariant) {
  select_flag(settings, date_placement.flags, settings.*date_placement.option);
}

void add_date_source(RuleRows& rows) {
  switch (rows.settings.dateTimeDateOptionIndex) {
    case creation_date:
      return rows.word("File Date Attributes", "Date Created");
    case modification_date:
      return rows.word("File Date Attributes", "Date Modified");
    default:
      rows.word("Date Source", "Custom Date");
      return rows.text("DATE", format_date(rows.settings.dateTimeCustomDate, full_date));
  }
}

void add_date_time_rows(RuleRows& rows, RuleVariant) {
  const RenameSettings& s = rows.settings;
  add_date_source(rows);
  const DateParts parts = date_parts(s, date_time_parts);
  if (s.hasDateFormat) rows.text("Date Format", date_pattern(parts));
  if (s.hasTimeFormat) rows.text("Time Format", time_pattern(parts));
  if (!s.hasDateFormat && !s.hasTimeFormat) rows.text("DateAndTime Format", full_date);
  if (s.hasDateFormat && s.hasTimeFormat) rows.text_if_any("Separator", &RenameSettings::dateTimeSeparator);
  rows.text_if(&RenameSettings::isDateTimeColonReplace, "Replace colon[:] with character(s)",
               &RenameSettings::dateTimeColonReplace);
  rows.text_if_any("PREFIX", &RenameSettings::dateTimePrefix);
  rows.text_if_any("SUFFIX", &RenameSettings::dateTimeSuffix);
  add_place(rows, date_placement);
}

constexpr auto date_time_kinds = std::to_array<RuleKind>({{RuleVariant::date_time, u"DateTime"}});

constexpr auto absent_date_options = std::to_array<AbsentOption>({
    {&RenameSettings::dateTimeFormatDatePart1},
    {&RenameSettings::dateTimeFormatDateSeperator1},
    {&RenameSettings::dateTimeFormatDatePart2},
    {&RenameSettings::dateTimeFormatDateSeperator2},
    {&RenameSettings::dateTimeFormatDatePart3},
    {&RenameSettings::dateTimeFormatTimePart1},
    {&RenameSettings::dateTimeFormatTimeSeperator1},
    {&RenameSettings::dateTimeFormatTimePart2},
    {&RenameSettings::dateTimeFormatTimeSeperator2},
    {&RenameSettings::dateTimeFormatTimePart3},
    {&RenameSettings::dateTimeColonReplace},
    {&RenameSettings::dateTimeSeparator},
    {&RenameSettings::dateTimePrefix},
    {&RenameSettings::dateTimeSuffix},
});

constexpr auto date_requirements = std::to_array<Requirement>({
    {date_placement.before_text, "DATETIMEATBEFORETEXTINVALIDINPUT", "ENTERSOMETEXT", date_placement.option,
     Placement::before_text},
    {date_placement.after_text, "DATETIMEATAFTERTEXTINVALIDINPUT", "ENTERSOMETEXT", date_placement.option,
     Placement::after_text},
});

}  // namespace

constexpr MethodRow date_time_method = {
    .method = Method::date_time,
    .title = "METHODDATETIME",
    .icon = "date_time",
    .rule = u"Date & Time",
    .kinds = date_time_kinds,
    .absent = absent_date_options,
    .required = date_requirements,
    .step = step_of<DateTimeParameters>,
    .add_rows = add_date_time_rows,
    .select = select_date_flags,
};

}  // namespace brindle
