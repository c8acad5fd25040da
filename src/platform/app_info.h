#pragma once

// What the program says about itself. Pure; any thread.

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

}  // namespace brindle
