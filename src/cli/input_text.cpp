#include "cli/input_text.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "cli/cancellation.h"
#include "cli/exit_code.h"
#include "platform/file_descriptor.h"
#include "platform/translation.h"

namespace brindle {
namespace {

[[noreturn]] void refuse(std::string_view name, std::string_view reason) {
  throw UsageError(translated("cannot read {}: {}", name, translated(reason)));
}

// By the numbers that Linux gives out for good. Merely opening some of the others does something.
bool is_null_or_terminal(dev_t device) {
  const unsigned kind = major(device);
  return device == makedev(1, 3) || kind == 4 || kind == 5 || (kind >= 136 && kind <= 143);
}

void refuse_devices(const struct stat& status, std::string_view name) {
  const bool is_other_device = S_ISCHR(status.st_mode) && !is_null_or_terminal(status.st_rdev);
  if (S_ISBLK(status.st_mode) || is_other_device) refuse(name, to_translate("it is a device"));
}

/// An open input.
class Input {
 public:
  Input(const std::string& name, Console& console);

  std::string read_all();

 private:
  bool is_standard() const { return descriptor_ == STDIN_FILENO; }
  bool is_terminal() const { return ::isatty(descriptor_) == 1; }
  std::string shown_name() const { return is_standard() ? translated("standard input") : name_; }
  void open();
  void wait();

  const std::string& name_;
  Console& console_;
  FileDescriptor opened_;
  int descriptor_ = STDIN_FILENO;
  bool has_told_ = false;
};

Input::Input(const std::string& name, Console& console) : name_(name), console_(console) {
  if (name != "-") open();
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) refuse(shown_name(), std::strerror(errno));
  refuse_devices(status, shown_name());
}

// The opening does not wait for a pipe's writer: that is done where it can be told.
void Input::open() {
  struct stat status {};
  if (::stat(name_.c_str(), &status) != 0) refuse(name_, std::strerror(errno));
  refuse_devices(status, name_);
  opened_ = FileDescriptor(::open(name_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  descriptor_ = opened_.get();
  if (!opened_) refuse(name_, std::strerror(errno));
}

// Until there is something to read, the end or Ctrl-C.
void Input::wait() {
  constexpr int patience_ms = 1000;
  pollfd input{descriptor_, POLLIN, 0};
  if (!has_told_ && (is_terminal() || ::poll(&input, 1, patience_ms) == 0)) {
    console_.note(is_terminal() ? translated("Reading from {} (Ctrl-D ends it).", shown_name())
                                : translated("Waiting for text from {} (Ctrl-C gives up).", shown_name()));
    has_told_ = true;
  }
  if (!is_cancelled()) ::poll(&input, 1, -1);
}

std::string Input::read_all() {
  std::string bytes;
  std::array<char, 1U << 16U> piece;
  for (wait(); !is_cancelled(); wait()) {
    const ssize_t got = ::read(descriptor_, piece.data(), piece.size());
    if (got == 0) break;
    if (got < 0 && errno != EINTR && errno != EAGAIN) refuse(shown_name(), std::strerror(errno));
    if (got < 0) continue;
    if (bytes.size() + static_cast<std::size_t>(got) > input_text_limit)
      refuse(shown_name(), to_translate("it is longer than 1 GiB"));
    bytes.append(piece.data(), static_cast<std::size_t>(got));
  }
  return bytes;
}

}  // namespace

std::string read_input_text(const std::string& name, Console& console) {
  return Input(name, console).read_all();
}

}  // namespace brindle
