#include <QDBusConnection>
#include <QDBusMessage>
#include <QRandomGenerator>
#include <QVariantMap>

#include "upload/keepAwake.h"

// The session's portal for desktop programs (org.freedesktop.portal.Inhibit, version 1). Where there is none, nobody
// answers the call, and the computer keeps its own times.

namespace {

constexpr unsigned suspend = 4;  // a flag of the interface

QDBusMessage call(const QString& path, const char* interface, const char* method) {
  return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), path,
                                        QLatin1String(interface), QLatin1String(method));
}

}  // namespace

/// A request lasts until it is closed, or until this program's connection ends.
struct TkeepAwake::Trequest {
  QDBusConnection bus = QDBusConnection::sessionBus();
  QString token = QStringLiteral("equipmentrecords%1").arg(QRandomGenerator::global()->generate());

  /// The portal makes it from the caller's name in the bus and the token.
  QString path() const {
    const QString caller = bus.baseService().mid(1).replace(u'.', u'_');
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(caller, token);
  }
};

TkeepAwake::TkeepAwake() : request_(std::make_unique<Trequest>()) {
  if (!request_->bus.isConnected()) return;
  const QVariantMap options = {{QStringLiteral("handle_token"), request_->token},
                               {QStringLiteral("reason"), QStringLiteral("Sending equipment records to the analyzer")}};
  QDBusMessage inhibit =
      call(QStringLiteral("/org/freedesktop/portal/desktop"), "org.freedesktop.portal.Inhibit", "Inhibit");
  inhibit << QString() << suspend << options;
  request_->bus.send(inhibit);
}

TkeepAwake::~TkeepAwake() {
  if (request_->bus.isConnected())
    request_->bus.send(call(request_->path(), "org.freedesktop.portal.Request", "Close"));
}
