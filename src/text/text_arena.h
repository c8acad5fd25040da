#pragma once

// Keeps many small texts in a few large blocks. A view stays valid until clear(); nothing is freed before. One thread.

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace brindle {

class TextArena {
 public:
  TextArena() = default;
  TextArena(TextArena&&) noexcept = default;
  TextArena& operator=(TextArena&&) noexcept = default;

  /// A copy of `text` with a NUL behind it.
  std::string_view keep(std::string_view text) {
    const std::size_t needed = text.size() + 1;
    if (needed > space_) grow(needed);
    char* copy = next_;
    std::ranges::copy(text, copy);
    copy[text.size()] = '\0';
    next_ += needed;
    space_ -= needed;
    return {copy, text.size()};
  }

  void clear() { *this = TextArena(); }
  /// Takes over the texts of another arena; their views stay valid.
  void absorb(TextArena&& other) {
    for (auto& block : other.blocks_) blocks_.push_back(std::move(block));
    bytes_ += other.bytes_;
    next_ = nullptr;
    space_ = 0;
    other.clear();
  }

 private:
  void grow(std::size_t needed) {
    constexpr std::size_t smallest = std::size_t{4} * 1024;
    constexpr std::size_t largest = std::size_t{1024} * 1024;
    const std::size_t size = std::max(needed, std::clamp(bytes_, smallest, largest));
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
    next_ = blocks_.back().get();
    space_ = size;
    bytes_ += size;
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  std::size_t space_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace brindle
