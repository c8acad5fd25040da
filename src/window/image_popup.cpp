#include "window/image_popup.h"

#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QMimeDatabase>
#include <QPointer>
#include <QScreen>
#include <QSize>
#include <QVBoxLayout>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "list/file_system_item.h"
#include "metadata/image_properties.h"
#include "platform/byte_source.h"
#include "platform/process.h"
#include "texts/shown_text.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {

// Reads pictures for people to look at, one at a time, on a thread of its own.

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

namespace {

QLabel* label(QWidget* parent, const char* name) {
  QLabel* made = plain_label(parent);
  made->setObjectName(QString::fromLatin1(name));
  made->setAlignment(Qt::AlignCenter);
  return made;
}

QString line_of(const PhotoFields& fields) {
  FileSystemItem item;
  item.photo() = fields;
  QStringList parts;
  for (const char* key : {"make", "model", "dimensions", "pictureTaken"}) {
    const auto text = item.displayField(key);
    if (text && !text->empty()) parts << qt_text(in_sentence(*text));
  }
  return parts.join(QStringLiteral("  ·  "));
}

bool names_picture(const ItemRecord& item) {
  static const QMimeDatabase types;
  const auto mode = QMimeDatabase::MatchExtension;
  return !item.is_folder() && types.mimeTypeForFile(path_text(item.name()), mode).name().startsWith(u"image/");
}

}  // namespace

ImagePopup::ImagePopup(WindowModel& model, QWidget* owner)
    : QFrame(owner, Qt::ToolTip),
      model_(model),
      picture_(label(this, "popupPicture")),
      name_(label(this, "popupName")),
      fields_(label(this, "popupFields")),
      reader_(std::make_unique<PictureReader>()) {
  setObjectName(QStringLiteral("imagePopup"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFrameShape(StyledPanel);
  QFont bold = font();
  bold.setBold(true);
  name_->setFont(bold);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(picture_);
  rows->addWidget(name_);
  rows->addWidget(fields_);
}

ImagePopup::~ImagePopup() = default;

void ImagePopup::show_row_when_picture(std::size_t row) {
  if (row < model_.files().size() && names_picture(model_.files()[row])) show_row(row);
}

void ImagePopup::show_row(std::size_t row) {
  if (row >= model_.files().size()) return;
  const int width = fontMetrics().averageCharWidth() * 70;
  const QString name = in_one_line(display_path_text(model_.files()[row].name()));
  name_->setText(fontMetrics().elidedText(name, Qt::ElideMiddle, width));
  picture_->setText(localized_text("PICTURELOADING"));
  fields_->hide();
  const QSize bounds = QSize(width, width * 3 / 4) * devicePixelRatioF();
  const QPointer<ImagePopup> self(this);
  const auto done = [self, request = ++request_](QImage image, const PhotoFields& fields) {
    QMetaObject::invokeMethod(qApp, [self, request, image = std::move(image), fields] {
      if (!self || !self->isVisible() || self->request_ != request) return;
      self->show_fields(fields);
      self->show_image(image);
    });
  };
  reader_->read({model_.files().path(row), bounds, done});
  place();
  show();
}

void ImagePopup::show_image(const QImage& image) {
  if (image.isNull()) {
    picture_->setText(localized_text("PICTUREUNREADABLE"));
  } else {
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    picture_->setPixmap(pixmap);
  }
  place();
}

void ImagePopup::show_fields(const PhotoFields& fields) {
  const QString text = line_of(fields);
  fields_->setText(text);
  fields_->setVisible(!text.isEmpty());
}

// Beside the mouse, and whole on its screen.
void ImagePopup::place() {
  adjustSize();
  const QPoint mouse = QCursor::pos();
  const QScreen* screen = QApplication::screenAt(mouse);
  const QRect room = (screen ? screen : QApplication::primaryScreen())->availableGeometry();
  QPoint corner = mouse + QPoint(24, 16);
  if (corner.x() + width() > room.right()) corner.setX(mouse.x() - width() - 24);
  corner.setX(std::max(corner.x(), room.left()));
  corner.setY(std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() - height())));
  move(corner);
}

void ImagePopup::mousePressEvent(QMouseEvent* /*event*/) {
  hide();
}

}  // namespace brindle
