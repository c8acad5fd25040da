#include "log/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include "log/journal_format.h"
#include "platform/atomic_file.h"
#include "platform/translation.h"

namespace brindle {
namespace {

constexpr std::size_t buffer_size = std::size_t{256} * 1024;

bool write_at(int descriptor, const char* bytes, std::size_t size, std::uint64_t offset) {
  while (size > 0) {
    const ssize_t written = ::pwrite(descriptor, bytes, size, static_cast<off_t>(offset));
    if (written < 0 && errno != EINTR) return false;
    if (written <= 0) continue;
    bytes += written;
    offset += static_cast<std::uint64_t>(written);
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

// Another process may have taken the new file for one left behind, and removed it before it was locked.
int lock_new_file(int descriptor) {
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK ? EEXIST : errno;
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return errno;
  return status.st_nlink == 0 ? EEXIST : 0;
}

template <std::size_t size>
void copy_text(std::array<char, size>& field, std::string_view text) {
  std::copy_n(text.data(), std::min(text.size(), size - 1), field.data());
}

}  // namespace

void JournalWriter::close() {
  marks_.release();
  file_.close();
}

Status JournalWriter::status() const {
  if (error_ == 0) return {};
  return Status(translated("the journal “{}” cannot be written: {}", path_, translated(system_error_text(error_))),
                error_);
}

Status JournalWriter::create(const std::string& path, const JournalInfo& info) {
  close();
  path_ = path;
  info_ = info;
  file_ = FileDescriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, private_file_mode));
  error_ = file_ ? lock_new_file(file_.get()) : errno;
  if (error_ != 0) {
    if (file_ && error_ != EEXIST) ::unlink(path_.c_str());
    close();
    return status();
  }
  MarkMap::exempt_from_copy(file_.get());
  buffer_ = std::make_unique_for_overwrite<char[]>(buffer_size);
  filled_ = 0;
  count_ = 0;
  has_cycles_ = false;
  written_ = sizeof(JournalHeader);  // its place is left free until seal()
  checksum_ = {};
  return {};
}

void JournalWriter::flush() {
  if (error_ == 0 && !write_at(file_.get(), buffer_.get(), filled_, written_)) error_ = errno;
  checksum_.add({buffer_.get(), filled_});
  written_ += std::exchange(filled_, 0);
}

void JournalWriter::append(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const char*>(data);
  while (size > 0) {
    const std::size_t part = std::min(size, buffer_size - filled_);
    std::memcpy(buffer_.get() + filled_, bytes, part);
    filled_ += part;
    bytes += part;
    size -= part;
    if (filled_ == buffer_size) flush();
  }
}

void JournalWriter::add_folder(std::uint32_t folder, std::string_view path) {
  const auto low = static_cast<std::uint16_t>(path.size() & 0xFFFFU);
  const auto high = static_cast<std::uint16_t>(path.size() >> 16U);
  const JournalRecord record{folder_definition, low, high, folder};
  append(&record, sizeof record);
  append(path.data(), path.size());
}

void JournalWriter::add(std::uint32_t folder, std::string_view old_name, std::string_view new_name,
                        std::uint64_t inode) {
  const JournalRecord record{folder, static_cast<std::uint16_t>(old_name.size()),
                             static_cast<std::uint16_t>(new_name.size()), inode};
  append(&record, sizeof record);
  append(old_name.data(), old_name.size());
  append(new_name.data(), new_name.size());
  ++count_;
}

void JournalWriter::begin_cycle(std::size_t count, std::string_view reserved) {
  const JournalRecord record{cycle_definition, static_cast<std::uint16_t>(reserved.size()), 0, count};
  append(&record, sizeof record);
  append(reserved.data(), reserved.size());
  has_cycles_ = true;
}

bool JournalWriter::write_header() {
  JournalHeader header;
  header.magic = journal_magic;
  header.version = has_cycles_ ? journal_version_with_cycles : journal_version;
  header.flags = (info_.isFolders ? flag_folders : 0) | (info_.paths_follow ? flag_paths_follow : 0);
  header.entries = count_;
  header.body_size = written_ - sizeof header;
  header.body_checksum = checksum_.value();
  header.marks_offset = marks_offset_;
  copy_text(header.appversion, info_.appversion);
  std::array<char, sizeof header> bytes{};
  std::memcpy(bytes.data(), &header, sizeof header);
  header.header_checksum = checksum_of({bytes.data(), offsetof(JournalHeader, header_checksum)});
  std::memcpy(bytes.data(), &header, sizeof header);
  if (!write_at(file_.get(), bytes.data(), bytes.size(), 0)) error_ = errno;
  return error_ == 0;
}

Status JournalWriter::seal() {
  flush();
  buffer_.reset();
  if (error_ != 0) return status();
  const auto page = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
  marks_offset_ = (written_ + page - 1) / page * page;
  error_ = MarkMap::reserve(file_.get(), marks_offset_, count_);
  if (error_ != 0 || !write_header()) return status();
  if (::fdatasync(file_.get()) != 0) error_ = errno;
  if (error_ == 0) error_ = sync_folder_of(path_);
  if (error_ != 0) return status();
  marks_.use(file_.get(), marks_offset_, count_);
  return {};
}

void JournalWriter::remove() {
  if (!file_) return;
  ::unlink(path_.c_str());
  close();
}

}  // namespace brindle
