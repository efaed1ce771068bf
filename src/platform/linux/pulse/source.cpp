#include "platform/linux/pulse/source.h"

#include <QLatin1StringView>
#include <pulse/error.h>
#include <pulse/operation.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace velmo::pulse {

bool isMicrophone(const pa_source_info &source) {
    if (source.monitor_of_sink == PA_INVALID_INDEX)
        return true;
    const bool isOfSoundCard = source.card != PA_INVALID_INDEX;
    return !isOfSoundCard && QLatin1StringView(source.name) != "auto_null.monitor"_L1;
}

QString sentenceFor(int error) {
    switch (error) {
    case PA_ERR_CONNECTIONREFUSED:
    case PA_ERR_CONNECTIONTERMINATED:
    case PA_ERR_INVALIDSERVER:
        return u"The sound server could not be reached."_s;
    case PA_ERR_NOENTITY:
        return u"No microphone was found."_s;
    case PA_ERR_ACCESS:
    case PA_ERR_AUTHKEY:
        return u"The sound server does not allow recording."_s;
    case PA_ERR_KILLED:
        return u"The microphone is gone."_s;
    default:
        return u"The microphone could not be opened."_s;
    }
}

void SourceQuery::CancelOperation::operator()(pa_operation *operation) const {
    pa_operation_cancel(operation);
    pa_operation_unref(operation);
}

void SourceQuery::askForDefault(pa_context *context, Answer answer) {
    m_answer = std::move(answer);
    begin(pa_context_get_source_info_by_name(context, "@DEFAULT_SOURCE@", &SourceQuery::answered, this));
}

void SourceQuery::askFor(pa_context *context, std::uint32_t index, Answer answer) {
    m_answer = std::move(answer);
    begin(pa_context_get_source_info_by_index(context, index, &SourceQuery::answered, this));
}

/// A question that cannot even be asked (the connection breaks just now) is answered by the connection's end.
void SourceQuery::begin(pa_operation *operation) {
    m_operation.reset(operation);
}

void SourceQuery::answered(pa_context *, const pa_source_info *source, int end, void *query) {
    auto &self = *static_cast<SourceQuery *>(query);
    // The server closes a list, even one of a single source, with one more call.
    if (end > 0 || !self.m_answer)
        return;
    const auto answer = std::exchange(self.m_answer, nullptr);
    answer(end < 0 ? nullptr : source);
}

} // namespace velmo::pulse
