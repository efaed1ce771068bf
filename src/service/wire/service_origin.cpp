#include "service/wire/service_origin.h"

#include "service/http/loopback.h"

#include <QUrl>
#include <optional>

using namespace Qt::StringLiterals;

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
        return u"a user part"_s;
    if (!url.path().isEmpty())
        return u"a path (\"%1\")"_s.arg(url.path());
    if (url.hasQuery())
        return u"a query"_s;
    if (url.hasFragment())
        return u"a fragment"_s;
    return std::nullopt;
}

std::optional<QString> faultOf(const QUrl &url) {
    if (!url.isValid() || url.host().isEmpty())
        return u"it is no address"_s;
    if (const auto surplus = surplusPieceOf(url))
        return u"it has "_s + *surplus;
    if (url.scheme() == u"http" && !isLoopbackHost(url.host()))
        return u"it begins with http, which is for this machine only, and \"%1\" is another"_s.arg(
            url.host());
    if (url.scheme() != u"http" && url.scheme() != u"https")
        return u"its scheme is \"%1\""_s.arg(url.scheme());
    return std::nullopt;
}

} // namespace

Result<ServiceOrigin, QString> ServiceOrigin::parse(const QString &text) {
    QString baseURL = withoutTrailingSlash(text);
    const QUrl url(baseURL, QUrl::StrictMode);
    if (const auto fault = faultOf(url))
        return failed(u"The service's address must be a scheme and a host, such as "
                      "https://velmo.example; %1."_s.arg(*fault));
    return ServiceOrigin(std::move(baseURL), isLoopbackHost(url.host()));
}

Result<ServiceOrigin, QString> ServiceOrigin::ofThisRun() {
    const QString ofEnvironment = qEnvironmentVariable("VELMO_SERVICE_URL");
    return parse(ofEnvironment.isEmpty() ? QStringLiteral(VELMO_SERVICE_ORIGIN) : ofEnvironment);
}

} // namespace velmo
