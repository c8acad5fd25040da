#include "app/window/url_drops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "app/window/text.h"

namespace brindle {
namespace {

class FileDrops final : public QObject {
 public:
  FileDrops(QWidget* widget, std::function<void(std::vector<std::string>)> dropped)
      : QObject(widget), dropped_(std::move(dropped)) {
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::DragEnter:
        // Looked at once: another program may have thousands.
        takes_ = holds_files(*static_cast<QDropEvent*>(event)->mimeData());  // NOLINT(*-static-cast-downcast)
        [[fallthrough]];
      case QEvent::DragMove:
        return takes_ && accept(static_cast<QDropEvent*>(event));  // NOLINT(*-static-cast-downcast)
      case QEvent::Drop:
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
