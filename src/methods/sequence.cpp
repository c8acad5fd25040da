#include "methods/sequence.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <stdexcept>

#include "text/number_text.h"
#include "text/string_utilities.h"

namespace brindle {
namespace {

SequenceParameters common(const SequenceArguments& arguments) {
  return {.increment = arguments.increment,
          .decrement = arguments.decrement,
          .prefix = arguments.prefix,
          .subffix = arguments.subffix,
          .separator = std::u16string(arguments.seperator ? arguments.seperatorString : std::u16string_view()),
          .mask = std::u16string(arguments.addingMask),
          .incrementBy = arguments.incrementBy,
          .decrementBy = arguments.decrementBy};
}

// The value is cut to the mask's width: a mask sets the largest width too.
void append_masked(std::u16string_view value, const std::u16string& mask, std::u16string& out) {
  append_padded(mask.empty() ? value : value.substr(0, mask.size()), mask, out);
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

void append_number(std::int32_t number, const std::u16string& mask, std::u16string& out) {
  std::array<char, 12> digits;
  const char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  std::array<char16_t, 12> units;
  std::copy<const char*>(digits.begin(), end, units.begin());
  append_masked({units.data(), static_cast<std::size_t>(end - digits.data())}, mask, out);
}

void step(const AlphabeticParameters& parameters, std::u16string& counter) {
  if (parameters.decrement) {
    step_down_into_range(counter, std::clamp(parameters.decrementBy, 1, 26));
  } else if (parameters.increment) {
    step_up_into_range(counter, std::clamp(parameters.incrementBy, 1, 26));
  } else if (!isAlphabeticNumericInRange(counter)) {
    throw std::domain_error("the letter counter holds characters other than a to z and is stepped neither up nor down");
  }
}

}  // namespace

NumericParameters::NumericParameters(const SequenceArguments& arguments) : SequenceParameters(common(arguments)) {
  separator = on_disk(separator);
  mask = on_disk(mask);
  incrementBy = std::max(incrementBy, 1);
  decrementBy = std::max(decrementBy, 1);
}

AlphabeticParameters::AlphabeticParameters(const SequenceArguments& arguments)
    : SequenceParameters(common(arguments)) {}

NameOutcome number_name(const NumericParameters& parameters, std::int32_t& numericStartWith, WorkingName& name) {
  const std::int32_t number = std::max(numericStartWith, 0);
  numericStartWith = number;
  const bool replaces = !parameters.prefix && !parameters.subffix;
  if (parameters.prefix || replaces) append_number(number, parameters.mask, name.result);
  if (parameters.prefix) name.result.append(parameters.separator);
  if (!replaces) name.result.append(name.base);
  if (parameters.subffix) {
    name.result.append(parameters.separator);
    append_number(number, parameters.mask, name.result);
  }
  numericStartWith = stepped(parameters, number);
  return NameOutcome::base;
}

NameOutcome letter_name(const AlphabeticParameters& parameters, std::u16string& alphabeticStartWith,
                        WorkingName& name) {
  std::u16string& counter = alphabeticStartWith;
  if (counter.empty()) counter = u"a";
  if (!parameters.mask.empty() && counter.size() > parameters.mask.size()) counter.resize(parameters.mask.size());
  if (parameters.subffix) name.result.append(name.base).append(parameters.separator);
  append_masked(counter, parameters.mask, name.result);
  if (parameters.prefix) name.result.append(parameters.separator).append(name.base);
  step(parameters, counter);
  return NameOutcome::base;
}

bool renameByNumeric(FileSystemItem& item, const NumericParameters& parameters, std::int32_t& numericStartWith,
                     WorkingName& name, std::u16string& error) {
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return number_name(parameters, numericStartWith, working); });
}

bool renameByAlphabetic(FileSystemItem& item, const AlphabeticParameters& parameters,
                        std::u16string& alphabeticStartWith, WorkingName& name, std::u16string& error) {
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return letter_name(parameters, alphabeticStartWith, working); });
}

}  // namespace brindle
