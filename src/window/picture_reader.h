#pragma once

// Reads pictures for people to look at, one at a time, on a thread of its own.

#include <QImage>
#include <QSize>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "list/file_system_item.h"

namespace brindle {

/// Requests come from one thread; each replaces the one that is still waiting.
class PictureReader {
 public:
  struct Request {
    std::string path;  ///< bytes
    QSize bounds;      ///< pixels; the picture is no larger
    /// Called on the reading thread. A null image when there is no picture, or one too large to be read.
    std::function<void(QImage, PhotoFields)> done;
  };

  PictureReader() = default;
  PictureReader(const PictureReader&) = delete;
  PictureReader& operator=(const PictureReader&) = delete;
  /// Waits for the file that is being read.
  ~PictureReader();

  void read(Request request);

 private:
  void run();

  std::mutex mutex_;
  std::condition_variable wake_;
  std::optional<Request> waiting_;
  bool ends_ = false;
  std::thread thread_;  // begun with the first request
};

/// The picture in a file, upright, scaled down into `bounds`. Null for whatever is no regular file with a picture.
QImage read_picture(const std::string& path, QSize bounds);

}  // namespace brindle
