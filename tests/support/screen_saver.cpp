#include "support/screen_saver.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

const QString kConnection = u"screen saver"_s;

}

ScreenSaver::ScreenSaver(const PrivateBus &bus)
    : m_connection(QDBusConnection::connectToBus(bus.address(), kConnection)) {}

ScreenSaver::~ScreenSaver() {
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(kConnection);
}

void ScreenSaver::setActive(bool active, const QString &interface) {
    auto signal = QDBusMessage::createSignal(u"/ScreenSaver"_s, interface, u"ActiveChanged"_s);
    signal.setArguments({active});
    m_connection.send(signal);
    m_connection.interface()->isServiceRegistered(kConnection); // its answer comes after the signal
}

} // namespace velmo::testing
