#pragma once

// The help: pages of resources/help in the language in use, with a list of them beside. Main thread.

#include <QWidget>
#include <string_view>

class QListWidget;
class QTextBrowser;

namespace brindle {

class HelpWindow final : public QWidget {
 public:
  HelpWindow();

  /// Shows a page by its file name; a name that there is none of shows the contents.
  void show_page(std::string_view page);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QWidget* make_bar();
  void fill_contents();
  void page_changed(const QUrl& url);

  QListWidget* contents_;
  QTextBrowser* browser_;
};

}  // namespace brindle
