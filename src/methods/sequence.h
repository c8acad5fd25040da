#pragma once

// Numbers the items of a run with a decimal or a letter counter. The caller owns the running counter and hands it from
// item to item; it is written back in every case, whatever becomes of the name.

#include <cstdint>
#include <string>

#include "methods/method_table.h"

namespace brindle {

/// The settings of one counter beside those that both have.
struct CounterMembers {
  bool RenameSettings::*chosen;
  Text RenameSettings::*start;
};
inline constexpr CounterMembers number_counter = {&RenameSettings::isAlphaNumericNumeric,
                                                  &RenameSettings::alphaNumericNumericStartWith};
inline constexpr CounterMembers letter_counter = {&RenameSettings::isAlphaNumericAlphabetic,
                                                  &RenameSettings::alphaNumericAlphabeticStartWith};

/// Where the counters of these settings start.
SequenceCounter counter_start(const RenameSettings& settings);

/// What the two sequences have in common.
struct SequenceParameters : RenameStep {
  explicit SequenceParameters(const RenameSettings& settings);

  bool increment;
  bool decrement;            ///< wins over increment; with neither the counter stays
  bool prefix;               ///< the counter goes before the name
  bool subffix;              ///< and/or behind it; with neither it replaces the name
  std::u16string separator;  ///< between counter and name; empty when off
  std::u16string mask;       ///< its first units stand before a short value, its length is the largest width
  std::int32_t incrementBy;
  std::int32_t decrementBy;
};

/// "/" in separator and mask becomes ":". Steps below 1 count as 1.
struct NumericParameters final : SequenceParameters {
  explicit NumericParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;
};

/// Separator and mask are used as typed. Steps are 1 to 26: what lies outside takes the nearer of the two. Stepping
/// down, "a" is followed by "z".
struct AlphabeticParameters final : SequenceParameters {
  using SequenceParameters::SequenceParameters;
  NameOutcome make_name(StepRun& run) const override;
};

/// A negative counter counts as 0; stepping down stops at 0 and stepping up at the largest 32-bit value.
NameOutcome renameByNumeric(const NumericParameters& parameters, std::int32_t& numericStartWith, WorkingName& name);

/// An empty counter counts as "a"; one longer than the mask is cut to it and goes on from there. With both prefix and
/// subffix the name is written twice, around the counter. Throws std::domain_error when the counter holds anything but
/// a to z and is stepped neither up nor down: it could never be used for counting.
NameOutcome renameByAlphabetic(const AlphabeticParameters& parameters, std::u16string& alphabeticStartWith,
                               WorkingName& name);

extern const MethodRow sequence_method;

}  // namespace brindle
