#include "methods/prefix_suffix.h"

#include "platform/date.h"
#include "text/string_utilities.h"

namespace brindle {

PrefixSuffixParameters::PrefixSuffixParameters(const RenameSettings& settings, Date now)
    : prefix_(settings.isPrefixSuffixString ? on_disk(text_of(settings.prefixSuffixPrefix))
                                            : std::u16string(text_of(settings.prefixSuffixDatePrefix))),
      suffix_(settings.isPrefixSuffixString ? on_disk(text_of(settings.prefixSuffixSuffix))
                                            : std::u16string(text_of(settings.prefixSuffixDateSuffix))),
      attribute_(settings.prefixSuffixFileDateAttribute),
      is_date_prefix_(settings.isPrefixSuffixDatePrefix),
      is_date_suffix_(settings.isPrefixSuffixDateSuffix),
      now_(now) {
  if (settings.isPrefixSuffixString) return;
  const DateParts parts = date_parts(settings, prefix_suffix_parts);
  formatter_.emplace(date_pattern(parts) + u' ' + time_pattern(parts));
}

NameOutcome PrefixSuffixParameters::make_name(StepRun& run) const {
  return renameByPrefixSuffix(*this, run.item, run.name);
}

Date PrefixSuffixParameters::date_of(const FileSystemItem& item) const {
  if (attribute_ != date_created && attribute_ != date_modified) return now_;
  const Result<FileDates> dates = file_dates(item.disk_path());
  if (!dates.ok()) return now_;
  return attribute_ == date_created ? dates->creation : dates->modification;
}

PrefixSuffixParameters::Sides PrefixSuffixParameters::sides(const FileSystemItem& item, std::u16string& text) const {
  if (!formatter_) return {prefix_, suffix_};
  text.clear();
  if (is_date_prefix_ || is_date_suffix_) {
    text.append(prefix_);
    formatter_->append(date_of(item), text);
    text.append(suffix_);
  }
  const std::u16string_view date = text;
  return {is_date_prefix_ ? date : date.substr(0, 0), is_date_suffix_ ? date : date.substr(0, 0)};
}

NameOutcome renameByPrefixSuffix(const PrefixSuffixParameters& parameters, const FileSystemItem& item,
                                 WorkingName& name) {
  const PrefixSuffixParameters::Sides sides = parameters.sides(item, name.scratch);
  name.result.append(sides.before).append(name.base).append(sides.behind);
  return NameOutcome::base;
}

namespace {

std::shared_ptr<const RenameStep> prefix_suffix_step(const RenameSettings& settings, Date now) {
  return std::make_shared<const PrefixSuffixParameters>(settings, now);
}

std::optional<RuleVariant> chosen_prefix(const RenameSettings& settings) {
  return settings.isPrefixSuffixString ? RuleVariant::as_string : RuleVariant::as_date;
}

void select_prefix(RenameSettings& settings, RuleVariant variant) {
  settings.prefixSuffixIndex = variant == RuleVariant::as_date ? 1 : 0;
}

void add_prefix_rows(RuleRows& rows, RuleVariant variant) {
  const bool is_date = variant == RuleVariant::as_date;
  if (is_date) {
    const std::int32_t date = rows.settings.prefixSuffixFileDateAttribute;
    rows.word("File Date Attributes", date == date_created    ? "Date Created"
                                      : date == date_modified ? "Date Modified"
                                                              : "Current Date");
    const DateParts parts = date_parts(rows.settings, prefix_suffix_parts);
    rows.text("DateAndTime Format", date_pattern(parts) + u" " + time_pattern(parts));
    rows.flag("Add as Prefix", &RenameSettings::isPrefixSuffixDatePrefix);
    rows.flag("Add as Suffix", &RenameSettings::isPrefixSuffixDateSuffix);
  }
  rows.text_if_any("PREFIX", is_date ? &RenameSettings::prefixSuffixDatePrefix : &RenameSettings::prefixSuffixPrefix);
  rows.text_if_any("SUFFIX", is_date ? &RenameSettings::prefixSuffixDateSuffix : &RenameSettings::prefixSuffixSuffix);
}

constexpr auto prefix_kinds =
    std::to_array<RuleKind>({{RuleVariant::as_string, u"As String"}, {RuleVariant::as_date, u"As Date"}});

constexpr auto absent_prefix_options = std::to_array<AbsentOption>({
    {&RenameSettings::prefixSuffixPrefix},
    {&RenameSettings::prefixSuffixSuffix},
    {&RenameSettings::prefixSuffixDateSeperator1},
    {&RenameSettings::prefixSuffixDateSeperator2},
    {&RenameSettings::prefixSuffixTimeSeperator1},
    {&RenameSettings::prefixSuffixTimeSeperator2},
    {&RenameSettings::prefixSuffixDatePrefix},
    {&RenameSettings::prefixSuffixDateSuffix},
});

}  // namespace

constexpr MethodRow prefix_suffix_method = {
    .method = Method::prefix_suffix,
    .title = "METHODPREFIXSUFFIX",
    .icon = "prefix_suffix",
    .rule = u"PrefixSuffix",
    .kinds = prefix_kinds,
    .absent = absent_prefix_options,
    .step = prefix_suffix_step,
    .add_rows = add_prefix_rows,
    .chosen = chosen_prefix,
    .select = select_prefix,
};

}  // namespace brindle
