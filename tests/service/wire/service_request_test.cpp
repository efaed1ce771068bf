#include "service/wire/service_request.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/nobody_signed_in.h"

#include <QRegularExpression>
#include <array>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono_literals;

QByteArray joined(const HttpHeaders &headers) {
    QByteArrayList lines;
    for (const auto &[name, value] : headers)
        lines.append(name + ": " + value);
    return lines.join('|');
}

const ServiceOrigin &origin() {
    static const ServiceOrigin origin = *ServiceOrigin::parse(u"https://velmo.example/"_s);
    return origin;
}

// One request of each set of headers; the bytes of the others are in the tests of those who send them.
TEST(ServiceRequest, HasAddressLimitsAndHeadersOfItsKind) {
    struct Row {
        RequestKind kind;
        QByteArray line;
        HttpLimits limits;
        QByteArray headers;
    };
    using enum RequestKind;
    const std::vector<Row> rows = {
        {Transcription,
         "POST /api/transcribe",
         {35s, 30s},
         "Content-Type: application/json|Authorization: Bearer t0ken|X-Device-Id: 3f1c|X-Mode: "
         "formal|X-App-Version: 1.0.0|X-Source: mac"},
        {BokmalNormalisation,
         "POST /api/normalize-bokmal",
         {3s, {}},
         "Content-Type: application/json|Authorization: Bearer t0ken|X-Device-Id: 3f1c|X-App-Version: "
         "1.0.0|X-Source: mac"},
        {SnippetsPush,
         "PUT /api/sync/snippets",
         {60s, {}},
         "Authorization: Bearer t0ken|Content-Type: application/json"},
        {TokenExchange, "POST /api/auth/apple", {15s, {}}, "Content-Type: application/json"},
    };
    const RequestSender sender{u"t0ken"_s, u"3f1c"_s, u"formal"_s};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.line.constData());
        const HttpRequest request = serviceRequest(row.kind, origin(), sender, {"{}"});
        EXPECT_EQ(request.method + ' ' + request.url.toUtf8(),
                  QByteArray(row.line).replace(" /", " https://velmo.example/"));
        EXPECT_EQ(request.limits.whole, row.limits.whole);
        EXPECT_EQ(request.limits.idle, row.limits.idle);
        EXPECT_EQ(joined(request.headers), row.headers);
        EXPECT_EQ(request.body, "{}");
    }
}

TEST(ServiceRequest, LeavesOutWhatTheSenderDoesNotHave) {
    const RequestSender nobody{{}, {}, u"accurate"_s};
    EXPECT_EQ(joined(serviceRequest(RequestKind::ModeProcessing, origin(), nobody, {}).headers),
              "Content-Type: application/json|X-App-Version: 1.0.0|X-Source: mac");
}

TEST(RequestSender, GetsItsDeviceIdentifierFromTheFirstUploadOnly) {
    NobodySignedIn nobody;
    MemoryPreferences preferences;
    EXPECT_EQ(senderOfText(nobody, preferences).deviceId, std::nullopt);
    const QRegularExpression uuid(u"^[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$"_s);
    const QString made = *senderOfUpload(nobody, preferences).deviceId;
    EXPECT_TRUE(uuid.match(made).hasMatch()) << made.toStdString();
    EXPECT_EQ(senderOfUpload(nobody, preferences).deviceId, made);
    EXPECT_EQ(senderOfText(nobody, preferences).deviceId, made);

    for (const PreferenceValue &unusable : {PreferenceValue(QString()), PreferenceValue(qint64{7})}) {
        preferences.set(keys::deviceId, unusable);
        const QString renewed = *senderOfUpload(nobody, preferences).deviceId;
        EXPECT_TRUE(renewed != made && uuid.match(renewed).hasMatch()) << renewed.toStdString();
        EXPECT_EQ(preferences.string(keys::deviceId), renewed);
    }
}

TEST(RequestSender, NamesTheSelectedMode) {
    NobodySignedIn nobody;
    MemoryPreferences preferences;
    EXPECT_EQ(senderOfText(nobody, preferences).selectedMode, u"accurate"_s);
    preferences.set(keys::selectedMode, u"formal"_s);
    EXPECT_EQ(senderOfText(nobody, preferences).selectedMode, u"formal"_s);
}

} // namespace

} // namespace velmo
