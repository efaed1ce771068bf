#include "localservice/http/endpoint.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

std::optional<QByteArray> Request::header(QByteArrayView name) const {
    const auto found = std::find_if(headers.begin(), headers.end(), [name](const auto &header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == headers.end())
        return std::nullopt;
    return found->second;
}

Reply refusalReply(const Refusal &refusal) {
    return {refusal.status, {{u"error"_s, refusal.sentence}}};
}

} // namespace velmo::localservice
