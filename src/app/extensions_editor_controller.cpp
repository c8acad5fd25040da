#include "app/extensions_editor_controller.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/options_controller.h"
#include "list/file_system_item.h"
#include "platform/file_name.h"
#include "text/text_case.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// "" for a file without an extension.
std::u16string allowed_extension(std::string_view path) {
  const std::u16string name = decode_file_name(path.substr(path.rfind('/') + 1));
  const std::u16string_view extension = split_extension(name).extension;
  std::u16string entry;
  if (extension.empty()) return entry;
  entry += u'.';
  append_upper_case(extension, entry);
  return entry;
}

}  // namespace

ExtensionsEditorController::ExtensionsEditorController(BrindleAppController& app, std::int32_t itemType)
    : SheetController(app), options_(app.options()), itemType_(itemType) {
  extensions_ = itemType_ == photo ? model().values().photoExtensions : model().values().id3Extensions;
  if (!extensions_.empty()) selected_ = 0;
}

void ExtensionsEditorController::select_row(std::optional<std::size_t> row) {
  selected_ = row && *row < extensions_.size() ? row : std::nullopt;
  tell();
}

void ExtensionsEditorController::add() {
  OpenRequest request;
  request.title = localized("ADDFILEEXTENSIONTITLE");
  const std::vector<std::string> chosen = ports().chooser.choose(request);
  std::u16string entry = chosen.empty() ? std::u16string() : allowed_extension(chosen.front());
  if (entry.empty()) return;
  if (std::ranges::find(extensions_, entry) != extensions_.end()) {
    return show_alert(ports(), make_alert("ADDFILEEXTENSIONTITLE", "ADDFILEEXTENSIONALREADYEXISTS", to_utf8(entry)));
  }
  extensions_.push_back(std::move(entry));
  select_row(extensions_.size() - 1);
}

void ExtensionsEditorController::remove() {
  if (!selected_) return;
  const std::size_t row = *selected_;
  extensions_.erase(extensions_.begin() + static_cast<std::ptrdiff_t>(row));
  select_row(row == 0 ? 0 : row - 1);
}

void ExtensionsEditorController::apply() {
  if (!can_apply()) return;
  options_.ExtensionsEditorControllerDidFinish(itemType_, extensions_);
  close();
}

}  // namespace brindle
