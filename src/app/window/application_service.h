#pragma once

// One window a session: the first program takes the name on the session bus, and later ones hand it their files and
// end. The interface is org.freedesktop.Application (Desktop Entry Specification 1.5, "D-Bus Activation"), so the
// desktop's launchers and file managers speak it too. Without a session bus every program has its own window.
//
// Main thread.

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace brindle {

/// The name of the desktop entry, of the bus name, and (with slashes) of the object.
inline constexpr auto application_id = "org.tessalon.Brindle";

class ApplicationService final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  /// What a request does. `paths` are bytes; empty for a mere request to come to the front.
  using Handler = std::function<void(std::vector<std::string> paths)>;

  ApplicationService();
  ~ApplicationService() override;

  /// True when this program is the one that has the window from now on. False when another one is, which has been
  /// handed the paths.
  bool become_the_one(const std::vector<std::string>& paths);
  /// Requests that came before are handed over now.
  void set_handler(Handler handler);

 public slots:  // NOLINT(readability-redundant-access-specifiers)
  // NOLINTBEGIN(readability-identifier-naming): the names of the interface
  Q_SCRIPTABLE void Activate(const QVariantMap& platform_data);
  Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platform_data);
  Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameter,
                                   const QVariantMap& platform_data);
  // NOLINTEND(readability-identifier-naming)

 private:
  static bool hand_over(const std::vector<std::string>& paths);
  void request(std::vector<std::string> paths);

  Handler handler_;
  std::vector<std::vector<std::string>> waiting_;
};

/// The "file:" address of a path, byte by byte.
QString file_uri(const std::string& path);

}  // namespace brindle
