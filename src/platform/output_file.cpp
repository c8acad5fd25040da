#include "platform/output_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

#include "platform/translation.h"

namespace brindle {
namespace {

constexpr std::size_t buffer_size = std::size_t{256} * 1024;

// What is open already, wherever it leads.
bool is_own_descriptor(std::string_view path) {
  return path == "/dev/stdout" || path == "/dev/stderr" || path.starts_with("/dev/fd/") ||
         path.starts_with("/proc/self/fd/");
}

bool is_stream(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

/// While it lives, a reader that goes away is an error of write(2) on this thread and no signal.
class BrokenPipeIsNoSignal {
 public:
  BrokenPipeIsNoSignal() {
    ::sigemptyset(&broken_pipe_);
    ::sigaddset(&broken_pipe_, SIGPIPE);
    sigset_t pending;
    ::sigpending(&pending);
    was_pending_ = ::sigismember(&pending, SIGPIPE) == 1;
    ::pthread_sigmask(SIG_BLOCK, &broken_pipe_, &mask_);
  }
  BrokenPipeIsNoSignal(const BrokenPipeIsNoSignal&) = delete;
  BrokenPipeIsNoSignal& operator=(const BrokenPipeIsNoSignal&) = delete;
  ~BrokenPipeIsNoSignal() {
    const timespec at_once{};
    if (!was_pending_) ::sigtimedwait(&broken_pipe_, nullptr, &at_once);
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  }

 private:
  sigset_t broken_pipe_{};
  sigset_t mask_{};
  bool was_pending_ = false;
};

}  // namespace

Status OutputFile::open(const std::string& path) {
  path_ = path;
  buffer_.reserve(buffer_size);
  WriteTarget target;
  error_ = is_own_descriptor(path) ? open_stream(path) : find_write_target(path, target);
  if (error_ == 0 && !stream_) error_ = is_stream(path) ? open_stream(path) : file_.open_for(std::move(target));
  return status();
}

Status OutputFile::status() const {
  if (error_ == 0) return {};
  return Status(translated("“{}” cannot be written: {}", path_, translated(system_error_text(error_))), error_);
}

int OutputFile::open_stream(const std::string& path) {
  stream_ = FileDescriptor(::open(path.c_str(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  // Of the three that every program has, a closed one leads to a folder (see process.h).
  if (!stream_) return errno == EISDIR ? EBADF : errno;
  struct stat status {};
  if (::fstat(stream_.get(), &status) != 0) return errno;
  if (S_ISREG(status.st_mode) && !is_own_descriptor(path)) return EINVAL;  // put there this very moment
  // Only the opening must not wait.
  const int flags = ::fcntl(stream_.get(), F_GETFL);
  return flags < 0 || ::fcntl(stream_.get(), F_SETFL, flags & ~O_NONBLOCK) != 0 ? errno : 0;
}

void OutputFile::write(std::string_view bytes) {
  if (buffer_.size() + bytes.size() > buffer_size) flush();
  if (bytes.size() > buffer_size) {
    buffer_ = bytes;
    flush();
  } else {
    buffer_ += bytes;
  }
}

void OutputFile::flush() {
  if (error_ == 0 && !stream_) file_.write(buffer_);
  if (error_ == 0 && stream_) {
    const BrokenPipeIsNoSignal quiet;
    error_ = write_all(stream_.get(), buffer_);
  }
  buffer_.clear();
}

Status OutputFile::finish() {
  flush();
  if (error_ == 0 && !stream_) error_ = file_.place();
  return status();
}

}  // namespace brindle
