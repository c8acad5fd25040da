#pragma once

// One window a session: the first program takes the name on the session bus, and later ones hand it their files and
// end. The interface is org.freedesktop.Application (Desktop Entry Specification 1.5, "D-Bus Activation"), so the
// desktop's launchers and file managers speak it too. Without a session bus every program has its own window.
//
// Main thread.

#include <QObject>
#include <QStringList>
#include <QTimer>
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

  /// True when this program has a window from now on. False when another one has it, which has been handed the paths;
  /// one that does not answer within two seconds is told of on standard error, and passed over.
  bool become_the_one(const std::vector<std::string>& paths);
  /// What was requested before is handed over then.
  void set_handler(Handler handler);
  /// Paths (bytes) for the handler. Those that come in quick succession are handed over together.
  void request(std::vector<std::string> paths);

 public slots:  // NOLINT(readability-redundant-access-specifiers)
  // NOLINTBEGIN(readability-identifier-naming): the names of the interface
  Q_SCRIPTABLE void Activate(const QVariantMap& platform_data);
  Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platform_data);
  Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameter,
                                   const QVariantMap& platform_data);
  // NOLINTEND(readability-identifier-naming)

 private:
  static bool hand_over(const std::vector<std::string>& paths);
  void request_by_bus(std::vector<std::string> paths, const QVariantMap& platform_data);
  void hand_on();

  Handler handler_;
  std::vector<std::string> waiting_;
  QTimer joining_;
};

/// The "file:" address of a path, byte by byte.
QString file_uri(const std::string& path);

}  // namespace brindle
