#pragma once

// Dates that need nothing but numbers, which are nearly all that people put into names and cameras write: written in a
// twentieth and read in a hundredth of the time that the general formatter and parser take.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date.h"

namespace brindle {

inline constexpr std::u16string_view plain_stamp_pattern = u"yyyy-MM-dd HH:mm:ss";

/// "2009-05-17 10:20:30". None for texts of any other form, which the general parser may know. Pure; any thread.
std::optional<WallTime> read_plain_stamp(std::u16string_view text);

/// Immutable; any number of threads may use one.
class NumericDatePattern {
 public:
  /// The words that the field "a" writes.
  struct DayHalves {
    std::u16string before_noon;
    std::u16string after_noon;
  };

  /// None when the pattern has a field other than y, M, d, H, h, K, k, m, s and a, or one in a width that means words.
  static std::optional<NumericDatePattern> compile(std::u16string_view pattern, const DayHalves& halves);

  /// Appends a moment in local time, of the years 1 to 9999.
  void append(std::chrono::local_seconds moment, std::u16string& out) const;

 private:
  struct Field {
    char16_t letter;    // 0 for literal text
    std::size_t width;  // least number of digits
    std::u16string literal;
  };

  void add_field(std::u16string_view run);
  void add_literal(std::u16string_view text);

  std::vector<Field> fields_;
  DayHalves halves_;
};

}  // namespace brindle
