#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// A date pattern such as "yyyy-MM-dd" taken apart: part, separator, part, separator, part. A part is a run of one
/// letter; what stands between, '…' included, is a separator. Absent parts are "None". None when the pattern does not
/// begin with a part, has more than three, or goes on behind the third.
std::optional<std::array<std::u16string, 5>> split_pattern(std::u16string_view pattern);

}  // namespace brindle
