#pragma once

// What comes into the list and goes out of it, and its mode. Main thread; loading is a job, and paths that come in
// while one runs are listed behind it, from whatever side they come.

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "app/disposal.h"
#include "app/jobs_controller.h"
#include "gather/gather.h"
#include "gather/list_import.h"
#include "list/row_set.h"

namespace brindle {

class ListController {
 public:
  ListController(MutableWindowModel& model, JobsController& jobs) : model_(model), jobs_(jobs) {}

  void addFilesAction();
  void addFolderAction();
  void addFilesFolders();
  /// A drop on the file table.
  void acceptDrop(std::vector<std::string> paths);
  /// The choose-items sheet was applied. The paths are loaded in any case, in the mode that holds then.
  void PasteboardItemsControllerDidFinish(bool folders, bool isProcessSubfolders,
                                          const std::vector<std::string>& paths);
  /// 0 is the empty entry. Empties the list; asks when the person's work on it would go with it.
  void recentFolderChanged(std::size_t entry);
  /// The files on the clipboard.
  void addFilesFoldersFromFinder();
  /// In Files mode, unless the person keeps a list of folders: then in Folders mode.
  void loadFiles(std::vector<std::string> paths);

  /// From a long list, by a job.
  void RemoveFiles(const RowSet& rows);
  void clearFilesFolders();

  /// The radio buttons of the mode. Asks when the person's work on the list would go with it.
  void filesFoldersOptionChanged(bool folders);
  void setIncludeSubFolders(bool include);

  // Renaming from a list file (list_import.cpp), and exporting one.

  void browseRenameFile();
  void loadRenameFile(bool folders);
  /// False, with a tooltip, when there is nothing to export.
  bool showExport();

  // For other controllers.

  /// When a list that has items may go without a question.
  enum class Asks : std::uint8_t { always, when_worked_on };
  /// The one way from Files to Folders and back: the list and its mode never disagree. Empties the list, or keeps it
  /// and the mode when that is what the person wants. Whether the wanted mode holds now.
  bool switch_mode(bool folders, Asks asks);

 private:
  const RenameSettings& values() const { return model_.values(); }
  DesktopPort& desktop() const { return model_.ports().desktop; }
  void choose_and_add(std::string_view title_key, bool files, bool folders);
  void add_files(std::vector<std::string> paths);
  void show_loaded(const GatherResult& result, bool folders);
  void show_unreadable(const std::vector<UnreadablePath>& paths);
  bool may_empty_list(Asks asks);
  bool clear_list(Asks asks);
  void empty_list();
  void list_read(Result<FileRenameItem> list);
  void import_list(const std::shared_ptr<FileRenameItem>& item);
  void fill_list(const std::shared_ptr<FileRenameItem>& item);

  MutableWindowModel& model_;
  JobsController& jobs_;
  Disposal disposal_;
};

}  // namespace brindle
