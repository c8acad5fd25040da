#pragma once

// The data sets of IPTC, as they stand in files. Pure; any thread.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// One value of IPTC. A number may come several times.
struct IptcDataSet {
  std::uint8_t record = 0;
  std::uint8_t number = 0;
  std::string bytes;
};

/// In the order of the block; at most 4,096, each cut behind 32 KiB. Those without a value are left out, and so is what
/// lies between data sets.
std::vector<IptcDataSet> iptc_data_sets(std::string_view block);

}  // namespace brindle
