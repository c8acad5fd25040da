#include "window/url_drops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "window/text.h"

namespace brindle {
namespace {

// Lies over a widget while files hang over it.
class DropFrame final : public QWidget {
 public:
  explicit DropFrame(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
  }
  void surround() {
    setGeometry(parentWidget()->rect());
    raise();
    show();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor colour = palette().color(QPalette::Highlight);
    painter.setPen(QPen(colour, 3));
    colour.setAlpha(28);
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), 6, 6);
  }
};

class FileDrops final : public QObject {
 public:
  FileDrops(QWidget* widget, std::function<void(std::vector<std::string>)> dropped)
      : QObject(widget), dropped_(std::move(dropped)), frame_(new DropFrame(widget)) {
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::DragEnter:
        // Looked at once: another program may have thousands.
        takes_ = holds_files(*static_cast<QDropEvent*>(event)->mimeData());  // NOLINT(*-static-cast-downcast)
        if (takes_) frame_->surround();
        [[fallthrough]];
      case QEvent::DragMove:
        return takes_ && accept(static_cast<QDropEvent*>(event));  // NOLINT(*-static-cast-downcast)
      case QEvent::DragLeave:
        frame_->hide();
        return false;
      case QEvent::Drop:
        frame_->hide();
        return drop(static_cast<QDropEvent*>(event));  // NOLINT(*-static-cast-downcast)
      default:
        return QObject::eventFilter(watched, event);
    }
  }

 private:
  static bool accept(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);  // never a move: the files stay where they are
    event->accept();
    return true;
  }

  // The other program waits until the drop has been answered, and a question may follow.
  bool drop(QDropEvent* event) {
    std::vector<std::string> paths = paths_of(event->mimeData()->urls());
    if (paths.empty()) return false;
    accept(event);
    QMetaObject::invokeMethod(
        this, [this, paths = std::move(paths)] { dropped_(paths); }, Qt::QueuedConnection);
    return true;
  }

  std::function<void(std::vector<std::string>)> dropped_;
  DropFrame* frame_;
  bool takes_ = false;
};

}  // namespace

bool holds_files(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

void accept_file_drops(QWidget* widget, std::function<void(std::vector<std::string>)> dropped) {
  new FileDrops(widget, std::move(dropped));
}

}  // namespace brindle
