#include "methods/sequence.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <stdexcept>

#include "platform/translation.h"
#include "text/number_text.h"
#include "text/string_utilities.h"

namespace brindle {
namespace {

// The value is cut to the mask's width: a mask sets the largest width too.
void append_masked(std::u16string_view value, const std::u16string& mask, WorkingName& name) {
  const bool is_cut = !mask.empty() && value.size() > mask.size();
  if (is_cut) name.note(Warning::cut);
  append_padded(is_cut ? value.substr(0, mask.size()) : value, mask, name.result);
}

std::int32_t stepped(const NumericParameters& parameters, std::int32_t number) {
  std::int64_t next = number;
  if (parameters.decrement) {
    next -= parameters.decrementBy;
  } else if (parameters.increment) {
    next += parameters.incrementBy;
  }
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(next, 0, std::numeric_limits<std::int32_t>::max()));
}

void append_number(std::int32_t number, const std::u16string& mask, WorkingName& name) {
  std::array<char, 12> digits;
  const char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  std::array<char16_t, 12> units;
  std::copy<const char*>(digits.begin(), end, units.begin());
  append_masked({units.data(), static_cast<std::size_t>(end - digits.data())}, mask, name);
}

void step(const AlphabeticParameters& parameters, std::u16string& counter) {
  if (parameters.decrement) {
    step_down_into_range(counter, std::clamp(parameters.decrementBy, 1, 26));
  } else if (parameters.increment) {
    step_up_into_range(counter, std::clamp(parameters.incrementBy, 1, 26));
  } else if (!isAlphabeticNumericInRange(counter)) {
    throw std::domain_error(std::string(
        to_translate("the letter counter holds characters other than a to z and is stepped neither up nor down")));
  }
}

}  // namespace

SequenceCounter counter_start(const RenameSettings& settings) {
  return {integer_of(settings.*number_counter.start), std::u16string(text_of(settings.*letter_counter.start))};
}

SequenceParameters::SequenceParameters(const RenameSettings& settings)
    : increment(settings.isAlphaNumericIncrement),
      decrement(settings.isAlphaNumericDecrement),
      prefix(settings.isAlphaNumericPrefix),
      subffix(settings.isAlphaNumericSufix),
      separator(settings.isAlphaNumericSeperator ? text_of(settings.alphaNumericSeperator) : std::u16string_view()),
      mask(text_of(settings.alphaNumericPaddingMask)),
      incrementBy(integer_of(settings.alphaNumericIncrementBy)),
      decrementBy(integer_of(settings.alphaNumericDecrementBy)) {}

NumericParameters::NumericParameters(const RenameSettings& settings) : SequenceParameters(settings) {
  separator = on_disk(separator);
  mask = on_disk(mask);
  incrementBy = std::max(incrementBy, 1);
  decrementBy = std::max(decrementBy, 1);
}

NameOutcome NumericParameters::make_name(StepRun& run) const {
  return renameByNumeric(*this, run.counter.number, run.name);
}

NameOutcome AlphabeticParameters::make_name(StepRun& run) const {
  return renameByAlphabetic(*this, run.counter.letters, run.name);
}

NameOutcome renameByNumeric(const NumericParameters& parameters, std::int32_t& numericStartWith, WorkingName& name) {
  const std::int32_t number = std::max(numericStartWith, 0);
  numericStartWith = number;
  const bool replaces = !parameters.prefix && !parameters.subffix;
  if (parameters.prefix || replaces) append_number(number, parameters.mask, name);
  if (parameters.prefix) name.result.append(parameters.separator);
  if (!replaces) name.result.append(name.base);
  if (parameters.subffix) {
    name.result.append(parameters.separator);
    append_number(number, parameters.mask, name);
  }
  numericStartWith = stepped(parameters, number);
  return NameOutcome::base;
}

NameOutcome renameByAlphabetic(const AlphabeticParameters& parameters, std::u16string& alphabeticStartWith,
                               WorkingName& name) {
  std::u16string& counter = alphabeticStartWith;
  if (counter.empty()) counter = u"a";
  if (!parameters.mask.empty() && counter.size() > parameters.mask.size()) {
    counter.resize(parameters.mask.size());
    name.note(Warning::cut);
  }
  if (parameters.subffix) name.result.append(name.base).append(parameters.separator);
  append_masked(counter, parameters.mask, name);
  if (parameters.prefix) name.result.append(parameters.separator).append(name.base);
  step(parameters, counter);
  return NameOutcome::base;
}

