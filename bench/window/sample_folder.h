#pragma once

// A folder of many empty files, to be listed and renamed.

#include <cstddef>
#include <string>

namespace brindle::bench {

/// Fills `folder` with so many files, a thousand a subfolder, unless it holds them already. False when it cannot.
bool make_sample_folder(const std::string& folder, std::size_t files);

}  // namespace brindle::bench
