#pragma once

// Items for the tests of the rename methods; none of them exists on disk.

#include "case_table.h"
#include "list/file_system_item.h"
#include "methods/rename_operation.h"

namespace brindle::test {

inline FileSystemItem sample_item(std::u16string_view name, std::string_view folder = "/Users/ann/Photos") {
  FileSystemItem item;
  std::string bytes;
  encode_path(name, bytes);
  item.set_path(folder, bytes);
  item.set_kind(false, false, false);
  return item;
}

/// The item of a case: column "name", and perhaps "folder", "kind" ("folder" or "alias") and "newFilename".
inline FileSystemItem sample_item(const Case& c) {
  FileSystemItem item = sample_item(c["name"], c.has("folder") ? to_utf8(c["folder"]) : "/Users/ann/Photos");
  item.set_kind(c["kind"] == u"folder", c["kind"] == u"alias", false);
  item.setNewFilename(c["newFilename"]);
  return item;
}

/// Runs `rename(item, working_name, error)` on the item of a case and compares with the columns "result" and "error" (a
/// part of the error text; none for success). An absent name is an empty result.
template <class Rename>
void expect_case(const Case& c, Rename rename) {
  FileSystemItem item = sample_item(c);
  WorkingName name;
  std::u16string error;
  const bool succeeded = rename(item, name, error);
  EXPECT_EQ(to_utf8(item.newFilename()), to_utf8(c["result"]));
  EXPECT_EQ(succeeded, !c.has("error")) << to_utf8(error);
  EXPECT_NE(error.find(c["error"]), std::u16string::npos) << to_utf8(error);
}

}  // namespace brindle::test
