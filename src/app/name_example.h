#pragma once

// What the chosen method makes of one name, for a line below its options. No file is opened: the date of an item is
// asked of the disk, and where a method reads metadata, a made-up file with made-up values stands for all.

#include <string>

#include "list/file_list.h"
#include "platform/date.h"
#include "settings/rename_settings.h"

namespace brindle {

/// In display form.
struct NameExample {
  std::u16string before;
  std::u16string after;
  std::string problem;  ///< UTF-8; why there is no name to show: an option that is missing, mostly
};

/// The example for the selected tab (none for the list tab: everything is empty), made from the first item of `files`,
/// or from a made-up one when that is null or empty. Any thread, as long as nothing else uses the list.
NameExample name_example(RenameSettings settings, const FileList* files, Date now);

}  // namespace brindle
