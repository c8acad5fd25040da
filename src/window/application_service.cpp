#include "window/application_service.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QUrl>
#include <cstdio>
#include <iterator>
#include <utility>

#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

// Some file managers hand over one selection in pieces, its folders apart from its files.
constexpr int milliseconds_between_pieces = 150;

// A program that is well answers at once: what it is asked for it does afterwards.
constexpr int milliseconds_for_an_answer = 2000;

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

ApplicationService::ApplicationService() {
  joining_.setSingleShot(true);
  joining_.setInterval(milliseconds_between_pieces);
  joining_.callOnTimeout(this, [this] { hand_on(); });
}
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
  if (hand_over(paths)) return false;
  // One that does not answer is no reason to have no window.
  std::fputs((localized("GUIOTHERSILENT") + "\n").c_str(), stderr);
  return true;
}

bool ApplicationService::hand_over(const std::vector<std::string>& paths) {
  QStringList uris;
  for (const std::string& path : paths) uris << file_uri(path);
  // No interface object: making one asks the other program what it can do, and waits for that much longer.
  QDBusMessage call = QDBusMessage::createMethodCall(
      QString::fromLatin1(application_id), object_path(), QStringLiteral("org.freedesktop.Application"),
      uris.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
  if (!uris.isEmpty()) call << uris;
  call << activation_data();
  return QDBusConnection::sessionBus().call(call, QDBus::Block, milliseconds_for_an_answer).type() ==
         QDBusMessage::ReplyMessage;
}

void ApplicationService::set_handler(Handler handler) {
  handler_ = std::move(handler);
  if (!waiting_.empty()) joining_.start();
}

void ApplicationService::request(std::vector<std::string> paths) {
  waiting_.insert(waiting_.end(), std::make_move_iterator(paths.begin()), std::make_move_iterator(paths.end()));
  // Later: the caller waits for its answer, and the handler may have a question for the person first.
  if (handler_) joining_.start();
}

void ApplicationService::request_by_bus(std::vector<std::string> paths, const QVariantMap& platform_data) {
  // What the compositor lets a window come to the front for, where it asks for that.
  const QByteArray token = platform_data.value(QStringLiteral("activation-token")).toString().toUtf8();
  if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
  if (handler_)
    QMetaObject::invokeMethod(
        this, [this] { handler_({}); }, Qt::QueuedConnection);
  if (!paths.empty()) request(std::move(paths));
}

void ApplicationService::hand_on() {
  if (!waiting_.empty()) handler_(std::exchange(waiting_, {}));
}

void ApplicationService::Activate(const QVariantMap& platform_data) {
  request_by_bus({}, platform_data);
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap& platform_data) {
  QList<QUrl> urls;
  for (const QString& uri : uris) urls << QUrl::fromEncoded(uri.toUtf8());
  request_by_bus(paths_of(urls), platform_data);
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList& parameter,
                                        const QVariantMap& platform_data) {
  Q_UNUSED(action)
  Q_UNUSED(parameter)
  request_by_bus({}, platform_data);
}

}  // namespace brindle
