#pragma once

// The one ordering of names: case-insensitive, with runs of digits compared by value, so that file9 comes before
// file10. All functions are pure.

#include <string>
#include <string_view>

#include "pipeline/file_list.h"

namespace brindle {

/// Less than, equal to or greater than 0 as `a` comes before, with or after `b`. "File2" and "file2" are equal, and so
/// are "a01" and "a1".
int compareFiles(std::u16string_view a, std::u16string_view b);

/// Appends bytes whose plain order is the order of compareFiles.
void append_sort_key(std::string_view name, std::string& key);

/// Sorts stably by "filenameWithExtension".
void sort_by_name(FileList& files);
/// Sorts by "fileLocation", and within a folder by name: parents come before what they hold, and the items of a folder
/// stand together.
void sort_by_location(FileList& files);

}  // namespace brindle
