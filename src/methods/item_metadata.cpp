#include "methods/item_metadata.h"

#include "methods/rename_plan.h"

namespace brindle {

MetadataWindow::MetadataWindow(const FileList& files, const RenamePlan& plan) : files_(files), plan_(plan) {
  if (!plan.reads_files()) return;
  ahead_ = std::make_unique<MetadataAhead<ItemMetadata>>(
      [&plan](const std::string& path) { return plan.read_metadata(path); });
}

// Rows that no step takes part with are passed over: their files are not opened.
void MetadataWindow::announce() {
  for (; next_ < files_.size() && ahead_->has_room(); ++next_) {
    if (plan_.wants_metadata(files_[next_].name())) ahead_->expect(next_, files_.path(next_));
  }
}

std::optional<ItemMetadata> MetadataWindow::take(std::size_t row) {
  if (ahead_ == nullptr) return std::nullopt;
  announce();
  return ahead_->take(row);
}

}  // namespace brindle
