// The window's program.

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <QUrl>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/app_info.h"
#include "platform/process.h"
#include "platform/real_path.h"
#include "texts/string_table.h"
#include "window/application.h"
#include "window/application_service.h"
#include "window/icons.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

void print(std::FILE* file, const std::string& text) {
  std::fputs(text.c_str(), file);
}

bool is_option(std::string_view argument) {
  return argument.size() > 1 && argument.front() == '-';
}

// What needs no screen. The program's exit status, or -1 to go on.
int answer_options(int argc, char** argv) {
  for (int i = 1; i < argc && std::string_view(argv[i]) != "--"; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--version") {
      print(stdout, "brindle-gui " + std::string(appVersion()) + "\n");
      return 0;
    }
    if (argument == "--help" || argument == "-h") {
      print(stdout, localized("GUIUSAGE"));
      return 0;
    }
  }
  return -1;
}

// Another process may open it: it has another current folder.
std::string absolute(const std::string& path) {
  return path.starts_with('/') ? path : current_folder() + "/" + path;
}

bool exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::symlink_status(path, error).type() != std::filesystem::file_type::not_found;
}

// Some launchers hand over "file:" addresses.
std::string path_of(const std::string& argument) {
  std::string path = absolute(argument);
  if (!argument.starts_with("file:/") || exists(path)) return path;
  const std::vector<std::string> paths = paths_of({QUrl::fromEncoded(QByteArray::fromStdString(argument))});
  return paths.empty() ? path : paths.front();
}

// Files and folders (bytes), as absolute paths, otherwise as they were given; the toolkit has taken its own options by
// now. False when an option is not known.
bool read_paths(int argc, char** argv, std::vector<std::string>& paths) {
  bool options = true;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (options && argument == "--") {
      options = false;
    } else if (options && is_option(argument)) {
      print(stderr, localized_format("GUIUNKNOWNOPTION", argument) + "\n" + localized("GUIUSAGE"));
      return false;
    } else {
      paths.push_back(path_of(argument));
    }
  }
  return true;
}

void set_up(QTranslator& translator) {
  QApplication::setApplicationName(QStringLiteral("Brindle"));
  QApplication::setApplicationVersion(qt_text(appVersion()));
  QApplication::setDesktopFileName(QString::fromLatin1(application_id));
  QApplication::setWindowIcon(application_icon());
  // The toolkit's own texts, in the language of ours.
  const QString language = qt_text(current_language().code);
  if (translator.load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&translator);
  follow_desktop_theme();
  show_plain_text_only();
}

int run_window(int argc, char** argv) {
  set_language(language_of_environment());
  const int answered = answer_options(argc, argv);
  if (answered >= 0) return answered;
  const QApplication toolkit(argc, argv);
  std::vector<std::string> paths;
  if (!read_paths(argc, argv, paths)) return 2;
  QTranslator translator;
  set_up(translator);
  ApplicationService service;
  if (!service.become_the_one(paths)) return 0;
  Application application;
  if (!application.start()) return 1;
  service.set_handler([&application](std::vector<std::string> requested) { application.open(std::move(requested)); });
  service.request(std::move(paths));
  return QApplication::exec();
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
  brindle::set_up_process();
  return brindle::run_window(argc, argv);
}
