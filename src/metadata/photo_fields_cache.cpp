#include "metadata/photo_fields_cache.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "metadata/image_properties.h"
#include "platform/process.h"
#include "text/hash.h"

namespace brindle {
namespace {

constexpr std::size_t text_limit = 256;  // no cell shows more
constexpr std::size_t text_count = 1U << 16U;

/// Which file. `id` is an inode, or a hash of the name.
struct Key {
  std::uint64_t id = 0;
  FolderId folder = FolderTable::root;
  bool is_inode = true;
  bool operator==(const Key&) const = default;
};

struct KeyHash {
  std::size_t operator()(const Key& key) const {
    return hash_detail::mix(key.id ^ 0x9E3779B97F4A7C15U, 2 * std::uint64_t{key.folder} + (key.is_inode ? 1 : 0) + 3);
  }
};

Key key_of(const FileList& files, std::size_t row) {
  const ItemRecord& item = files[row];
  const FolderId folder = item.folder;
  if (item.inode != 0) return {item.inode, folder, true};
  return {hash_bytes(item.name()), folder, false};
}

/// Texts of which there are few, each kept once.
class TextTable {
 public:
  std::uint32_t intern(std::u16string_view text) {
    const auto [place, is_new] =
        numbers_.emplace(text.substr(0, text_limit), static_cast<std::uint32_t>(texts_.size()));
    if (is_new) texts_.push_back(&place->first);
    return place->second;
  }
  const std::u16string& operator[](std::uint32_t number) const { return *texts_[number]; }
  std::size_t size() const { return texts_.size(); }

 private:
  std::unordered_map<std::u16string, std::uint32_t> numbers_;
  std::vector<const std::u16string*> texts_;  // by number
};

/// PhotoFields without their texts.
struct PackedFields {
  std::uint32_t make;
  std::uint32_t model;
  std::uint32_t dimensions;
  std::int32_t dimensionValue;
  std::optional<WallTime> pictureTaken;
};

}  // namespace

/// What is known. Each call is short.
class PhotoFieldsCache::Store {
 public:
  explicit Store(std::size_t capacity) : capacity_(capacity) {}

  std::optional<PhotoFields> find(const Key& key) {
    const std::lock_guard lock(mutex_);
    const PackedFields* const packed = look_up(key);
    if (packed == nullptr) return std::nullopt;
    return PhotoFields{texts_[packed->make], texts_[packed->model], texts_[packed->dimensions], packed->pictureTaken,
                       packed->dimensionValue};
  }

  bool contains(const Key& key) {
    const std::lock_guard lock(mutex_);
    return look_up(key) != nullptr;
  }

  /// `age` is what age() was before the file was read: what was read before a clear() is not kept.
  void keep(const Key& key, const PhotoFields& fields, std::uint64_t age) {
    const std::lock_guard lock(mutex_);
    if (age != age_) return;
    if (texts_.size() > text_count) forget();
    insert(key, {texts_.intern(fields.make), texts_.intern(fields.model), texts_.intern(fields.dimensions),
                 fields.dimensionValue, fields.pictureTaken});
  }

  std::uint64_t age() const {
    const std::lock_guard lock(mutex_);
    return age_;
  }

  void clear() {
    const std::lock_guard lock(mutex_);
    ++age_;
    forget();
  }

 private:
  using Table = std::unordered_map<Key, PackedFields, KeyHash>;

  // Two tables: when the first is full, it becomes the second, whose items are gone unless they were asked for.
  const PackedFields* look_up(const Key& key) {
    if (const auto found = recent_.find(key); found != recent_.end()) return &found->second;
    const auto found = older_.find(key);
    if (found == older_.end()) return nullptr;
    const PackedFields packed = found->second;
    older_.erase(found);
    return insert(key, packed);
  }

  const PackedFields* insert(const Key& key, const PackedFields& packed) {
    if (recent_.size() >= capacity_) {
      older_ = std::move(recent_);
      recent_ = {};
    }
    return &recent_.insert_or_assign(key, packed).first->second;
  }

