#include "methods/prefix_suffix.h"

#include "platform/date.h"
#include "text/string_utilities.h"

namespace brindle {

PrefixSuffixParameters::PrefixSuffixParameters(const PrefixSuffixArguments& arguments)
    : prefix_(arguments.isString ? on_disk(arguments.prefix) : std::u16string(arguments.datePrefix)),
      suffix_(arguments.isString ? on_disk(arguments.suffix) : std::u16string(arguments.dateSuffix)),
      attribute_(arguments.fileDateAttribute),
      is_date_prefix_(arguments.isDatePrefix),
      is_date_suffix_(arguments.isDateSuffix),
      now_(arguments.now) {
  if (!arguments.isString) formatter_.emplace(date_pattern(arguments.parts) + u' ' + time_pattern(arguments.parts));
}

Date PrefixSuffixParameters::date_of(const FileSystemItem& item) const {
  if (attribute_ != 1 && attribute_ != 2) return now_;
  const Result<FileDates> dates = file_dates(item.disk_path());
  if (!dates.ok()) return now_;
  return attribute_ == 1 ? dates->creation : dates->modification;
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

NameOutcome prefix_suffix(const PrefixSuffixParameters& parameters, const FileSystemItem& item, WorkingName& name) {
  const PrefixSuffixParameters::Sides sides = parameters.sides(item, name.scratch);
  name.result.append(sides.before).append(name.base).append(sides.behind);
  return NameOutcome::base;
}

bool renameByPrefixSuffix(FileSystemItem& item, const PrefixSuffixParameters& parameters, WorkingName& name,
                          std::u16string& error) {
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return prefix_suffix(parameters, item, working); });
}

}  // namespace brindle
