#pragma once

// The seam between the program and its audio module: a shared library of our own that holds everything which needs the
// tag library. The program opens it when a name first asks for a song's tags, so that starting the program costs
// nothing. Only plain C types cross the seam, and no exception does.

#include <cstddef>
#include <cstdint>

namespace brindle::audio_module {

inline constexpr const char* file_name = "brindle_audio.so";

/// Raised with every change of what crosses the seam.
inline constexpr std::uint32_t revision = 2;

/// What a reported value is.
enum Attribute : std::uint32_t { artist, year, genre, title, album, comment, track_number, composer };
inline constexpr std::size_t attribute_count = 8;

/// Takes the values; an attribute with several comes several times, in order. `text` is UTF-16, not empty, without NUL,
/// and valid during the call. Must not throw.
struct Sink {
  void* context;
  void (*value)(void* context, std::uint32_t attribute, const char16_t* text, std::size_t size);
};

/// The function of the library, by its unmangled name. Reports what can be read and leaves out the rest; neither fails,
/// throws nor keeps anything. Any thread, any number of threads.
extern "C" {
/// `descriptor` is a regular file of `size` bytes, open for reading; it stays open. `extension` (of the file's name:
/// ASCII lower case, no dot) counts where the first bytes do not tell what the file is. Reports the attributes that
/// have their bit in `wanted`: 1 << title, and so on.
void brindle_read_audio(int descriptor, std::uint64_t size, const char* extension, std::uint32_t wanted,
                        const Sink* sink);
}

}  // namespace brindle::audio_module
