#pragma once

// Rename from a list: reading the tab-delimited text file, and the job that fills the file list from it.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/gather.h"
#include "pipeline/file_list.h"
#include "pipeline/job.h"

namespace brindle {

/// What a list file asks for. Paths are bytes on disk; new names are in display form turned to the form of the disk
/// ("/" is ":").
struct FileRenameItem {
  std::vector<std::string> paths;                           ///< in the order of the file; a path may stand here twice
  std::unordered_map<std::string, std::u16string> records;  ///< new name by path: the last line of a path counts
  std::int32_t importType = 0;                              ///< 0 files, 1 folders
};

/// The titles of the three columns, as the export writes them and as a header is known by. In every language of the
/// string table at once: a list travels.
struct ListTitles {
  std::vector<std::u16string> filename;
  std::vector<std::u16string> newFilename;
  std::vector<std::u16string> location;
};

enum class ListError : std::uint8_t {
  none,
  unreadable,  ///< "UNABLETOOPENFILE": no such file, not regular, too large, or not UTF-8
  no_records,  ///< "RENAMEFROMFILEMESSAGE"
};

/// Reads a list file (at most 1 GiB): three fields a line, tab between them, lines ended by line feeds, or by carriage
/// returns where there is no line feed. A first line without exactly three fields spoils the file; one that has a
/// column's title in its place is a header. Existing items are looked up, so that their paths are canonical and an
/// empty new name stands for the name they have. `reason` says why in the system's words where there is more to say.
ListError loadRenameFile(const std::string& path, std::int32_t importType, const ListTitles& titles,
                         FileRenameItem& item, std::string& reason);
/// The same for the bytes of a file.
ListError read_rename_list(std::string_view bytes, std::int32_t importType, const ListTitles& titles,
                           FileRenameItem& item);

struct ImportResult {
  std::size_t searchFilesCount = 0;    ///< items accepted
  bool isHasFilesForRenaming = false;  ///< at least one of them can be renamed without a separate preview
  bool cancelled = false;
};

/// The import job: appends the items of the asked kind, each with its new name or its status.
ImportResult importFiles(FileList& files, const FileRenameItem& item, const JobControl& control);

}  // namespace brindle
