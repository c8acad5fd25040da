#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace brindle {

/// Bytes [start, end) of a name.
struct NameRange {
  std::size_t start = 0;
  std::size_t end = 0;
};

/// What differs between two names, in ranges that never split what is drawn as one character. An object compares many
/// pairs; its buffers are kept. One thread.
class NameComparison {
 public:
  void compare(std::string_view old_name, std::string_view new_name);

  const std::vector<NameRange>& removed() const { return removed_; }  ///< of the old name, in order
  const std::vector<NameRange>& added() const { return added_; }      ///< of the new one

 private:
  void compare_closely(std::string_view old_name, std::string_view new_name);
  void measure();

  std::vector<NameRange> removed_;
  std::vector<NameRange> added_;
  std::vector<NameRange> old_characters_;
  std::vector<NameRange> new_characters_;
  std::string_view old_;
  std::string_view new_;
  std::vector<std::uint8_t> common_;  // characters in common, from each pair of places on
};

}  // namespace brindle
