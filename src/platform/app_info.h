#pragma once

// What the program says about itself, and which version of it wrote a file. Any thread.

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// The program's version, "4.0.0": it stands in settings records, rule files and logs.
std::string_view appVersion();

/// The program's name with `suffix` appended: a dialog's title.
std::string getAppTitle(std::string_view suffix = {});

/// Whether a file written by `version` of the program can be read: always. The first components are compared, and the
/// answer deliberately does not depend on it, so that files of every version are accepted.
bool isFileVersionMatch(std::string_view version);

/// The attribute "appversion" of the root element of an XML file, as rule files and rename logs carry it. None when it
/// is missing, or when the file cannot be read as XML, which is logged. Of a large file only the start is read.
std::optional<std::string> appVersionInPlist(const std::string& path);

}  // namespace brindle