  void forget() {
    recent_ = {};
    older_ = {};
    texts_ = {};
  }

  std::size_t capacity_;
  mutable std::mutex mutex_;
  Table recent_;
  Table older_;
  TextTable texts_;
  std::uint64_t age_ = 0;
};

/// The thread that reads what a view asks for.
class PhotoFieldsCache::Reader {
 public:
  struct Wanted {
    Key key;
    std::string path;
  };

  Reader(Store& store, Changed changed) : store_(store), changed_(std::move(changed)) {}
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  ~Reader() {
    {
      const std::lock_guard lock(mutex_);
      stops_ = true;
    }
    wakes_.notify_all();
    if (thread_.joinable()) thread_.join();
  }

  void replace(std::deque<Wanted> wanted) {
    const std::lock_guard lock(mutex_);
    wanted_ = std::move(wanted);
    if (wanted_.empty()) return;
    if (!thread_.joinable() && !start_thread(thread_, [this] { run(); })) return;  // the next request tries again
    wakes_.notify_all();
  }

 private:
  void run() {
    std::unique_lock lock(mutex_);
    while (true) {
      if (wanted_.empty() && !stops_) report(lock);
      wakes_.wait(lock, [this] { return stops_ || !wanted_.empty(); });
      if (stops_) return;
      const Wanted next = std::move(wanted_.front());
      wanted_.pop_front();
      lock.unlock();
      read(next);
      lock.lock();
      unreported_ = true;
      if (std::chrono::steady_clock::now() >= next_report_) report(lock);
    }
  }

  void read(const Wanted& wanted) {
    const std::uint64_t age = store_.age();
    try {
      store_.keep(wanted.key, read_photo_fields(wanted.path), age);
    } catch (const std::exception&) {
      return;  // without memory the row stays unknown
    }
  }

  void report(std::unique_lock<std::mutex>& lock) {
    constexpr std::chrono::milliseconds pause{33};
    if (!std::exchange(unreported_, false) || !changed_) return;
    lock.unlock();
    changed_();
    lock.lock();
    next_report_ = std::chrono::steady_clock::now() + pause;
  }

  Store& store_;
  Changed changed_;
  std::mutex mutex_;
  std::condition_variable wakes_;
  std::deque<Wanted> wanted_;
  bool stops_ = false;
  bool unreported_ = false;
  std::chrono::steady_clock::time_point next_report_;
  std::thread thread_;
};

PhotoFieldsCache::PhotoFieldsCache(Changed changed, std::size_t capacity)
    : store_(std::make_unique<Store>(capacity)), reader_(std::make_unique<Reader>(*store_, std::move(changed))) {}

PhotoFieldsCache::~PhotoFieldsCache() {
  reader_.reset();
}

PhotoFields PhotoFieldsCache::fields(const FileList& files, std::size_t row) {
  if (files[row].is_folder()) return {};
  const Key key = key_of(files, row);
  if (std::optional<PhotoFields> known = store_->find(key)) return std::move(*known);
  const std::uint64_t age = store_->age();
  PhotoFields read = read_photo_fields(files.path(row));
  store_->keep(key, read, age);
  return read;
}

std::optional<PhotoFields> PhotoFieldsCache::find(const FileList& files, std::size_t row) {
  if (files[row].is_folder()) return PhotoFields{};
  return store_->find(key_of(files, row));
}

void PhotoFieldsCache::request(const FileList& files, std::span<const std::size_t> rows) {
  std::deque<Reader::Wanted> wanted;
  for (const std::size_t row : rows) {
    if (files[row].is_folder()) continue;
    const Key key = key_of(files, row);
    if (!store_->contains(key)) wanted.push_back({key, files.path(row)});
  }
  reader_->replace(std::move(wanted));
}

void PhotoFieldsCache::clear() {
  reader_->replace({});
  store_->clear();
}

}  // namespace brindle
