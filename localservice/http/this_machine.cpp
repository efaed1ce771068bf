#include "localservice/http/this_machine.h"

#include "service/http/loopback.h"

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

bool isPort(const std::string &text) {
    return text.find_first_not_of("0123456789") == std::string::npos;
}

/// "name:port", "[address]:port" or either without a port: the name or address in lower case.
std::optional<std::string> withoutPort(const std::string &host) {
    const size_t end = host.rfind(']');
    const size_t colon = host.find(':', end == std::string::npos ? 0 : end);
    if (colon != std::string::npos && !isPort(host.substr(colon + 1)))
        return std::nullopt;
    std::string name = host.substr(0, colon);
    if (name.size() > 2 && name.front() == '[' && name.back() == ']')
        name = name.substr(1, name.size() - 2);
    return QByteArray::fromStdString(name).toLower().toStdString();
}

std::string machineName() {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0)
        return {};
    return QByteArray(name.data()).toLower().toStdString();
}

} // namespace

bool namesThisMachine(const std::string &host, const std::string &localAddress) {
    const auto name = withoutPort(host);
    if (!name || name->empty())
        return false;
    return isLoopbackHost(QString::fromStdString(*name)) || *name == localAddress || *name == machineName();
}

bool isOriginOfThisMachine(const std::string &origin, const std::string &localAddress) {
    for (const std::string scheme : {"http://", "https://"}) {
        if (origin.rfind(scheme, 0) == 0)
            return namesThisMachine(origin.substr(scheme.size()), localAddress);
    }
    return false;
}

bool isLoopbackAddress(const std::string &address) {
    const QString text = QString::fromStdString(address);
    const QString mapped = u"::ffff:"_s;
    return isLoopbackHost(text.startsWith(mapped) ? text.sliced(mapped.size()) : text);
}

} // namespace velmo::localservice
