#pragma once

// The one form in which cameras write dates, read in a fiftieth of the time that the general parser takes.

#include <unicode/timezone.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/date.h"

namespace brindle {

/// Reads local times of one zone. An object belongs to one thread.
class PlainStampReader {
 public:
  static constexpr std::u16string_view pattern = u"yyyy-MM-dd HH:mm:ss";

  explicit PlainStampReader(const icu::TimeZone& zone) : zone_(zone.clone()) {}

  /// The moment of "2009-05-17 10:20:30". None where only the general parser knows the answer: for texts of any other
  /// form, years before 1900, and moments within a day or so of a change of the clocks.
  std::optional<Date> read(std::u16string_view text);

 private:
  void find_span(Date moment);
  bool is_inside_span(Date moment) const;

  std::shared_ptr<const icu::TimeZone> zone_;
  // The clocks go unchanged from one moment to the other.
  Date span_start_{};
  Date span_end_{};
  std::chrono::milliseconds offset_{0};
};

}  // namespace brindle
