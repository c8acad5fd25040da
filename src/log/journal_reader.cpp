#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "log/journal.h"
#include "log/journal_format.h"
#include "platform/atomic_file.h"
#include "platform/translation.h"

namespace brindle {
namespace {

// One record taken off the front of `body`; false when it does not fit.
bool take_record(std::string_view& body, JournalRecord& record, std::string_view& text) {
  if (body.size() < sizeof record) return false;
  std::memcpy(&record, body.data(), sizeof record);
  body.remove_prefix(sizeof record);
  std::size_t size = std::size_t{record.old_size} + record.new_size;
  if (record.folder == folder_definition) size = record.old_size + (std::size_t{record.new_size} << 16U);
  if (body.size() < size) return false;
  text = body.substr(0, size);
  body.remove_prefix(size);
  return true;
}

template <std::size_t size>
std::string text_of(const std::array<char, size>& field) {
  return {field.begin(), std::find(field.begin(), field.end(), '\0')};
}

// The header's place before the header is written, or a part of it.
bool is_blank(std::string_view bytes) {
  return bytes.substr(0, sizeof(JournalHeader)).find_first_not_of('\0') == std::string_view::npos;
}

bool read_header(std::string_view bytes, JournalHeader& header) {
  if (bytes.size() < sizeof header) return false;
  std::memcpy(&header, bytes.data(), sizeof header);
  return header.magic == journal_magic &&
         header.header_checksum == checksum_of(bytes.substr(0, offsetof(JournalHeader, header_checksum)));
}

// Where the marks are, as far as they are there at all.
std::string_view marks_of(std::string_view bytes, const JournalHeader& header) {
  return header.marks_offset >= bytes.size() ? std::string_view() : bytes.substr(header.marks_offset, header.entries);
}

bool is_whole(std::string_view bytes, const JournalHeader& header) {
  const std::size_t rest = bytes.size() - sizeof header;
  return header.body_size <= rest && marks_of(bytes, header).size() == header.entries &&
         checksum_of(bytes.substr(sizeof header, header.body_size)) == header.body_checksum;
}

}  // namespace

JournalReader::State JournalReader::open(const std::string& path) {
  file_ = FileDescriptor(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file_ && errno == ENOENT) return State::missing;
  State state = State::missing;
  if (!file_) {
    error_ = system_error_text(errno);
  } else if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0) {
    state = read_file();
  } else if (errno == EWOULDBLOCK) {
    return State::in_progress;
  } else {
    error_ = system_error_text(errno);
  }
  if (!error_.empty()) error_ = translated("the journal “{}” cannot be used: {}", path, error_);
  return state;
}

JournalReader::State JournalReader::read_file() {
  struct stat status {};
  if (::fstat(file_.get(), &status) != 0 || status.st_nlink == 0) return State::missing;
  bytes_.resize(static_cast<std::size_t>(status.st_size));
  for (std::size_t filled = 0; filled < bytes_.size();) {
    const ssize_t got = ::read(file_.get(), bytes_.data() + filled, bytes_.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) error_ = system_error_text(errno);
    if (got < 0) return State::missing;
    if (got == 0) bytes_.resize(filled);
    filled += static_cast<std::size_t>(got);
  }
  return parse(bytes_);
}

JournalReader::State JournalReader::parse(std::string_view bytes) {
  JournalHeader header;
  if (is_blank(bytes)) return State::unsealed;
  if (!read_header(bytes, header)) {
    error_ = translated("its beginning is damaged");
    return State::damaged;
  }
  const std::string_view marks = marks_of(bytes, header);
  if (header.version != journal_version && header.version != journal_version_with_cycles) {
    error_ = translated("another version of the program made it");
    return State::damaged;
  }
  // The marks are written after all else was synced: where there is one, the rest was right once.
  if (!is_whole(bytes, header)) {
    if (marks.find_first_not_of('\0') == std::string_view::npos) return State::unsealed;
    error_ = translated("it is damaged");
    return State::damaged;
  }
  info_.isFolders = (header.flags & flag_folders) != 0;
  info_.paths_follow = (header.flags & flag_paths_follow) != 0;
  info_.appversion = text_of(header.appversion);
  if (!read_records(bytes.substr(sizeof header, header.body_size), header.entries)) {
    error_ = translated("it is damaged");
    return State::damaged;
  }
  read_marks(marks);
  marks_offset_ = header.marks_offset;
  return State::sealed;
}

void JournalReader::mark(std::size_t index, JournalMark mark) noexcept {
  const auto byte = static_cast<std::uint8_t>(mark);
  entries_[index].mark = mark;
  // A mark that is lost makes the item's fate a question to the disk, no more.
  if (file_ && ::pwrite(file_.get(), &byte, 1, static_cast<off_t>(marks_offset_ + index)) != 1) return;
}

bool JournalReader::read_records(std::string_view body, std::uint64_t count) {
  if (count > body.size() / sizeof(JournalRecord)) return false;
  entries_.reserve(count);
  std::unordered_map<std::uint64_t, std::uint32_t> numbers;
  JournalRecord record;
  std::string_view text;
  while (!body.empty()) {
    if (!take_record(body, record, text)) return false;
    if (record.folder == folder_definition) {
      numbers[record.inode] = static_cast<std::uint32_t>(folders_.size());
      folders_.push_back(text);
      continue;
    }
    if (record.folder == cycle_definition) {
      cycles_.push_back({entries_.size(), record.inode, text});
      continue;
    }
    const auto number = numbers.find(record.folder);
    if (number == numbers.end()) return false;
    entries_.push_back({number->second, JournalMark::none, record.inode, text.substr(0, record.old_size),
                        text.substr(record.old_size)});
  }
  return entries_.size() == count && are_cycles_whole();
}

bool JournalReader::are_cycles_whole() const {
  std::size_t end = 0;
  return std::ranges::all_of(cycles_, [&](const JournalCycle& cycle) {
    if (cycle.first < end || cycle.count < 2 || cycle.count > entries_.size() - cycle.first) return false;
    end = cycle.first + cycle.count;
    const auto is_elsewhere = [&](const JournalEntry& entry) { return entry.folder != entries_[cycle.first].folder; };
    return std::none_of(entries_.begin() + static_cast<std::ptrdiff_t>(cycle.first),
                        entries_.begin() + static_cast<std::ptrdiff_t>(end), is_elsewhere) &&
           !cycle.reserved.empty() &&
           cycle.reserved.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
  });
}

void JournalReader::read_marks(std::string_view marks) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(marks[i]);
    entries_[i].mark =
        byte <= static_cast<std::uint8_t>(JournalMark::half) ? static_cast<JournalMark>(byte) : JournalMark::begun;
  }
}

}  // namespace brindle
