// Feeds any bytes to the reader of rename lists. What it makes of them must stay in the folders that the lines name.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "gather/list_import.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

bool is_one_entry(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const brindle::ListTitles titles{{u"Filename"}, {u"New Filename"}, {u"Location"}};
  const auto read = brindle::read_rename_list(bytes, 0, titles);
  require(read.ok() == read.reason().empty());
  if (!read.ok()) return 0;
  const brindle::FileRenameItem& item = *read;
  require(item.records.size() == item.paths.size());
  for (const std::string_view path : item.paths) {
    require(is_one_entry(path.substr(path.rfind('/') + 1)));
    require(*(path.data() + path.size()) == '\0' && item.records.contains(path));
  }
  brindle::FileList files;
  brindle::DiskNames disk_names;
  const brindle::ImportResult result = brindle::importFiles(files, item, true, disk_names, {});
  require(result.searchFilesCount == files.size() && files.size() <= item.paths.size());
  for (std::size_t row = 0; row < files.size(); ++row) {
    const brindle::ItemRecord& record = files[row];
    require(record.status != brindle::ItemStatus::none);
    require(record.status != brindle::ItemStatus::proposed || is_one_entry(record.proposed()));
  }
  return 0;
}
