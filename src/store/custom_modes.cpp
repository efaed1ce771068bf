#include "store/custom_modes.h"

#include "base/json.h"
#include "store/preference_keys.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr QLatin1StringView kId{"id"};
constexpr QLatin1StringView kName{"name"};
constexpr QLatin1StringView kSystemPrompt{"systemPrompt"};
constexpr QLatin1StringView kIcon{"icon"};

std::optional<CustomMode> modeIn(const QJsonObject &object) {
    auto id = json::string(object, kId);
    auto name = json::string(object, kName);
    auto prompt = json::string(object, kSystemPrompt);
    if (!id || !name || !prompt)
        return std::nullopt;
    return CustomMode{std::move(*id), std::move(*name), std::move(*prompt),
                      json::string(object, kIcon).value_or(u"sparkles"_s)};
}

/// One change to the list as it is stored at the moment.
template <class Change>
void changeList(Preferences &preferences, Change change) {
    preferences.change(keys::customModes, [&](const std::optional<PreferenceValue> &stored) {
        const auto *text = stored ? std::get_if<QString>(&*stored) : nullptr;
        QList<CustomMode> modes = text ? parseCustomModes(*text) : QList<CustomMode>();
        change(modes);
        return PreferenceValue(serialiseCustomModes(modes));
    });
}

} // namespace

QList<CustomMode> parseCustomModes(const QString &stored) {
    QList<CustomMode> modes;
    const QJsonArray objects = json::arrayOfObjects(stored.toUtf8()).value_or(QJsonArray());
    for (const QJsonValueConstRef element : objects) {
        if (auto mode = modeIn(element.toObject()))
            modes.append(std::move(*mode));
    }
    return modes;
}

QString serialiseCustomModes(const QList<CustomMode> &modes) {
    QJsonArray objects;
    for (const CustomMode &mode : modes) {
        objects.append(QJsonObject{
            {kId, mode.id}, {kName, mode.name}, {kSystemPrompt, mode.systemPrompt}, {kIcon, mode.icon}});
    }
    return QString::fromUtf8(json::compact(objects));
}

QList<CustomMode> customModes(const Preferences &preferences) {
    return parseCustomModes(preferences.string(keys::customModes).value_or(QString()));
}

void addCustomMode(Preferences &preferences, const CustomMode &mode) {
    changeList(preferences, [&](QList<CustomMode> &modes) { modes.append(mode); });
}

void replaceCustomMode(Preferences &preferences, const CustomMode &mode) {
    changeList(preferences, [&](QList<CustomMode> &modes) {
        const auto same = std::ranges::find(modes, mode.id, &CustomMode::id);
        if (same != modes.end())
            *same = mode;
    });
}

void removeCustomMode(Preferences &preferences, const QString &id) {
    changeList(preferences, [&](QList<CustomMode> &modes) {
        modes.removeIf([&](const CustomMode &mode) { return mode.id == id; });
    });
}

void restoreCustomMode(Preferences &preferences, const CustomMode &mode, qsizetype place) {
    changeList(preferences, [&](QList<CustomMode> &modes) {
        if (std::ranges::find(modes, mode.id, &CustomMode::id) == modes.end())
            modes.insert(std::clamp<qsizetype>(place, 0, modes.size()), mode);
    });
}

std::optional<QString> customModePrompt(const Preferences &preferences, const QString &id) {
    const QString stored = preferences.string(keys::customModes).value_or(QString());
    const QJsonArray objects = json::arrayOfObjects(stored.toUtf8()).value_or(QJsonArray());
    for (const QJsonValueConstRef element : objects) {
        const QJsonObject object = element.toObject();
        if (json::string(object, kId) == id)
            return json::string(object, kSystemPrompt).value_or(QString());
    }
    return std::nullopt;
}

} // namespace velmo
