#include "window/picture_reader.h"

#include <QFile>
#include <QImageReader>
#include <utility>

#include "metadata/image_properties.h"
#include "platform/byte_source.h"
#include "platform/process.h"

namespace brindle {
namespace {

// A picture may claim any size; this much memory is given to one.
constexpr int most_megabytes = 512;
constexpr std::uint64_t largest_file = std::uint64_t{1} << 30U;

}  // namespace

QImage read_picture(const std::string& path, QSize bounds) {
  const RegularFile file = RegularFile::open(path);
  if (!file || file.size() > largest_file) return {};
  QFile device;
  if (!device.open(file.descriptor(), QIODevice::ReadOnly, QFileDevice::DontCloseHandle)) return {};
  QImageReader reader(&device);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(most_megabytes);
  const QSize size = reader.size();
  const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
  const QSize room = turned ? bounds.transposed() : bounds;
  if (size.isValid() && (size.width() > room.width() || size.height() > room.height()))
    reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
  QImage image = reader.read();
  if (image.width() <= bounds.width() && image.height() <= bounds.height()) return image;
  return image.scaled(bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

PictureReader::~PictureReader() {
  {
    const std::scoped_lock lock(mutex_);
    ends_ = true;
  }
  wake_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void PictureReader::read(Request request) {
  {
    const std::scoped_lock lock(mutex_);
    waiting_ = std::move(request);
  }
  wake_.notify_one();
  if (!thread_.joinable() && !start_thread(thread_, [this] { run(); })) return;  // the next request tries again
}

void PictureReader::run() {
  for (;;) {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return ends_ || waiting_; });
    if (ends_) return;
    const Request request = *std::exchange(waiting_, std::nullopt);
    lock.unlock();
    QImage image = read_picture(request.path, request.bounds);
    PhotoFields fields;
    if (!image.isNull()) fields = read_photo_fields(request.path);
    request.done(std::move(image), std::move(fields));
  }
}

}  // namespace brindle
