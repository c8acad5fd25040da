#pragma once

// The one ordering of names: case-insensitive, with runs of digits compared by value, so that file9 comes before
// file10. All functions are pure.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "list/file_list.h"

namespace brindle {

/// Less than, equal to or greater than 0 as `a` comes before, with or after `b`. "File2" and "file2" are equal, and so
/// are "a01" and "a1".
int compareFiles(std::u16string_view a, std::u16string_view b);

/// Appends bytes whose plain order is the order of compareFiles.
void append_sort_key(std::string_view name, std::string& key);

/// Appends the sort key of a row (no byte of it is zero), as append_sort_key makes it of a text.
using AppendRowKey = std::function<void(std::size_t row, std::string& key)>;
/// Sorts stably by keys: rows with equal keys keep their order, downwards too.
void sort_by_keys(FileList& files, const AppendRowKey& append_key, bool ascending);
/// By folder number: the place of each folder that holds items when these are sorted by path.
std::vector<std::uint32_t> folder_ranks(const FileList& files);

/// Sorts stably by "filenameWithExtension".
void sort_by_name(FileList& files);
/// Sorts by "fileLocation", and within a folder by name: parents come before what they hold, and the items of a folder
/// stand together.
void sort_by_location(FileList& files);

}  // namespace brindle
