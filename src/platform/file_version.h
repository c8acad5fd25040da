#pragma once

// Which version of the program wrote a file. Safe on any thread.

#include <optional>
#include <string>

namespace brindle {

/// The attribute "appversion" of the root element of an XML file, as rule files and rename logs carry it. None when it
/// is missing, or when the file cannot be read as XML, which is logged. Of a large file only the start is read.
std::optional<std::string> appVersionInPlist(const std::string& path);

}  // namespace brindle
