#pragma once

// What preview and rename say at the end, in sentences.

#include <string>
#include <vector>

#include "cli/rename_batch.h"

namespace brindle {

/// "6 of 8 files would be renamed; 1 unchanged; 1 cannot be: the new name is taken".
std::string preview_sentence(const RenameBatch& batch, const Tally& tally);
/// "6 of 8 files renamed; 1 unchanged; 1 not".
std::string rename_sentence(const RenameBatch& batch, const Tally& tally);

/// Says on standard error what a person would hardly see in the listing: names that two items of a folder would get,
/// and items that are counted in the order in which the disk lists them.
void warn_of_surprises(const CommandLine& line, const RenameBatch& batch, Console& console);

/// Names every row that could not be renamed, on standard error, put together by status and reason. Rows whose flag in
/// `known` is set were shown before and are left out; `known` may be empty.
void report_problems(const RenameBatch& batch, const std::vector<bool>& known, Console& console);

}  // namespace brindle
