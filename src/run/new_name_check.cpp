#include "run/new_name_check.h"

#include "platform/move.h"
#include "text/unicode_fold.h"

namespace brindle {

bool check_new_name(FileList& files, std::size_t row, DiskNames& disk_names) {
  const ItemRecord& record = files[row];
  if (record.proposed() == record.name()) {
    files.set_status(row, ItemStatus::no_changes);
    return false;
  }
  if (record.kind != 0 && disk_names.holds_own_data(record.name(), record.inode)) {
    files.set_status(row, ItemStatus::no_changes);
    files.set_reason(row, brindle::holds_own_data);
    return false;
  }
  if (!disk_names.exists(record.proposed()) || differ_in_case_only(record.name(), record.proposed())) return true;
  files.set_status(row, already_exists(record.type()));
  return false;
}

}  // namespace brindle
