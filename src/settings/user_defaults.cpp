#include "settings/user_defaults.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "plist/property_list.h"
#include "plist/property_value.h"
#include "text/number_text.h"

namespace brindle {
namespace {

/// Keeps other programs from writing into a folder's defaults meanwhile. Waits for two seconds at most: a disk without
/// locks, or a program that hangs, must not keep this one from ending.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder) : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    constexpr int most_tries = 200;
    for (int tries = 0; folder_ && tries < most_tries; ++tries) {
      if (::flock(folder_.get(), LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR)) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

 private:
  FileDescriptor folder_;
};

/// What the file holds. A file that is not there, or empty, holds nothing and is no error.
struct Content {
  PropertyDictionary values;
  int error = 0;         // errno: it cannot be read
  bool damaged = false;  // it is no dictionary
};

Content read_content(const std::string& path) {
  Content content;
  const Result<std::string> bytes = read_regular_file(path, property_list_size_limit);
  content.error = bytes.status().error();
  if (content.error == ENOENT || content.error == ENOTDIR) content.error = 0;
  if (!bytes.ok() || bytes->empty()) return content;
  const Result<PropertyList> list = read_property_list(*bytes);
  const auto* values = list.ok() ? list->value.get_if<PropertyDictionary>() : nullptr;
  content.damaged = values == nullptr;
  if (values != nullptr) content.values = *values;
  return content;
}

using Changes = std::map<std::string, std::optional<PropertyValue>, std::less<>>;

PropertyDictionary merged(const PropertyDictionary& old, const Changes& changes) {
  PropertyDictionary values;
  for (const PropertyEntry& entry : old) {
    if (!changes.contains(to_utf8(entry.key))) values.append(entry.key, entry.value);
  }
  for (const auto& [key, value] : changes) {
    if (value) values.append(decode_file_name(key), *value);
  }
  return values;
}

}  // namespace

UserDefaults::UserDefaults(std::string path) : path_(std::move(path)) {}

std::string UserDefaults::default_path() {
  const std::string folder = config_home();
  return folder.empty() ? folder : folder + "/Tessalon/Brindle4.plist";
}

const PropertyValue* UserDefaults::find(std::string_view key) {
  const auto changed = changes_.find(key);
  if (changed != changes_.end()) return changed->second ? &*changed->second : nullptr;
  if (!read_ && !path_.empty()) values_ = read_content(path_).values;
  read_ = true;
  return values_.find(decode_file_name(key));
}

bool UserDefaults::boolean(std::string_view key, bool otherwise) {
  const PropertyValue* value = find(key);
  return value == nullptr ? otherwise : flag_value(*value).value_or(otherwise);
}

std::u16string UserDefaults::text(std::string_view key, std::u16string_view otherwise) {
  const PropertyValue* value = find(key);
  if (value == nullptr) return std::u16string(otherwise);
  if (const auto* number = value->get_if<std::int64_t>()) return decimal_text(*number);
  const auto* text = value->get_if<std::u16string>();
  return text == nullptr ? std::u16string(otherwise) : *text;
}

void UserDefaults::set(std::string_view key, PropertyValue value) {
  changes_.insert_or_assign(std::string(key), std::move(value));
}

void UserDefaults::remove(std::string_view key) {
  changes_.insert_or_assign(std::string(key), std::nullopt);
}

Status UserDefaults::flush() {
  if (changes_.empty()) return {};
  if (path_.empty()) {
    return Status(
        translated("The defaults cannot be saved: neither HOME nor XDG_CONFIG_HOME is set to an absolute path"));
  }
  const auto failure = [this](int error) {
    return Status(translated("The defaults cannot be saved: “{}”: {}", path_, translated(system_error_text(error))),
                  error);
  };
  const std::string folder = split_path(path_).folder;
  if (const Status made = make_folders(folder, 0700); !made.ok()) return failure(made.error());
  const FolderLock lock(folder);
  const Content content = read_content(path_);
  if (content.error != 0) return failure(content.error);
  if (content.damaged && ::rename(path_.c_str(), (path_ + ".damaged").c_str()) != 0) return failure(errno);
  PropertyDictionary values = merged(content.values, changes_);
  if (Status status = write_property_list_file(path_, values); !status.ok()) return status;
  values_ = std::move(values);
  read_ = true;
  changes_.clear();
  return {};
}

}  // namespace brindle
