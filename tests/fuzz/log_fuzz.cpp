// Feeds any bytes to the readers of logs and journals. What a reader accepts must keep its promises.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "log/journal.h"
#include "log/journal_format.h"
#include "log/rename_log.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

bool is_one_entry(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

std::string entries_of(const brindle::Result<brindle::LogFile>& log) {
  if (!log.ok()) return "unreadable";
  std::string text = log->type + '\n' + log->appversion + '\n';
  for (const brindle::LogEntry& entry : log->entries) {
    for (const std::string_view part :
         {entry.source_folder, entry.source_name, entry.target_folder, entry.target_name, entry.fault}) {
      text.append(part).push_back('\n');
    }
  }
  return text;
}

// A file may be read piece by piece: the outcome is the same as in one go.
void read_as_file(std::string_view bytes, const brindle::Result<brindle::LogFile>& expected) {
  static const int file = memfd_create("log", MFD_CLOEXEC);
  require(ftruncate(file, 0) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
  const auto log = brindle::readLogFile("/proc/self/fd/" + std::to_string(file));
  require(entries_of(log) == entries_of(expected));
  require(!log.ok() || log->checksum == expected->checksum);
}

void read_log(std::string_view bytes) {
  const auto log = brindle::read_log_text(std::string(bytes));
  read_as_file(bytes, log);
  if (!log.ok()) return;
  for (const brindle::LogEntry& entry : log->entries) {
    if (!entry.fault.empty()) continue;
    require(is_one_entry(entry.source_name) && is_one_entry(entry.target_name));
    require(entry.source_folder.starts_with('/') && entry.target_folder.starts_with('/'));
    require(std::strlen(entry.source_name.data()) == entry.source_name.size());
  }
}

// With the checksums put right, or nothing behind them would ever be reached.
void read_journal(std::string bytes) {
  brindle::JournalHeader header;
  if (bytes.size() >= sizeof header) {
    std::memcpy(&header, bytes.data(), sizeof header);
    header.magic = brindle::journal_magic;
    header.version = brindle::journal_version;
    header.body_checksum = brindle::checksum_of(std::string_view(bytes).substr(sizeof header, header.body_size));
    std::memcpy(bytes.data(), &header, sizeof header);
    header.header_checksum = brindle::checksum_of(bytes.substr(0, offsetof(brindle::JournalHeader, header_checksum)));
    std::memcpy(bytes.data(), &header, sizeof header);
  }
  brindle::JournalReader reader;
  if (reader.parse(bytes) != brindle::JournalReader::State::sealed) return;
  std::size_t total = 0;
  for (const brindle::JournalEntry& entry : reader.entries()) {
    require(entry.folder < reader.folders().size());
    total += entry.old_name.size() + entry.new_name.size();
  }
  require(total <= bytes.size());
  for (const brindle::JournalCycle& cycle : reader.cycles()) {
    require(cycle.count >= 2 && cycle.first <= reader.entries().size());
    require(cycle.count <= reader.entries().size() - cycle.first);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  if (*data == 'j') {
    read_journal(bytes);
  } else {
    read_log(bytes);
  }
  return 0;
}
