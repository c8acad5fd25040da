#pragma once

// The sheet that puts a photo mask together: an outline of all fields, and the mask as a table. Main thread.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/sheet_controller.h"
#include "metadata/metadata_catalogue.h"

namespace brindle {

class OptionsController;

class PhotoRenamingMaskEditorController final : public SheetController {
 public:
  /// The type of fields on their way from the outline to the table.
  static constexpr std::string_view fields_type = "MetaDataPBoardType";

  explicit PhotoRenamingMaskEditorController(BrindleAppController& app);

  /// A group of the outline with those of its fields that the filter lets through; groups without any are left out.
  /// Pointers are into the catalogue, which never goes.
  struct Group {
    std::u16string_view NAME;
    std::vector<const MetaDataField*> FIELDS;
  };
  const std::vector<Group>& outline() const { return outline_; }
  /// Shows the fields whose label, as it stands or in the user's language, contains the text, in any letter case; ""
  /// shows all.
  void filterItems(std::u16string_view text);

  const FieldList& fields() const { return fields_; }  ///< the mask, a row a field
  std::optional<std::size_t> selected_row() const { return selected_; }
  void select_row(std::optional<std::size_t> row);
  bool can_move_up() const { return selected_ && *selected_ > 0; }
  bool can_move_down() const { return selected_ && *selected_ + 1 < fields_.size(); }
  bool can_clear() const { return selected_.has_value(); }

  /// A double click on a field of the outline: it goes before the selected row, or to the end when no row, or the
  /// first, is selected. Of the field for texts of the user's own, the text is asked.
  void add(const MetaDataField& field);
  /// A drop of fields before a row (fields().size() and beyond: at the end). The dropped rows' first is selected.
  void drop(std::span<const MetaDataField* const> fields, std::size_t row);
  void moveUp();
  void moveDown();
  void clearSelected();

  /// The OK button: the mask goes into the settings, and the sheet closes.
  void ok();

 private:
  std::string_view help_page() const override { return "Photo-renaming.html"; }
  std::optional<MetaDataField> copy_of(const MetaDataField& field) const;
  void move_to(std::size_t row);

  OptionsController& options_;
  std::vector<Group> outline_;
  FieldList fields_;
  std::optional<std::size_t> selected_;
};

}  // namespace brindle
