#include "log/log_name.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/ascii.h"
#include "platform/folder_handle.h"
#include "platform/path.h"

namespace brindle {
namespace {

constexpr std::string_view prefix = "Log ";
constexpr std::string_view journal_ending = "-#.journal";
constexpr std::string_view ending = "-#.xml";
constexpr std::string_view xml_extension = ".xml";
constexpr std::string_view journal_extension = ".journal";

// Six numbers with one character between each two.
bool read_numbers(std::string_view text, std::array<int, 6>& numbers) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (int& number : numbers) {
    const auto [stop, error] = std::from_chars(at, end, number);
    if (error != std::errc()) return false;
    at = stop == end ? end : stop + 1;
  }
  return at == end;
}

bool is_count(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::string getNewLogFileName(std::time_t when) {
  std::tm local{};
  ::localtime_r(&when, &local);
  return fmt::format("{}{:%d-%m-%Y %H-%M-%S}{}", prefix, local, ending);
}

bool is_open_log_name(std::string_view name) {
  return begins_ignoring_case(name, prefix) && ends_ignoring_case(name, ending);
}

bool is_journal_name(std::string_view name) {
  return begins_ignoring_case(name, prefix) && ends_ignoring_case(name, journal_ending);
}

std::time_t log_time(const std::string& path) {
  const std::string name = split_path(path).name;
  std::array<int, 6> numbers{};
  if (!is_open_log_name(name) || name.size() < prefix.size() + ending.size()) return -1;
  const auto digits = std::string_view(name).substr(prefix.size(), name.size() - prefix.size() - ending.size());
  if (!read_numbers(digits, numbers)) return -1;
  std::tm time{};
  time.tm_mday = numbers[0];
  time.tm_mon = numbers[1] - 1;
  time.tm_year = numbers[2] - 1900;
  time.tm_hour = numbers[3];
  time.tm_min = numbers[4];
  time.tm_sec = numbers[5];
  time.tm_isdst = -1;
  return std::mktime(&time);
}

std::string next_log_path(const std::string& path) {
  const std::time_t time = log_time(path);
  if (time == -1) return {};
  return join_path(split_path(path).folder, getNewLogFileName(time + 1));
}

std::string finished_log_path(const std::string& path, std::size_t count) {
  const std::size_t place = path.rfind('#');
  if (place == std::string::npos || path.find('/', place) != std::string::npos) return path;
  return fmt::format("{}{}{}", std::string_view(path).substr(0, place), count,
                     std::string_view(path).substr(place + 1));
}

std::vector<std::string> find_finished_logs(const std::string& path) {
  const PathParts parts = split_path(path);
  const std::string start = parts.name.substr(0, parts.name.rfind('#'));
  std::vector<std::string> found;
  const FolderHandle folder = FolderHandle::open(parts.folder);
  if (!folder) return found;
  FolderReader reader;
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    if (!begins_ignoring_case(entry.name, start) || !ends_ignoring_case(entry.name, xml_extension)) continue;
    if (entry.name.size() < start.size() + xml_extension.size()) continue;
    const std::size_t count_size = entry.name.size() - start.size() - xml_extension.size();
    if (is_count(entry.name.substr(start.size(), count_size))) found.push_back(join_path(parts.folder, entry.name));
  }
  return found;
}

std::string journal_path(const std::string& path) {
  const bool has_extension = ends_ignoring_case(path, xml_extension);
  return path.substr(0, path.size() - (has_extension ? xml_extension.size() : 0)).append(journal_extension);
}

std::string unfinished_log_path(const std::string& path) {
  return path + ".part";
}

std::string log_path_of_journal(const std::string& path) {
  return path.substr(0, path.size() - journal_extension.size()).append(xml_extension);
}

}  // namespace brindle
