#pragma once

// The file list as tab-delimited text, to be edited elsewhere and read back as a list of new names.

#include <cstdint>
#include <string>

#include "pipeline/file_list.h"
#include "pipeline/job.h"

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

/// Writes UTF-8 text. Names are as the list shows them (":" of the disk as "/"), paths as they are. What stands at
/// `path` is replaced when the whole text is there. Returns a sentence (UTF-8), empty on success. Progress counts
/// items. A cancelled export leaves what stood there.
std::string export_list(const FileList& files, const ExportOptions& options, const ExportTitles& titles,
                        const std::string& path, const JobControl& control);

}  // namespace brindle
