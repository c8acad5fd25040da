#include "app/extensions_editor_controller.h"

#include <algorithm>
#include <string>
#include <utility>

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
    : SheetController(app), itemType_(itemType) {
  extensions_ = itemType_ == photo ? app.values().photoExtensions : app.values().id3Extensions;
  if (!extensions_.empty()) selected_ = 0;
}

void ExtensionsEditorController::tableViewSelectionDidChange(std::optional<std::size_t> row) {
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
    constexpr std::string_view title = "ADDFILEEXTENSIONTITLE";
    constexpr std::string_view message = "ADDFILEEXTENSIONALREADYEXISTS";
    ports().alerts.show({title, message, localized(title), localized_format(message, to_utf8(entry)), ""});
    return;
  }
  extensions_.push_back(std::move(entry));
  tableViewSelectionDidChange(extensions_.size() - 1);
}

void ExtensionsEditorController::remove() {
  if (!selected_) return;
  const std::size_t row = *selected_;
  extensions_.erase(extensions_.begin() + static_cast<std::ptrdiff_t>(row));
  tableViewSelectionDidChange(row == 0 ? 0 : row - 1);
}

void ExtensionsEditorController::apply() {
  if (!can_apply()) return;
  app().ExtensionsEditorControllerDidFinish(itemType_, extensions_);
  close();
}

}  // namespace brindle
