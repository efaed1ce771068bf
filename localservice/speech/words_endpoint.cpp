#include "localservice/http/form_fields.h"
#include "localservice/speech/endpoints.h"
#include "localservice/speech/live_recordings.h"

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// How long a question waits for something new. Short, as the service waits for it when it ends.
constexpr auto kLongestWait = 2s;
constexpr auto kLookPeriod = 100ms;

Reply words(LiveRecordings &recordings, const Request &request) {
    const FormFields query(request.query);
    const QByteArray upload = query.value("upload"_L1).toLatin1();
    const qsizetype known = query.value("known"_L1).toLongLong();
    const auto end = Clock::now() + kLongestWait;
    std::optional<QString> words = recordings.wordsOf(upload);
    while (words && words->size() == known && Clock::now() < end && !request.isAbandoned()) {
        std::this_thread::sleep_for(kLookPeriod);
        words = recordings.wordsOf(upload);
    }
    if (!words)
        return refusalReply({404, u"No recording of that name is being made."_s});
    return {200, {{u"text"_s, *words}}};
}

} // namespace

Endpoint wordsEndpoint(LiveRecordings &recordings) {
    return polled({"GET", "/api/transcribe/words",
                   [&recordings](const Request &request) { return words(recordings, request); }});
}

} // namespace velmo::localservice
