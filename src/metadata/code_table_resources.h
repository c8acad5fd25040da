#pragma once

// The property lists resources/subjectcode.plist and resources/scene.plist, which the build puts into the program.

#include <string_view>

namespace brindle {

extern const std::string_view subjectcode_property_list;
extern const std::string_view scene_property_list;

}  // namespace brindle
