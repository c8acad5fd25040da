#pragma once

// Names as a disk that ignores letter case and the way letters are composed would compare them: each in one form (NFC,
// then simple case folding), so that "Café" and "CAFÉ", composed or not, are one. Pure; any thread.

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

/// A hash of the folded name (bytes): names that fold to the same text have the same. Plain ASCII takes a few
/// nanoseconds, all else some hundred.
std::uint64_t folded_name_hash(std::string_view name, std::uint64_t seed);

/// Whether two names fold to the same text.
bool are_alike(std::string_view a, std::string_view b);

/// The other form of a name that a disk may take for the same: decomposed where it is composed, and the other way
/// round. The name itself where it has but one.
std::string in_other_form(std::string_view name);

}  // namespace brindle
