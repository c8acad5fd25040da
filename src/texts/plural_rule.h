#pragma once

// Which of its plural forms a language takes for a number, as the header of a gettext catalogue says it:
// "nplurals=3; plural=n%10==1 && n%100!=11 ? 0 : n%10>=2 && n%10<=4 ? 1 : 2".

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle {

/// The form for `number`, from 0; 0 where the rule makes no sense. The expression is read at each call: a sentence with
/// a number is shown now and then, not a million times.
std::size_t plural_form(std::string_view plural_forms, std::uint64_t number);

}  // namespace brindle
