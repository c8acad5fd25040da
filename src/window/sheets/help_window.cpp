#include "window/sheets/help_window.h"

#include <QFile>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "texts/string_table.h"
#include "window/form_rows.h"
#include "window/icons.h"
#include "window/sheets.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

// In the order in which they are read.
constexpr std::array<const char*, 21> pages = {
    "index.html",          "Items.html",          "Preview.html",         "Live-preview.html",     "Sequence.html",
    "Insert-Delete.html",  "Replace-Remove.html", "Prefix-Suffix.html",   "Date-Time.html",        "General.html",
    "Audio-renaming.html", "Photo-renaming.html", "Path-components.html", "Rename-from-list.html", "Rules.html",
    "Profiles.html",       "Undo.html",           "Export.html",          "Extensions.html",       "ChooseItems.html",
    "Preferences.html",
};

// In English where the language has no such page.
QString page_file(const QString& page) {
  const QString translated = QStringLiteral(":/brindle/help/%1/%2").arg(qt_text(current_language().code), page);
  return QFile::exists(translated) ? translated : QStringLiteral(":/brindle/help/en/%1").arg(page);
}

QUrl page_url(const QString& page) {
  return QUrl(QStringLiteral("qrc") + page_file(page));
}

// Also of what a page refers to the English where the language has none.
class HelpBrowser final : public QTextBrowser {
 public:
  QVariant loadResource(int type, const QUrl& name) override {
    const QString path = source().resolved(name).path();
    return QTextBrowser::loadResource(type, page_url(path.section('/', 4)));  // behind "/brindle/help/LANGUAGE/"
  }
};

// Titles stand in the pages, and nowhere else.
QString title_of(const QString& page) {
  QFile file(page_file(page));
  if (!file.open(QIODevice::ReadOnly)) return {};
  static const QRegularExpression title(QStringLiteral("<title>(.*?)</title>"));
  return title.match(QString::fromUtf8(file.readAll())).captured(1);
}

QString style_sheet(const QWidget& widget) {
  const QPalette& colours = widget.palette();
  return QStringLiteral(
             "h1 { font-size: x-large; margin-top: 4px; } h2 { font-size: large; margin-top: 18px; }"
             "p, li { line-height: 130%; } .picture { line-height: 100%; } td, th { padding: 4px 14px 4px 0; } th { "
             "text-align: left; }"
             "code, .name { font-family: monospace; } .hint { color: %1; } a { color: %2; text-decoration: none; }")
      .arg(quiet_colour(colours).name(), colours.color(QPalette::Link).name());
}

// Makes pictures narrower where the window is.
class PictureFitter final : public QObject {
 public:
  explicit PictureFitter(QTextBrowser& browser) : QObject(&browser), browser_(browser) {
    browser.viewport()->installEventFilter(this);
    connect(&browser, &QTextBrowser::sourceChanged, this, [this] { fit(); });
  }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Resize) fit();
    return false;
  }

 private:
  static constexpr int own_width = QTextFormat::UserProperty;

  void fit() {
    QTextDocument& document = *browser_.document();
    const qreal room = browser_.viewport()->width() - 2 * document.documentMargin();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
        if (!picture.isValid()) continue;
        if (!picture.hasProperty(own_width)) picture.setProperty(own_width, picture.width());
        const qreal width = std::max(1.0, std::min(picture.doubleProperty(own_width), room));
        if (picture.width() == width) continue;
        picture.setWidth(width);
        QTextCursor cursor(&document);
        cursor.setPosition(part.fragment().position());
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        cursor.setCharFormat(picture);
        break;  // a paragraph has one, and its parts are others now
      }
    }
  }

  QTextBrowser& browser_;
};

}  // namespace

HelpWindow::HelpWindow() : contents_(new QListWidget), browser_(new HelpBrowser) {
  setObjectName(QStringLiteral("helpWindow"));
  setWindowIcon(application_icon());
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_QuitOnClose, false);
  contents_->setObjectName(QStringLiteral("helpContents"));
  contents_->setAccessibleName(localized_text("HELPCONTENTS"));
  browser_->setObjectName(QStringLiteral("helpText"));
  browser_->setAccessibleName(localized_text("HELPTEXT"));
  browser_->setOpenExternalLinks(true);
  browser_->document()->setDocumentMargin(spacing(*this) * 2);
  browser_->document()->setDefaultStyleSheet(style_sheet(*this));
  new PictureFitter(*browser_);  // goes with the browser
  contents_->setSpacing(fontMetrics().height() / 8);
  fill_contents();
  auto* halves = new QSplitter;
  halves->setChildrenCollapsible(false);
  halves->addWidget(contents_);
  halves->addWidget(browser_);
  halves->setStretchFactor(1, 1);
  const int letter = fontMetrics().averageCharWidth();
  halves->setSizes({letter * 30, letter * 102});
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(make_bar());
  rows->addWidget(halves, 1);
  connect(browser_, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) { page_changed(url); });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  resize(QSize(letter * 136, fontMetrics().height() * 42).boundedTo(screen()->availableSize() * 0.9));
}

QWidget* HelpWindow::make_bar() {
  QPushButton* back = push_button("helpBack", "HELPBACK", [this] { browser_->backward(); });
  QPushButton* forward = push_button("helpForward", "HELPFORWARD", [this] { browser_->forward(); });
  connect(new QShortcut(QKeySequence::Back, this), &QShortcut::activated, browser_, &QTextBrowser::backward);
  connect(new QShortcut(QKeySequence::Forward, this), &QShortcut::activated, browser_, &QTextBrowser::forward);
  for (QPushButton* button : {back, forward}) button->setEnabled(false);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QPushButton::setEnabled);
  QPushButton* first = push_button("helpFirst", "HELPCONTENTS", [this] { show_page("index.html"); });
  return line({back, forward, first});
}

void HelpWindow::fill_contents() {
  for (const char* page : pages) {
    const QString name = QString::fromLatin1(page);
    auto* item = new QListWidgetItem(title_of(name), contents_);
    item->setData(Qt::UserRole, name);
  }
  connect(contents_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
    if (item != nullptr) browser_->setSource(page_url(item->data(Qt::UserRole).toString()));
  });
}

void HelpWindow::show_page(std::string_view page) {
  const QString name = qt_text(page);
  browser_->setSource(page_url(QFile::exists(page_file(name)) ? name : QStringLiteral("index.html")));
}

void HelpWindow::page_changed(const QUrl& url) {
  const QSignalBlocker silence(contents_);
  for (int row = 0; row < contents_->count(); ++row) {
    if (contents_->item(row)->data(Qt::UserRole).toString() == url.fileName()) contents_->setCurrentRow(row);
  }
  const QString title = browser_->documentTitle();
  setWindowTitle(localized_text("HELPTITLE") + (title.isEmpty() ? QString() : QStringLiteral(" – ") + title));
}

void HelpWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  browser_->document()->setDefaultStyleSheet(style_sheet(*this));
  browser_->reload();
}

void show_help_page(QWidget* parent, std::string_view page) {
  static QPointer<HelpWindow> window;
  if (!window) {
    window = new HelpWindow;
    // It belongs to the main window, yet a sheet over that must not block it.
    QObject::connect(parent, &QObject::destroyed, [] { delete window; });
  }
  window->show_page(page);
  window->show();
  window->raise();
  window->activateWindow();
}

}  // namespace brindle
