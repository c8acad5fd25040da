#pragma once

#include <span>
#include <string_view>

namespace brindle {

/// The candidate that a mistyped word was most likely meant to be; empty when none is near.
std::string_view closest_word(std::string_view word, std::span<const std::string_view> candidates);

}  // namespace brindle
