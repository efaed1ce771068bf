#include "support/accessibility_bus.h"

#include "support/child_process.h"
#include "support/wait_until.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

const QString kConnectionName = u"accessibility"_s;
const QString kAccessible = u"org.a11y.atspi.Accessible"_s;
constexpr uint kShowing = 25; ///< The number of the state (AT-SPI's StateType).
constexpr int kPatienceMs = 60000;

QString addressOn(const PrivateBus &session) {
    EXPECT_TRUE(session.waitForName(u"org.a11y.Bus"_s)) << "at-spi2-core has to be installed for the tests";
    const QDBusMessage question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                                 u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QString name = u"asks for the bus"_s;
    const QString address = QDBusConnection::connectToBus(session.address(), name)
                                .call(question, QDBus::Block, kPatienceMs)
                                .arguments()
                                .value(0)
                                .toString();
    QDBusConnection::disconnectFromBus(name);
    return address;
}

QDBusConnection start(QProcess &launcher, const QString &folder, const PrivateBus &session) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, session.address());
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder);
    environment.insert(u"HOME"_s, folder);
    environment.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s);
    environment.remove(u"DISPLAY"_s);
    launcher.setProcessEnvironment(environment);
    launcher.setStandardErrorFile(QProcess::nullDevice());
    endWithParent(launcher);
    launcher.start(u"/usr/libexec/at-spi-bus-launcher"_s, {u"--launch-immediately"_s, u"--a11y=1"_s});
    return QDBusConnection::connectToBus(addressOn(session), kConnectionName);
}

} // namespace

AccessibilityBus::AccessibilityBus(const PrivateBus &session)
    : m_bus(start(m_launcher, m_folder.path(), session)) {}

AccessibilityBus::~AccessibilityBus() {
    QDBusConnection::disconnectFromBus(kConnectionName);
    m_launcher.terminate(); // which ends the bus
    m_launcher.waitForFinished(kPatienceMs);
}

QList<AccessiblePart> AccessibilityBus::parts() {
    QList<AccessiblePart> parts;
    collect({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s}, parts);
    return parts;
}

QSet<QString> AccessibilityBus::shown() {
    QSet<QString> shown;
    for (const AccessiblePart &part : parts()) {
        if (part.isShown)
            shown.insert(part.role + u": "_s + part.name);
    }
    return shown;
}

QPoint AccessibilityBus::middleOf(const QString &part) {
    QRect frame;
    EXPECT_TRUE(waitUntil([&] {
        const QRect before = std::exchange(frame, QRect());
        for (const AccessiblePart &candidate : parts()) {
            if (candidate.isShown && candidate.role + u": "_s + candidate.name == part)
                frame = candidate.frame;
        }
        return !frame.isEmpty() && frame == before;
    })) << part.toStdString()
        << " does not come";
    return frame.center();
}

void AccessibilityBus::collect(const Place &place, QList<AccessiblePart> &parts) {
    parts.append(partAt(place));
    for (const Place &within : placesWithin(place))
        collect(within, parts);
}

AccessiblePart AccessibilityBus::partAt(const Place &place) {
    const auto states = qdbus_cast<QList<uint>>(ask(place, u"GetState"_s).value(0));
    const QVariant name =
        ask(place, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {kAccessible, u"Name"_s}).value(0);
    return {ask(place, u"GetRoleName"_s).value(0).toString(), name.value<QDBusVariant>().variant().toString(),
            !states.isEmpty() && (states.front() >> kShowing & 1U) != 0, frameOf(place)};
}

QRect AccessibilityBus::frameOf(const Place &place) {
    constexpr uint kOnScreen = 0; // AT-SPI's CoordType
    const QVariantList answer = ask(place, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {kOnScreen});
    return answer.isEmpty() ? QRect() : qdbus_cast<QRect>(answer.front());
}

QList<AccessibilityBus::Place> AccessibilityBus::placesWithin(const Place &place) {
    QList<Place> places;
    const QVariantList answer = ask(place, u"GetChildren"_s);
    if (answer.isEmpty())
        return places; // it went away meanwhile
    const auto list = answer.front().value<QDBusArgument>();
    for (list.beginArray(); !list.atEnd();) {
        QString application;
        QDBusObjectPath path;
        list.beginStructure();
        list >> application >> path;
        list.endStructure();
        places.append({application, path.path()});
    }
    list.endArray();
    return places;
}

QVariantList AccessibilityBus::ask(const Place &place, const QString &method) {
    return ask(place, kAccessible, method, {});
}

QVariantList AccessibilityBus::ask(const Place &place, const QString &interface, const QString &method,
                                   const QVariantList &arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(place.application, place.path, interface, method);
    question.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(question, QDBus::Block, kPatienceMs);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

} // namespace velmo::testing
