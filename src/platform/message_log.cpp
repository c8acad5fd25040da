#include "platform/message_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "platform/file_name.h"

namespace brindle {
namespace {

// On a terminal, controls would do things, and marks of direction hide some.
bool is_unseen(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x202A && unit <= 0x202E) ||
         (unit >= 0x2066 && unit <= 0x2069);
}

// Reasons hold what stands in foreign files.
void write_line(std::string_view text) {
  std::u16string shown = decode_file_name(text);
  std::ranges::replace_if(shown, is_unseen, u'\uFFFD');
  const std::string line = to_utf8(shown) + '\n';
  // One call, so that the lines of several threads do not mix.
  std::fwrite(line.data(), 1, line.size(), stderr);
}

/// What was said of one operation.
struct Said {
  std::vector<std::string> reasons;
  std::size_t more = 0;
};

struct Messages {
  std::mutex mutex;
  std::map<std::string, Said, std::less<>> by_operation;
  bool are_remarks_hushed = false;
};

Messages& messages() {
  static Messages all;
  return all;
}

// Whether it is new; counts it otherwise. The lock is held.
bool is_to_be_said(Said& said, std::string_view reason) {
  constexpr std::size_t most_reasons = 5;
  if (said.reasons.size() == most_reasons || std::ranges::find(said.reasons, reason) != said.reasons.end()) {
    ++said.more;
    return false;
  }
  said.reasons.emplace_back(reason);
  return true;
}

void say(std::string_view operation, std::string_view reason) {
  const auto at = messages().by_operation.try_emplace(std::string(operation)).first;
  if (!is_to_be_said(at->second, reason)) return;
  const MessageSubject* const subject = MessageSubject::current();
  write_line(fmt::format("Error in {} : {}{}", operation, reason,
                         subject == nullptr ? "" : fmt::format(" (in “{}”)", subject->path())));
}

}  // namespace

const MessageSubject*& MessageSubject::current() {
  thread_local const MessageSubject* subject = nullptr;
  return subject;
}

void log_failure(std::string_view operation, std::string_view reason) {
  const std::scoped_lock lock(messages().mutex);
  say(operation, reason);
}

void log_remark(std::string_view operation, std::string_view reason) {
  const std::scoped_lock lock(messages().mutex);
  if (!messages().are_remarks_hushed) say(operation, reason);
}

void log_line(std::string_view text) {
  write_line(text);
}

void hush_remarks() {
  const std::scoped_lock lock(messages().mutex);
  messages().are_remarks_hushed = true;
}

void report_repeated() {
  const std::scoped_lock lock(messages().mutex);
  for (const auto& [operation, said] : messages().by_operation) {
    if (said.more > 0) write_line(fmt::format("Error in {} : and {} more like this", operation, said.more));
  }
  messages().by_operation.clear();
}

}  // namespace brindle
