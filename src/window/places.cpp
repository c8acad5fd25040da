#include "window/places.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <optional>

#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

std::string name_of(const std::string& path) {
  return utf8(in_one_line(path_text(std::string_view(path).substr(path.rfind('/') + 1))));
}

template <class Take>
void for_each_line(std::string_view text, Take take) {
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    take(text.substr(begin, end - begin));
    begin = end + 1;
  }
}

// "\040" stands for a space.
std::string without_escapes(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto digit = [&](std::size_t at) { return static_cast<unsigned>(text[at] - '0'); };
    const bool escaped = text[i] == '\\' && i + 3 < text.size() && digit(i + 1) < 4 && digit(i + 2) < 8;
    plain += escaped ? static_cast<char>(digit(i + 1) * 64 + digit(i + 2) * 8 + digit(i + 3)) : text[i];
    if (escaped) i += 3;
  }
  return plain;
}

std::string contents(const QString& path) {
  QFile file(path);
  // Either file may be without a size that can be believed.
  return file.open(QIODevice::ReadOnly) ? file.read(qint64{1} << 20).toStdString() : std::string();
}

void add_own_folders(std::vector<Place>& places) {
  using Paths = QStandardPaths;
  const QString home = QDir::homePath();
  places.push_back({"home", localized("PLACEHOME"), path_bytes(home)});
  for (const auto kind : {Paths::DesktopLocation, Paths::DocumentsLocation, Paths::DownloadLocation,
                          Paths::PicturesLocation, Paths::MusicLocation, Paths::MoviesLocation}) {
    const QString path = Paths::writableLocation(kind);
    if (path == home || !QFileInfo(path).isDir()) continue;
    places.push_back({"folder", name_of(path_bytes(path)), path_bytes(path)});
  }
}

}  // namespace

std::vector<Place> mounted_places(std::string_view mounts) {
  std::vector<Place> places;
  for_each_line(mounts, [&](std::string_view line) {
    const std::size_t begin = line.find(' ') + 1;
    const std::size_t end = line.find(' ', begin);
    if (begin == 0 || end == std::string_view::npos) return;
    std::string path = without_escapes(line.substr(begin, end - begin));
    const auto below = [&](std::string_view folder) { return path.starts_with(folder); };
    if (below("/media/") || below("/run/media/") || below("/mnt/")) {
      std::string title = name_of(path);
      places.push_back({"disk", std::move(title), std::move(path)});
    }
  });
  return places;
}

std::vector<Place> bookmarked_places(std::string_view lines) {
  std::vector<Place> places;
  for_each_line(lines, [&](std::string_view line) {
    const std::size_t space = line.find(' ');
    const std::string_view address = line.substr(0, space);
    const std::vector<std::string> paths =
        paths_of({QUrl::fromEncoded(QByteArray(address.data(), static_cast<qsizetype>(address.size())))});
    if (paths.empty()) return;
    const bool titled = space != std::string_view::npos && space + 1 < line.size();
    places.push_back({"folder", titled ? std::string(line.substr(space + 1)) : name_of(paths.front()), paths.front()});
  });
  return places;
}

std::vector<Place> find_places() {
  std::vector<Place> places;
  add_own_folders(places);
  const auto add = [&](const std::vector<Place>& more) {
    for (const Place& place : more) {
      if (std::ranges::find(places, place.path, &Place::path) == places.end()) places.push_back(place);
    }
  };
  const QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  add(bookmarked_places(contents(settings + QStringLiteral("/gtk-3.0/bookmarks"))));
  add({{"disk", localized("PLACEROOT"), "/"}});
  add(mounted_places(contents(QStringLiteral("/proc/self/mounts"))));
  return places;
}

}  // namespace brindle
