#include "window/image_popup.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QMimeDatabase>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

#include "texts/shown_text.h"
#include "window/picture_reader.h"
#include "window/plain_text.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
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

ImagePopup::ImagePopup(BrindleAppController& app, QWidget* owner)
    : QFrame(owner, Qt::ToolTip),
      app_(app),
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
  if (row < app_.files().size() && names_picture(app_.files()[row])) show_row(row);
}

void ImagePopup::show_row(std::size_t row) {
  if (row >= app_.files().size()) return;
  const int width = fontMetrics().averageCharWidth() * 70;
  const QString name = in_one_line(display_path_text(app_.files()[row].name()));
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
  reader_->read({app_.files().path(row), bounds, done});
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
