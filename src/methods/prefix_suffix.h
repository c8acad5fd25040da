#pragma once

// Prefix and Suffix: a fixed text, or a date of the file, before and/or behind the base of each name. Parameters are
// immutable; any number of threads may use them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "methods/rename_operation.h"
#include "platform/date.h"
#include "text/date_format.h"
#include "text/date_pattern.h"

namespace brindle {

/// The arguments as the settings hold them.
struct PrefixSuffixArguments {
  std::u16string_view prefix = {};     ///< as typed: "/" becomes ":"
  std::u16string_view suffix = {};     ///< as typed: "/" becomes ":"
  bool isString = true;                ///< prefix and suffix; off: the date
  std::int32_t fileDateAttribute = 1;  ///< 1 creation, 2 modification, else the start of the run
  bool isDatePrefix = false;           ///< the date goes before the name
  bool isDateSuffix = false;           ///< and/or behind it
  DateParts parts = {};  ///< used as they are; date and time are always both written, a space between them
  std::u16string_view datePrefix = {};  ///< stands before the date wherever it goes; used as it is
  std::u16string_view dateSuffix = {};
  Date now = {};  ///< the start of the run
};

class PrefixSuffixParameters {
 public:
  explicit PrefixSuffixParameters(const PrefixSuffixArguments& arguments);

  struct Sides {
    std::u16string_view before;
    std::u16string_view behind;
  };

  /// The texts before and behind the name of this item; `text` is where a date is put together, and what the result may
  /// view. Asks the disk for the file's dates; when it cannot tell, the start of the run is used. Throws
  /// std::runtime_error for an unusable pattern.
  Sides sides(const FileSystemItem& item, std::u16string& text) const;

 private:
  Date date_of(const FileSystemItem& item) const;

  std::u16string prefix_;
  std::u16string suffix_;
  std::optional<DateFormatter> formatter_;  // none for texts
  std::int32_t attribute_;
  bool is_date_prefix_;
  bool is_date_suffix_;
  Date now_;
};

NameOutcome prefix_suffix(const PrefixSuffixParameters& parameters, const FileSystemItem& item, WorkingName& name);

bool renameByPrefixSuffix(FileSystemItem& item, const PrefixSuffixParameters& parameters, WorkingName& name,
                          std::u16string& error);

}  // namespace brindle
