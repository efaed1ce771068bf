#include "service/wire/service_request.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

using std::chrono::seconds;

enum class HeaderSet {
    Upload,  ///< The client's, the selected mode among them.
    Text,    ///< The client's without the mode.
    Account, ///< Who, then what.
    Content, ///< Only what: there is no session yet.
};

struct RequestRow {
    RequestKind kind;
    const char *method;
    const char *path;
    HeaderSet headers;
    HttpLimits limits;
};

// A dictation waits for an upload: it may not stand still for 30 s, nor take longer than 35 s in all. Text
// that is slow to come back is used as it was. The rest happens unseen and has the usual minute.
constexpr HttpLimits kUpload{seconds(35), seconds(30)};
constexpr HttpLimits kProcessing{seconds(15), std::nullopt};
constexpr HttpLimits kNormalisation{seconds(3), std::nullopt};
constexpr HttpLimits kSignIn{seconds(15), std::nullopt};
constexpr HttpLimits kUnseen{seconds(60), std::nullopt};

using enum RequestKind;
constexpr std::array kRequests = {
    RequestRow{Transcription, "POST", "/api/transcribe", HeaderSet::Upload, kUpload},
    RequestRow{ModeProcessing, "POST", "/api/process", HeaderSet::Text, kProcessing},
    RequestRow{BokmalNormalisation, "POST", "/api/normalize-bokmal", HeaderSet::Text, kNormalisation},
    RequestRow{DictionaryPull, "GET", "/api/sync/dictionary", HeaderSet::Account, kUnseen},
    RequestRow{DictionaryPush, "PUT", "/api/sync/dictionary", HeaderSet::Account, kUnseen},
    RequestRow{SnippetsPull, "GET", "/api/sync/snippets", HeaderSet::Account, kUnseen},
    RequestRow{SnippetsPush, "PUT", "/api/sync/snippets", HeaderSet::Account, kUnseen},
    RequestRow{StatisticsPull, "GET", "/api/sync/stats", HeaderSet::Account, kUnseen},
    RequestRow{StatisticsPush, "PUT", "/api/sync/stats", HeaderSet::Account, kUnseen},
    RequestRow{StatisticsIncrement, "POST", "/api/sync/stats/increment", HeaderSet::Account, kUnseen},
    RequestRow{TokenExchange, "POST", "/api/auth/apple", HeaderSet::Content, kSignIn},
    RequestRow{AccountRefresh, "POST", "/api/auth/me", HeaderSet::Account, kUnseen},
};

const RequestRow &rowOf(RequestKind kind) {
    return *std::find_if(kRequests.begin(), kRequests.end(),
                         [kind](const RequestRow &row) { return row.kind == kind; });
}

void addAuthorization(HttpHeaders &headers, const RequestSender &sender) {
    if (sender.token)
        headers.emplace_back("Authorization", "Bearer " + sender.token->toUtf8());
}

/// The service tells clients apart by "X-Source"; all desktop clients are "mac" to it.
void addClient(HttpHeaders &headers, const RequestSender &sender, bool withMode) {
    addAuthorization(headers, sender);
    if (sender.deviceId)
        headers.emplace_back("X-Device-Id", sender.deviceId->toUtf8());
    if (withMode)
        headers.emplace_back("X-Mode", sender.selectedMode.toUtf8());
    headers.emplace_back("X-App-Version", VELMO_VERSION);
    headers.emplace_back("X-Source", "mac");
}

HttpHeaders headersOf(HeaderSet set, const RequestSender &sender, const QByteArray &contentType) {
    HttpHeaders headers;
    if (set == HeaderSet::Account)
        addAuthorization(headers, sender);
    headers.emplace_back("Content-Type", contentType);
    if (set == HeaderSet::Upload || set == HeaderSet::Text)
        addClient(headers, sender, set == HeaderSet::Upload);
    return headers;
}

} // namespace

HttpRequest serviceRequest(RequestKind kind, const ServiceOrigin &origin, const RequestSender &sender,
                           RequestContent content) {
    const RequestRow &row = rowOf(kind);
    return {row.method, origin.baseURL() + QLatin1StringView(row.path),
            headersOf(row.headers, sender, content.type), std::move(content.body), row.limits};
}

} // namespace velmo
