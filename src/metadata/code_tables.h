#pragma once

// The IPTC codes for scenes and subjects with their English texts. Each table is part of the program and made ready
// when it is first used. Any thread.

#include <string_view>

namespace brindle {

/// The text of a code such as "01000000"; "" for a code that is not in the table. Views stay valid.
std::u16string_view subject_text(std::u16string_view code);

/// The text of a code such as "010100"; "" for a code that is not in the table.
std::u16string_view scene_text(std::u16string_view code);

// The tables as property lists, resources/subjectcode.plist and resources/scene.plist, which the build puts into the
// program.

extern const std::string_view subjectcode_property_list;
extern const std::string_view scene_property_list;

}  // namespace brindle
