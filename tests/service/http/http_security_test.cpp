#include "service/http/http_client.h"

#include "base/interface.h"
#include "support/completion_probe.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Whom the client talks to over TLS, tried on a real TLS server.

namespace velmo {

namespace {

/// An HTTPS server on loopback whose certificate, signed by itself, names one host.
class TlsServer : private Unmovable {
public:
    explicit TlsServer(const QString &host) {
        QProcess maker;
        maker.startCommand(u"openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 "
                           "-nodes -keyout %1 -out %2 -days 2 -subj /CN=Velmo "
                           "-addext subjectAltName=DNS:%3"_s.arg(key(), certificate(), host));
        maker.waitForFinished();
        m_server.startCommand(
            u"openssl s_server -accept 127.0.0.1:0 -www -key %1 -cert %2"_s.arg(key(), certificate()));
        QByteArray announced;
        while (!announced.contains("ACCEPT 127.0.0.1:") && m_server.waitForReadyRead())
            announced += m_server.readAllStandardOutput();
        m_port = announced.sliced(announced.lastIndexOf(':') + 1).trimmed();
    }
    ~TlsServer() {
        m_server.kill();
        m_server.waitForFinished();
    }

    [[nodiscard]] QString origin() const { return u"https://localhost:"_s + QString::fromLatin1(m_port); }
    [[nodiscard]] QString certificate() const { return m_directory.filePath(u"certificate.pem"_s); }

private:
    [[nodiscard]] QString key() const { return m_directory.filePath(u"key.pem"_s); }

    QTemporaryDir m_directory;
    QProcess m_server;
    QByteArray m_port;
};

HttpOutcome pageOf(const TlsServer &server, const HttpClientOptions &options) {
    HttpClient client(options);
    testing::CompletionProbe<HttpOutcome> probe;
    client.send({"GET", server.origin() + u'/', {}, {}, {std::chrono::seconds(30), {}}}, probe.callback());
    return probe.outcome();
}

TEST(HttpSecurity, TrustsACertificateOfAKnownAuthorityForTheRightHostOnly) {
    const QString insecure = u"No secure connection could be made."_s;
    const TlsServer named(u"localhost"_s);
    const TlsServer misnamed(u"velmo.example"_s);

    EXPECT_EQ(pageOf(named, {}).error().description, insecure);
    EXPECT_EQ(pageOf(misnamed, {misnamed.certificate()}).error().description, insecure);
    const HttpOutcome page = pageOf(named, {named.certificate()});
    ASSERT_TRUE(page) << page.error().description.toStdString();
    EXPECT_EQ(page->status, 200);
}

} // namespace

} // namespace velmo
