#pragma once

// Lines for whoever looks into why something did not work: they go to standard error, where a desktop session keeps
// them. What repeats is said once: of each operation a few different reasons, and how often there were more. Any
// thread.

#include <string>
#include <string_view>

namespace brindle {

/// While it lives, what this thread says names a file: the one whose path (bytes) `path()` returns, asked for only when
/// there is something to say. Refers to `path`.
class MessageSubject {
 public:
  template <class Path>
  explicit MessageSubject(const Path& path)
      : context_(&path),
        path_([](const void* context) -> std::string { return (*static_cast<const Path*>(context))(); }),
        outer_(current()) {
    current() = this;
  }
  MessageSubject(const MessageSubject&) = delete;
  MessageSubject& operator=(const MessageSubject&) = delete;
  ~MessageSubject() { current() = outer_; }

  std::string path() const { return path_(context_); }
  /// This thread's, or null.
  static const MessageSubject*& current();

 private:
  const void* context_;
  std::string (*path_)(const void* context);
  const MessageSubject* outer_;
};

/// "Error in OPERATION : REASON", one line, with the file.
void log_failure(std::string_view operation, std::string_view reason);
/// The same of something that comes out all right without it, such as a value that is left as it was.
void log_remark(std::string_view operation, std::string_view reason);
/// A line in other words, each time.
void log_line(std::string_view text);

/// From now on there are no remarks.
void hush_remarks();
/// Says how often something was not said again, and forgets it all. For the end of a run.
void report_repeated();

}  // namespace brindle
