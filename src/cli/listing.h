#pragma once

// The list with its new names, for people: on a terminal grouped by folder, in columns, with what changes set off; on a
// pipe one plain line an item, "path -> new name" or "path: status (reason)". And what is said of it in sentences.

#include <string>
#include <string_view>
#include <vector>

#include "cli/console.h"
#include "cli/rename_batch.h"
#include "list/file_list.h"

namespace brindle {

/// Prints the rows. Those that keep their name and have no reason to change are left out unless `all` is set. Paths
/// below `folder` are shown relative to it.
void print_listing(const FileList& files, std::string_view folder, bool all, Console& console);

/// A path as a person in `folder` would write it; "." for the folder itself. The whole path when `folder` is
/// empty.
std::string_view relative_path(std::string_view path, std::string_view folder);

/// A status and, in words, why: "File Already Exists", or "No Changes: the name would be too long".
std::string status_and_reason(const FileList& files, std::size_t row);

/// "6 of 8 files would be renamed; 1 unchanged; 1 cannot be: the new name is taken".
std::string preview_sentence(const RenameBatch& batch, const Tally& tally);
/// "6 of 8 files renamed; 1 unchanged; 1 not".
std::string rename_sentence(const RenameBatch& batch, const Tally& tally);

/// Says on standard error what a person would hardly see in the listing: on a terminal, how many have which problem and
/// what helps; and that items are counted in the order in which the disk lists them.
void warn_of_surprises(const CommandLine& line, const RenameBatch& batch, Console& console);

/// Names every row that could not be renamed, on standard error, put together by status and reason. Rows whose flag in
/// `known` is set were shown before and are left out; `known` may be empty.
void report_problems(const RenameBatch& batch, const std::vector<bool>& known, Console& console);

}  // namespace brindle
