#include "app/photo_renaming_mask_editor_controller.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/options_controller.h"
#include "platform/file_name.h"
#include "text/search_text.h"
#include "text/text_encoding.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::u16string_view custom_token = u"<>";

}  // namespace

PhotoRenamingMaskEditorController::PhotoRenamingMaskEditorController(BrindleAppController& app)
    : SheetController(app), options_(app.options()), fields_(model().values().photoMetaDataList) {
  filterItems({});
}

void PhotoRenamingMaskEditorController::filterItems(std::u16string_view text) {
  const SearchText wanted(text, false);
  outline_.clear();
  for (const MetadataGroup& group : metadata_catalogue()) {
    Group shown{group.NAME, {}};
    for (const MetaDataField& field : group.FIELDS) {
      const bool is_wanted = text.empty() || wanted.find(field.label) != SearchText::npos ||
                             wanted.find(decode_utf8(localized(to_utf8(field.label)))) != SearchText::npos;
      if (is_wanted) shown.FIELDS.push_back(&field);
    }
    if (!shown.FIELDS.empty()) outline_.push_back(std::move(shown));
  }
  tell();
}

void PhotoRenamingMaskEditorController::select_row(std::optional<std::size_t> row) {
  selected_ = row && *row < fields_.size() ? row : std::nullopt;
  tell();
}

// None when the text of the user's own was not given.
std::optional<MetaDataField> PhotoRenamingMaskEditorController::copy_of(const MetaDataField& field) const {
  if (field.tagCode != custom_token) return field;
  const std::optional<std::u16string> text = ports().desktop.ask_custom_tag();
  if (!text || text->empty()) return std::nullopt;
  const std::u16string token = u"<" + *text + u">";
  return MetaDataField{field.prefix, token, token, *text, {}};
}

void PhotoRenamingMaskEditorController::add(const MetaDataField& field) {
  std::optional<MetaDataField> copy = copy_of(field);
  if (!copy) return;
  // The first row counts as no row: there is no way to put a field before it but to drop it there.
  if (!selected_ || *selected_ == 0) {
    fields_.push_back(std::move(*copy));
  } else {
    fields_.insert(fields_.begin() + static_cast<std::ptrdiff_t>(*selected_), std::move(*copy));
    ++*selected_;  // the row that was selected stays it
  }
  tell();
}

void PhotoRenamingMaskEditorController::drop(std::span<const MetaDataField* const> fields, std::size_t row) {
  FieldList dropped;
  for (const MetaDataField* field : fields) {
    if (std::optional<MetaDataField> copy = copy_of(*field)) dropped.push_back(std::move(*copy));
  }
  if (dropped.empty()) return;
  row = std::min(row, fields_.size());
  fields_.insert(fields_.begin() + static_cast<std::ptrdiff_t>(row), std::make_move_iterator(dropped.begin()),
                 std::make_move_iterator(dropped.end()));
  select_row(row);
}

void PhotoRenamingMaskEditorController::moveUp() {
  if (can_move_up()) move_to(*selected_ - 1);
}

void PhotoRenamingMaskEditorController::moveDown() {
  if (can_move_down()) move_to(*selected_ + 1);
}

void PhotoRenamingMaskEditorController::move_to(std::size_t row) {
  std::swap(fields_[*selected_], fields_[row]);
  select_row(row);
}

void PhotoRenamingMaskEditorController::clearSelected() {
  if (!selected_) return;
  const std::size_t row = *selected_;
  fields_.erase(fields_.begin() + static_cast<std::ptrdiff_t>(row));
  select_row(fields_.empty() ? 0 : std::min(row, fields_.size() - 1));
}

void PhotoRenamingMaskEditorController::ok() {
  options_.setPhotoMetaDataList(fields_);
  close();
}

}  // namespace brindle
