#pragma once

// The choose-items sheet: what to do with the paths dropped on the drop hub. Main thread.

#include <string>
#include <string_view>
#include <vector>

#include "app/sheet_controller.h"

namespace brindle {

class ListController;

class PasteboardItemsController final : public SheetController {
 public:
  /// Files, subfolders included, until chosen otherwise.
  PasteboardItemsController(BrindleAppController& app, std::vector<std::string> paths);

  const std::vector<std::string>& Files() const { return Files_; }  ///< paths, on-disk bytes
  /// More was dropped, on the sheet; what is there already is not added again.
  void add_files(const std::vector<std::string>& paths);
  bool isFiles() const { return !isFolders_; }
  bool isFolders() const { return isFolders_; }
  void filesFoldersOptionChanged(bool folders);
  bool isProcessSubfolders() const { return isProcessSubfolders_; }
  void setProcessSubfolders(bool process);

  /// Closes the sheet and loads the paths.
  void apply();

 private:
  std::string_view help_page() const override { return "ChooseItems.html"; }

  ListController& list_;
  std::vector<std::string> Files_;
  bool isFolders_ = false;
  bool isProcessSubfolders_ = true;
};

}  // namespace brindle