namespace {

std::shared_ptr<const RenameStep> sequence_step(const RenameSettings& settings, Date now) {
  if (settings.*number_counter.chosen) return step_of<NumericParameters>(settings, now);
  return settings.*letter_counter.chosen ? step_of<AlphabeticParameters>(settings, now) : nullptr;
}

std::optional<RuleVariant> chosen_sequence(const RenameSettings& settings) {
  if (settings.*number_counter.chosen) return RuleVariant::numeric;
  return settings.*letter_counter.chosen ? std::optional(RuleVariant::alphabetic) : std::nullopt;
}

void select_sequence(RenameSettings& settings, RuleVariant variant) {
  settings.*number_counter.chosen = variant == RuleVariant::numeric;
  settings.*letter_counter.chosen = variant == RuleVariant::alphabetic;
  settings.alphaNumericNumericAlphabeticIndex = variant == RuleVariant::alphabetic ? 1 : 0;
  settings.alphaNumericIncrementDecrementIndex = settings.isAlphaNumericDecrement ? 1 : 0;
}

// Stricter for a rule: no step below 1 for letters either, and the first letter is given whatever the kind.
void normalise_sequence(RenameSettings& settings, Purpose purpose) {
  const std::optional<RuleVariant> chosen = chosen_sequence(settings);
  const bool is_rule = purpose == Purpose::rule;
  const bool is_lettered = chosen == RuleVariant::alphabetic;
  for (Text RenameSettings::*const step :
       {&RenameSettings::alphaNumericIncrementBy, &RenameSettings::alphaNumericDecrementBy}) {
    const std::int32_t size = integer_of(settings.*step);
    if (size < 1 && (is_rule || chosen == RuleVariant::numeric)) settings.*step = u"1";
    if (size > 26 && is_lettered) settings.*step = u"26";
  }
  Text& letters = settings.*letter_counter.start;
  if (is_rule ? !letters : is_lettered && is_blank(letters)) letters = u"a";
}

void add_sequence_rows(RuleRows& rows, RuleVariant variant) {
  rows.text("Start With", variant == RuleVariant::numeric ? number_counter.start : letter_counter.start);
  if (rows.settings.isAlphaNumericDecrement) {
    rows.text("Decrement by", &RenameSettings::alphaNumericDecrementBy);
  } else {
    rows.text("Increment by", &RenameSettings::alphaNumericIncrementBy);
  }
  rows.flag("Add as Prefix", &RenameSettings::isAlphaNumericPrefix);
  rows.flag("Add as Suffix", &RenameSettings::isAlphaNumericSufix);
  rows.text_if(&RenameSettings::isAlphaNumericSeperator, "Separator", &RenameSettings::alphaNumericSeperator);
  rows.text_if_any("Padding Mask", &RenameSettings::alphaNumericPaddingMask);
  rows.flag("Reset Sequence On Each Folder", &RenameSettings::isAlphaNumericResetSequenceOnEachFolder);
}

constexpr auto sequence_kinds =
    std::to_array<RuleKind>({{RuleVariant::numeric, u"Numeric"}, {RuleVariant::alphabetic, u"Alphabetic"}});

constexpr auto absent_sequence_options =
    std::to_array<AbsentOption>({{&RenameSettings::alphaNumericPaddingMask}, {&RenameSettings::alphaNumericSeperator}});

}  // namespace

constexpr MethodRow sequence_method = {
    .method = Method::sequence,
    .title = "METHODSEQUENCE",
    .icon = "sequence",
    .rule = u"AlphaNumeric",
    .kinds = sequence_kinds,
    .absent = absent_sequence_options,
    .step = sequence_step,
    .add_rows = add_sequence_rows,
    .chosen = chosen_sequence,
    .select = select_sequence,
    .normalise = normalise_sequence,
    .restarts_in_folder = &RenameSettings::isAlphaNumericResetSequenceOnEachFolder,
};

}  // namespace brindle
