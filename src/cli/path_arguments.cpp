#include "cli/path_arguments.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "cli/exit_code.h"
#include "platform/cancellation.h"
#include "platform/file_descriptor.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "run/rename_row.h"

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

namespace {

std::string meaningful(std::string_view path, const std::string& folder) {
  if (path.empty()) throw UsageError(translated("an argument is empty; a path or name cannot be"));
  if (path.front() != '/' && folder.empty()) throw UsageError(translated("{}: the current folder is gone", path));
  return std::string(path);
}

}  // namespace

std::string real_path(std::string_view given) {
  const std::string folder = current_folder();
  RealPath real = RealPaths(folder).of(meaningful(given, folder));
  if (real.error != 0) throw UsageError(fmt::format("{}: {}", given, translated(describe_error(real.error))));
  return std::move(real.path);
}

namespace {

void append_paths(std::string_view text, const std::string& name, const CommandLine& line, const std::string& folder,
                  std::vector<std::string>& paths) {
  const char end = line.options.nul ? '\0' : '\n';
  while (!text.empty()) {
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view path = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    if (path.find('\0') != std::string_view::npos) {
      throw UsageError(translated("{} holds NUL bytes; add -0 to read it", name));
    }
    if (path.empty()) continue;
    if (paths.size() == most_paths)
      throw UsageError(translated("more than {} PATHs are too many for one run", most_paths));
    paths.push_back(meaningful(path, folder));
  }
}

}  // namespace

std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console) {
  std::vector<std::string> paths;
  for (const std::string& path : line.operands) paths.push_back(meaningful(path, folder));
  for (const std::string& name : line.options.from) {
    append_paths(read_input_text(name, console), name == "-" ? translated("standard input") : name, line, folder,
                 paths);
  }
  return paths;
}

}  // namespace brindle
