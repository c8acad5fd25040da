#pragma once

// Numbers the items of a run with a decimal or a letter counter. The caller owns the running counter and hands it from
// item to item; it is written back in every case, whatever becomes of the name. Parameters are immutable; any number of
// threads may use them.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/rename_operation.h"

namespace brindle {

/// The arguments of both sequences as the settings hold them, texts as typed.
struct SequenceArguments {
  bool increment = true;
  bool decrement = false;  ///< wins over increment; with neither the counter stays
  bool prefix = false;     ///< the counter goes before the name
  bool subffix = false;    ///< and/or behind it; with neither it replaces the name
  bool seperator = false;  ///< whether seperatorString stands between counter and name
  std::u16string_view seperatorString = {};
  std::u16string_view addingMask =
      {};  ///< width and padding: its first units stand before a short value, a long one is cut
  std::int32_t incrementBy = 1;
  std::int32_t decrementBy = 1;
};

/// What the two sequences have in common, made ready.
struct SequenceParameters {
  bool increment;
  bool decrement;
  bool prefix;
  bool subffix;
  std::u16string separator;  ///< empty when off
  std::u16string mask;
  std::int32_t incrementBy;
  std::int32_t decrementBy;
};

/// "/" in separator and mask becomes ":". Steps below 1 count as 1.
struct NumericParameters : SequenceParameters {
  explicit NumericParameters(const SequenceArguments& arguments);
};

/// Separator and mask are used as typed. Steps are 1 to 26: what lies outside takes the nearer of the two. Stepping
/// down, "a" is followed by "z".
struct AlphabeticParameters : SequenceParameters {
  explicit AlphabeticParameters(const SequenceArguments& arguments);
};

/// A negative counter counts as 0; stepping down stops at 0 and stepping up at the largest 32-bit value.
NameOutcome number_name(const NumericParameters& parameters, std::int32_t& numericStartWith, WorkingName& name);

/// An empty counter counts as "a"; one longer than the mask is cut to it and goes on from there. With both prefix and
/// subffix the name is written twice, around the counter. Throws std::domain_error when the counter holds anything but
/// a to z and is stepped neither up nor down: it could never be used for counting.
NameOutcome letter_name(const AlphabeticParameters& parameters, std::u16string& alphabeticStartWith, WorkingName& name);

bool renameByNumeric(FileSystemItem& item, const NumericParameters& parameters, std::int32_t& numericStartWith,
                     WorkingName& name, std::u16string& error);
bool renameByAlphabetic(FileSystemItem& item, const AlphabeticParameters& parameters,
                        std::u16string& alphabeticStartWith, WorkingName& name, std::u16string& error);

}  // namespace brindle
