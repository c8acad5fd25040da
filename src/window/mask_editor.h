#pragma once

// The sheet that puts a photo mask together: an outline of fields with a search, the mask as a table, and between them
// drag and drop. A view of PhotoRenamingMaskEditorController.

#include <memory>

#include "app/photo_renaming_mask_editor_controller.h"
#include "window/sheets/sheet.h"

class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace brindle {

class MaskTable;

class MaskEditor final : public Sheet {
 public:
  MaskEditor(BrindleAppController& app, QWidget* parent);
  ~MaskEditor() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show_state() override { show_fields(); }
  QWidget* make_outline();
  QWidget* make_table();
  void show_outline();
  void go_to_first_field();
  void show_fields();
  void fill_table(const FieldList& fields);
  void add_current();

  PhotoRenamingMaskEditorController controller_;
  FieldList shown_;
  QLineEdit* search_ = nullptr;
  QTreeWidget* outline_ = nullptr;
  MaskTable* table_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
  QPushButton* clear_ = nullptr;
};

}  // namespace brindle
