#include <algorithm>

#include "metadata/image_formats/readers.h"
#include "platform/byte_source.h"

namespace brindle {
namespace {

constexpr std::size_t data_set_limit = 4096;
constexpr std::size_t data_set_size_limit = 32768;
constexpr char set_mark = 0x1C;

// The size of a value, taken off the front. Large ones have it in as many bytes as the first two say.
std::uint64_t take_size(std::string_view& block) {
  constexpr std::uint64_t extended = 0x8000;
  std::uint64_t size = number_of_bytes(block.substr(0, 2), true);
  block.remove_prefix(2);
  if (size < extended) return size;
  const auto width = static_cast<std::size_t>(size - extended);
  if (width > 8 || width > block.size()) return UINT64_MAX;
  size = number_of_bytes(block.substr(0, width), true);
  block.remove_prefix(width);
  return size;
}

}  // namespace

std::vector<IptcDataSet> iptc_data_sets(std::string_view block) {
  std::vector<IptcDataSet> sets;
  while (sets.size() < data_set_limit) {
    block.remove_prefix(std::min(block.find(set_mark), block.size()));
    if (block.size() < 5) break;
    IptcDataSet set{static_cast<std::uint8_t>(block[1]), static_cast<std::uint8_t>(block[2]), {}};
    block.remove_prefix(3);
    const std::uint64_t size = take_size(block);
    if (size > block.size()) break;
    set.bytes = block.substr(0, std::min<std::size_t>(data_set_size_limit, static_cast<std::size_t>(size)));
    block.remove_prefix(static_cast<std::size_t>(size));
    if (!set.bytes.empty()) sets.push_back(std::move(set));
  }
  return sets;
}

}  // namespace brindle
