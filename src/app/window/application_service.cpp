#include "app/window/application_service.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QUrl>
#include <utility>

#include "app/window/text.h"

namespace brindle {
namespace {

QString object_path() {
  return u'/' + QString::fromLatin1(application_id).replace(u'.', u'/');
}

QVariantMap activation_data() {
  QVariantMap data;
  // What lets the other window come to the front although it did not start this.
  for (const auto& [variable, key] :
       {std::pair("DESKTOP_STARTUP_ID", "desktop-startup-id"), std::pair("XDG_ACTIVATION_TOKEN", "activation-token")}) {
    const QString value = qEnvironmentVariable(variable);
    if (!value.isEmpty()) data.insert(QString::fromLatin1(key), value);
  }
  return data;
}

}  // namespace

ApplicationService::ApplicationService() = default;
ApplicationService::~ApplicationService() = default;

QString file_uri(const std::string& path) {
  return QString::fromLatin1("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

bool ApplicationService::become_the_one(const std::vector<std::string>& paths) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return true;
  // The object before the name: who sees the name may call at once.
  bus.registerObject(object_path(), this, QDBusConnection::ExportScriptableSlots);
  const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
      bus.interface()->registerService(QString::fromLatin1(application_id), QDBusConnectionInterface::DontQueueService,
                                       QDBusConnectionInterface::DontAllowReplacement);
  if (!reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered) return true;
  // One that does not answer is no reason to have no window.
  return !hand_over(paths);
}

bool ApplicationService::hand_over(const std::vector<std::string>& paths) {
  QDBusInterface other(QString::fromLatin1(application_id), object_path(),
                       QStringLiteral("org.freedesktop.Application"), QDBusConnection::sessionBus());
  other.setTimeout(5000);
  QDBusMessage answer;
  if (paths.empty()) {
    answer = other.call(QStringLiteral("Activate"), activation_data());
  } else {
    QStringList uris;
    for (const std::string& path : paths) uris << file_uri(path);
    answer = other.call(QStringLiteral("Open"), uris, activation_data());
  }
  return answer.type() == QDBusMessage::ReplyMessage;
}

void ApplicationService::set_handler(Handler handler) {
  handler_ = std::move(handler);
  for (std::vector<std::string>& paths : std::exchange(waiting_, {})) request(std::move(paths));
}

void ApplicationService::request(std::vector<std::string> paths) {
  if (!handler_) {
    waiting_.push_back(std::move(paths));
    return;
  }
  // Later: the caller waits for its answer, and the handler may have a question for the person first.
  QMetaObject::invokeMethod(
      this, [this, paths = std::move(paths)] { handler_(paths); }, Qt::QueuedConnection);
}

void ApplicationService::Activate(const QVariantMap& platform_data) {
  Q_UNUSED(platform_data)
  request({});
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap& platform_data) {
  Q_UNUSED(platform_data)
  QList<QUrl> urls;
  for (const QString& uri : uris) urls << QUrl::fromEncoded(uri.toUtf8());
  request(paths_of(urls));
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList& parameter,
                                        const QVariantMap& platform_data) {
  Q_UNUSED(action)
  Q_UNUSED(parameter)
  Q_UNUSED(platform_data)
  request({});
}

}  // namespace brindle
