#pragma once

// What the name of a document says of its kind. Pure; any thread.

#include <string>
#include <string_view>

#include "platform/ascii.h"

namespace brindle {

/// Whether a path or a name (bytes) has this extension (lower case, without the dot), in letters of any case.
inline bool has_extension(std::string_view path, std::string_view extension) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  return name.size() > extension.size() + 1 && ends_ignoring_case(name, "." + std::string(extension));
}

}  // namespace brindle
