#include "settings/run_choices.h"

#include <algorithm>

#include "platform/file_name.h"

namespace brindle {
namespace {

constexpr std::u16string_view on_problem_key = u"onProblem";
constexpr std::u16string_view number_pattern_key = u"numberPattern";
constexpr std::u16string_view permute_key = u"permute";

template <class T>
const T* find(const SettingsRecord& record, std::u16string_view key) {
  const PropertyValue* const value = record.find(key);
  return value == nullptr ? nullptr : value->get_if<T>();
}

}  // namespace

void put_choices(SettingsRecord& record, const RunChoices& choices) {
  const RunChoices usual;
  if (choices.on_problem != usual.on_problem)
    record.set(on_problem_key, decode_file_name(on_problem_words[static_cast<std::size_t>(choices.on_problem)]));
  if (choices.number_pattern != usual.number_pattern) record.set(number_pattern_key, choices.number_pattern);
  if (choices.permute != usual.permute) record.set(permute_key, choices.permute);
}

RunChoices choices_in(const SettingsRecord& record) {
  RunChoices choices;
  if (const auto* word = find<std::u16string>(record, on_problem_key)) {
    const auto* const found = std::ranges::find(on_problem_words, to_utf8(*word));
    if (found != on_problem_words.end()) choices.on_problem = static_cast<OnProblem>(found - on_problem_words.begin());
  }
  const auto* pattern = find<std::u16string>(record, number_pattern_key);
  if (pattern != nullptr && is_number_pattern(*pattern)) choices.number_pattern = *pattern;
  if (const auto* permute = find<bool>(record, permute_key)) choices.permute = *permute;
  return choices;
}

}  // namespace brindle
