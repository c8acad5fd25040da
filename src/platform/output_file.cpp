#include "platform/output_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace brindle {
namespace {

constexpr std::size_t buffer_size = std::size_t{256} * 1024;

bool is_written_directly(const std::string& path) {
  if (path.starts_with("/dev/") || path.starts_with("/proc/")) return true;
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

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

int OutputFile::open(const std::string& path) {
  buffer_.reserve(buffer_size);
  if (!is_written_directly(path)) return error_ = file_.open_for(path);
  descriptor_ = ::open(path.c_str(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor_ < 0) return error_ = errno;
  // Only the opening must not wait.
  const int flags = ::fcntl(descriptor_, F_GETFL);
  if (flags < 0 || ::fcntl(descriptor_, F_SETFL, flags & ~O_NONBLOCK) != 0) error_ = errno;
  return error_;
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
  if (error_ == 0 && descriptor_ < 0) file_.write(buffer_);
  if (error_ == 0 && descriptor_ >= 0) {
    const BrokenPipeIsNoSignal quiet;
    error_ = write_all(descriptor_, buffer_);
  }
  buffer_.clear();
}

int OutputFile::finish() {
  flush();
  if (error_ == 0 && descriptor_ < 0) error_ = file_.place();
  return error_;
}

}  // namespace brindle
