#pragma once

// The file list as tab-delimited text, to be edited elsewhere and read back as a list of new names.
//
// One line an item, ended by a line feed, with a tab between its fields. The format has no way to write a tab or a line
// break inside a field, and a line that holds one would be read back as another, perhaps of another file: such items
// are left out. Bytes of names that are not valid UTF-8 stand as U+EF80…U+EFFF and come back exactly.

#include <cstdint>
#include <string>
#include <vector>

#include "list/file_list.h"
#include "platform/job.h"
#include "platform/status.h"

namespace brindle {

struct ExportOptions {
  bool isFilename = true;
  bool isNewFilename = true;
  bool isLocation = true;
  bool isIncludeLocation = false;  ///< full paths in the columns of names, and no column of its own for the folder
  bool addColumnNamesInHeader = true;
};

/// The localised titles of "FILENAME", "NEWFILENAME" and "LOCATION" (UTF-8).
struct ExportTitles {
  std::string filename;
  std::string newFilename;
  std::string location;
};

enum class ExportRefusal : std::uint8_t {
  none,
  no_column,       ///< "EXPORTNOCOLUMN"
  nothing_to_say,  ///< "EXPORTFILESFAILED": the folder column alone, and full paths
};
ExportRefusal check_export(const ExportOptions& options);

/// Writes UTF-8 text. Names and new names are as the list shows them (":" of the disk as "/", a status as its text);
/// folders, and the full path of the item as it is now, are as they are on disk. What stands at `path` is replaced when
/// the whole text is there; what is no regular file (a pipe, a terminal, /dev/stdout) is written to as it goes. Returns
/// the rows that cannot be written; the sentence of a failure names the file. Progress counts items. A cancelled export
/// is no failure, and leaves the file that stood there. Any thread, as long as none changes the list.
Result<std::vector<std::uint32_t>> export_list(const FileList& files, const ExportOptions& options,
                                               const ExportTitles& titles, const std::string& path,
                                               const JobControl& control);

}  // namespace brindle
