#include "store/preferences.h"

namespace velmo {

namespace {

template <class Kind>
std::optional<Kind> ofKind(const std::optional<PreferenceValue> &value) {
    if (!value || !std::holds_alternative<Kind>(*value))
        return std::nullopt;
    return std::get<Kind>(*value);
}

} // namespace

bool Preferences::set(const QString &key, PreferenceValue value) {
    return change(key, [&](const auto &) { return std::optional(value); });
}

bool Preferences::remove(const QString &key) {
    return change(key, [](const auto &) { return std::nullopt; });
}

std::optional<QString> Preferences::string(const QString &key) const {
    return ofKind<QString>(value(key));
}

std::optional<bool> Preferences::boolean(const QString &key) const {
    return ofKind<bool>(value(key));
}

std::optional<qint64> Preferences::integer(const QString &key) const {
    return ofKind<qint64>(value(key));
}

std::optional<Date> Preferences::date(const QString &key) const {
    return ofKind<Date>(value(key));
}

std::optional<QByteArray> Preferences::data(const QString &key) const {
    return ofKind<QByteArray>(value(key));
}

} // namespace velmo
