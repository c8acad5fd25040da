#pragma once

// The titles of the three columns of a list file.

#include "gather/list_export.h"
#include "gather/list_import.h"

namespace brindle {

/// In every language, so that a list written in one is read in another.
ListTitles list_titles();

/// In the user's language.
ExportTitles export_titles();

}  // namespace brindle
