#include "service/wire/request_sender.h"

#include "base/uuid.h"
#include "service/wire/session_interfaces.h"
#include "store/preference_keys.h"
#include "store/preferences.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool isDeviceId(const std::optional<PreferenceValue> &stored) {
    const QString *text = stored ? std::get_if<QString>(&*stored) : nullptr;
    return text != nullptr && !text->isEmpty();
}

/// Two first uploads at once agree on one identifier. Where it cannot be stored it serves this upload alone.
QString ensureDeviceId(Preferences &preferences) {
    if (const auto stored = preferences.value(keys::deviceId); isDeviceId(stored))
        return std::get<QString>(*stored);
    QString deviceId = newLowerUuid();
    preferences.change(keys::deviceId, [&deviceId](const std::optional<PreferenceValue> &stored) {
        if (isDeviceId(stored))
            deviceId = std::get<QString>(*stored);
        return deviceId;
    });
    return deviceId;
}

} // namespace

RequestSender senderOfUpload(TokenSource &tokens, Preferences &preferences) {
    RequestSender sender = senderOfText(tokens, preferences);
    sender.deviceId = ensureDeviceId(preferences);
    return sender;
}

RequestSender senderOfText(TokenSource &tokens, const Preferences &preferences) {
    return {tokens.authToken(), preferences.string(keys::deviceId),
            preferences.string(keys::selectedMode).value_or(u"accurate"_s)};
}

} // namespace velmo
