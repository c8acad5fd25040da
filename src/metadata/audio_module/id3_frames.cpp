#include "metadata/audio_module/id3_frames.h"

#include <algorithm>
#include <cstdint>

namespace brindle::audio_module {
namespace {

using TagLib::ByteVector;

class FrameWalk {
 public:
  FrameWalk(const ByteVector& frames, unsigned int version) : frames_(frames), version_(version) {}

  ByteVector run() {
    ByteVector kept;
    unsigned int kept_to = 0;  // what lies before is in `kept`, unless it is empty
    unsigned int at = 0;
    while (is_frame(at)) {
      const unsigned int size = std::min(frame_size(at), frames_.size() - at - head_size());
      const unsigned int end = at + head_size() + size;
      if (size <= bytes_of_flags(at)) {
        kept.append(frames_.mid(kept_to, at - kept_to));
        kept_to = end;
      }
      at = end;
    }
    if (kept_to == 0) return frames_;
    kept.append(frames_.mid(kept_to));
    return kept.resize(frames_.size(), '\0');
  }

 private:
  unsigned int head_size() const { return version_ == 2 ? 6 : 10; }

  bool is_frame(unsigned int at) const {
    if (at + head_size() > frames_.size()) return false;
    const char* const name = frames_.data() + at;
    return std::all_of(name, name + (version_ == 2 ? 3 : 4), [](char letter) {
      return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
    });
  }

  // Version 4 counts in units of seven bits, which not every program knows.
  unsigned int frame_size(unsigned int at) const {
    if (version_ == 2) return number(at + 3, 3, 8);
    if (version_ == 3) return number(at + 4, 4, 8);
    const unsigned int size = number(at + 4, 4, 7);
    const unsigned int plain = number(at + 4, 4, 8);
    return follows_well(at, size) || !follows_well(at, plain) ? size : plain;
  }

  bool follows_well(unsigned int at, unsigned int size) const {
    const std::uint64_t next = std::uint64_t{at} + head_size() + size;
    if (next >= frames_.size()) return next == frames_.size();
    const auto offset = static_cast<unsigned int>(next);
    return frames_.data()[offset] == 0 || is_frame(offset);
  }

  // A frame may say its unpacked size before its content.
  unsigned int bytes_of_flags(unsigned int at) const {
    return version_ == 4 && (static_cast<unsigned char>(frames_.data()[at + 9]) & 1U) != 0 ? 4 : 0;
  }

  unsigned int number(unsigned int at, unsigned int count, unsigned int bits) const {
    unsigned int value = 0;
    for (unsigned int i = at; i < at + count; ++i)
      value = value << bits | static_cast<unsigned char>(frames_.data()[i]);
    return value;
  }

  const ByteVector& frames_;
  unsigned int version_;
};

}  // namespace

TagLib::ByteVector without_empty_frames(const TagLib::ByteVector& frames, unsigned int version) {
  return version < 2 || version > 4 ? frames : FrameWalk(frames, version).run();
}

}  // namespace brindle::audio_module
