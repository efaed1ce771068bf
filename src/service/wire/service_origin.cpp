#include "service/wire/service_origin.h"

#include "service/http/loopback.h"

#include <QUrl>
#include <optional>

namespace velmo {

namespace {

QString withoutTrailingSlash(QString text) {
    if (text.endsWith(u'/'))
        text.chop(1);
    return text;
}

/// The piece of an address that makes it more than an origin, if any. A user part or query may hold a secret.
std::optional<QString> surplusPieceOf(const QUrl &url) {
    if (url.authority(QUrl::FullyEncoded).contains(u'@'))
        return QStringLiteral("a user part");
    if (!url.path().isEmpty())
        return QStringLiteral("a path (\"%1\")").arg(url.path());
    if (url.hasQuery())
        return QStringLiteral("a query");
    if (url.hasFragment())
        return QStringLiteral("a fragment");
    return std::nullopt;
}

std::optional<QString> faultOf(const QUrl &url) {
    if (!url.isValid() || url.host().isEmpty())
        return QStringLiteral("it is no address");
    if (const auto surplus = surplusPieceOf(url))
        return QStringLiteral("it has ") + *surplus;
    if (url.scheme() == u"http" && !isLoopbackHost(url.host()))
        return QStringLiteral("it begins with http, which is for this machine only, and \"%1\" is another")
            .arg(url.host());
    if (url.scheme() != u"http" && url.scheme() != u"https")
        return QStringLiteral("its scheme is \"%1\"").arg(url.scheme());
    return std::nullopt;
}

} // namespace

Result<ServiceOrigin, QString> ServiceOrigin::parse(const QString &text) {
    QString baseURL = withoutTrailingSlash(text);
    const QUrl url(baseURL, QUrl::StrictMode);
    if (const auto fault = faultOf(url))
        return failed(QStringLiteral("The service's address must be a scheme and a host, such as "
                                     "https://velmo.example; %1.")
                          .arg(*fault));
    return ServiceOrigin(std::move(baseURL), isLoopbackHost(url.host()));
}

Result<ServiceOrigin, QString> ServiceOrigin::ofThisRun() {
    const QString ofEnvironment = qEnvironmentVariable("VELMO_SERVICE_URL");
    return parse(ofEnvironment.isEmpty() ? QStringLiteral(VELMO_SERVICE_ORIGIN) : ofEnvironment);
}

} // namespace velmo
