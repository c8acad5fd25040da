#include "platform/byte_source.h"

#include <algorithm>

namespace brindle {

std::uint64_t number_of_bytes(std::string_view bytes, bool big_endian) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    number = number << 8U | static_cast<unsigned char>(bytes[big_endian ? i : bytes.size() - 1 - i]);
  }
  return number;
}

bool ByteSource::spend(std::size_t bytes) {
  if (reads_left_ == 0 || bytes > bytes_left_) return false;
  --reads_left_;
  bytes_left_ -= bytes;
  return true;
}

// Who reads on gets a whole window, who jumps about a page.
void ByteSource::move_window(std::uint64_t offset, std::size_t count) {
  constexpr std::size_t page = 4096;
  const bool reads_on = offset >= start_ && offset - start_ <= held_ + window_size;
  const std::size_t wanted = reads_on ? window_size : std::max(page, count);
  start_ = offset;
  held_ = spend(wanted) ? file_->read_at(offset, window_.data(), wanted) : 0;
}

std::string_view ByteSource::at(std::uint64_t offset, std::size_t count) {
  if (offset >= end_) return {};
  count = static_cast<std::size_t>(std::min<std::uint64_t>({count, end_ - offset, window_size}));
  if (file_ == nullptr) return block_.substr(static_cast<std::size_t>(offset), count);
  if (offset < start_ || offset + count > start_ + held_) move_window(offset, count);
  const auto from = static_cast<std::size_t>(offset - start_);
  return {window_.data() + from, std::min(count, held_ - from)};
}

std::uint64_t ByteSource::number(std::uint64_t offset, std::size_t count, bool big_endian) {
  const std::string_view bytes = at(offset, count);
  return bytes.size() < count ? 0 : number_of_bytes(bytes, big_endian);
}

std::string ByteSource::copy(std::uint64_t offset, std::uint64_t count) {
  if (count > piece_limit || offset >= end_) return {};
  const auto wanted = static_cast<std::size_t>(std::min(count, end_ - offset));
  const bool is_held = offset >= start_ && offset + wanted <= start_ + held_;
  if (file_ == nullptr) return std::string(block_.substr(static_cast<std::size_t>(offset), wanted));
  if (is_held) return std::string(at(offset, wanted));
  std::string bytes;
  if (!spend(wanted)) return bytes;
  bytes.resize(wanted);
  bytes.resize(file_->read_at(offset, bytes.data(), wanted));
  return bytes;
}

}  // namespace brindle
