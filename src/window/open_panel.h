#pragma once

// The panel that files and folders are chosen in. The toolkit's own loses names that are not UTF-8, hides links that
// lead nowhere, and chooses either files or folders.

#include <QDialog>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/ports.h"
#include "platform/folder_handle.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QToolButton;
class QTreeView;

namespace brindle {

class FolderModel;

/// What panels know of each other.
struct OpenPanelMemory {
  std::string folder;               ///< where the last one was (bytes); "" for none
  std::vector<std::string> recent;  ///< folders to offer, the newest first
  bool shows_hidden = false;
};

class OpenPanel final : public QDialog {
 public:
  /// Begins at the folder of the request, of the memory, or the nearest above it that is there.
  OpenPanel(QWidget* parent, const OpenRequest& request, OpenPanelMemory& memory);
  ~OpenPanel() override;

  /// Paths (bytes), once the panel was accepted.
  const std::vector<std::string>& chosen() const { return chosen_; }

  enum class Way : std::uint8_t { forward, back };
  /// Shows a folder once it has been read, elsewhere; one that cannot be read is told. `select`: the name of an entry.
  void go_to(std::string folder, std::string select = {}, Way way = Way::forward);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int path_role = Qt::UserRole;  // of a place: its path
  void make_places();
  void make_table();
  void make_fields();
  void lay_out();
  void add_shortcut(const QKeySequence& keys, void (OpenPanel::*call)());

  void show_listing(FolderListing listing, const std::string& select, Way way);
  void refuse(const FolderListing& listing);
  void adopt_filter();
  void show_selection();
  bool press_in_table(const QKeyEvent& key);
  void go_up();
  void go_back();
  void go_home();
  void go_to_place();
  void open_typed_path();
  void open_row(int row);
  void toggle_hidden();
  void edit_path();
  void edit_filter();
  std::vector<std::string> selected_paths() const;
  bool takes_folder_shown() const;
  void choose();

  OpenRequest request_;
  OpenPanelMemory& memory_;
  FolderModel* model_;
  QListWidget* places_;
  QTreeView* table_;
  QLineEdit* path_;
  QLineEdit* filter_;
  QCheckBox* hidden_;
  QToolButton* back_;
  QToolButton* up_;
  QLabel* status_;
  QPushButton* choose_;

  std::string folder_;
  std::vector<std::string> left_;  // folders that "back" leads to
  std::shared_ptr<std::atomic<bool>> reading_;
  std::vector<std::string> chosen_;
};

}  // namespace brindle
