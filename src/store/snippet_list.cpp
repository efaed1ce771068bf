#include "store/snippet_list.h"

#include "base/uuid.h"
#include "store/preference_keys.h"

#include <algorithm>

namespace velmo {

namespace {

QList<SnippetEntry> snippetsIn(const std::optional<PreferenceValue> &stored) {
    const auto *text = stored ? std::get_if<QString>(&*stored) : nullptr;
    return text ? parseSoundSnippets(*text) : QList<SnippetEntry>();
}

/// Tells the entries of a list that are meant by a snippet read from an earlier one.
class Meant {
public:
    Meant(const QList<SnippetEntry> &list, const SnippetEntry &snippet) : m_snippet(snippet) {
        m_idIsKnown = std::any_of(list.begin(), list.end(),
                                  [&](const SnippetEntry &entry) { return entry.id == snippet.id; });
    }

    bool operator()(const SnippetEntry &entry) const {
        if (m_idIsKnown)
            return entry.id == m_snippet.id;
        return entry.trigger == m_snippet.trigger && entry.expansion == m_snippet.expansion;
    }

private:
    const SnippetEntry &m_snippet;
    bool m_idIsKnown;
};

} // namespace

QList<SnippetEntry> snippets(const Preferences &preferences) {
    return parseSoundSnippets(preferences.string(keys::snippets).value_or(QString()));
}

void addSnippet(Preferences &preferences, const QString &trigger, const QString &expansion) {
    preferences.change(keys::snippets, [&](const std::optional<PreferenceValue> &stored) {
        auto list = snippetsIn(stored);
        list.append({newUpperUuid(), trigger, expansion});
        return PreferenceValue(serialiseSnippets(list));
    });
}

bool editSnippet(Preferences &preferences, const SnippetEntry &snippet, const QString &trigger,
                 const QString &expansion) {
    bool isFound = false;
    preferences.change(keys::snippets, [&](const std::optional<PreferenceValue> &stored) {
        auto list = snippetsIn(stored);
        const auto found = std::find_if(list.begin(), list.end(), Meant(list, snippet));
        isFound = found != list.end();
        if (!isFound)
            return stored;
        found->trigger = trigger;
        found->expansion = expansion;
        return std::optional<PreferenceValue>(serialiseSnippets(list));
    });
    return isFound;
}

void removeSnippet(Preferences &preferences, const SnippetEntry &snippet) {
    preferences.change(keys::snippets, [&](const std::optional<PreferenceValue> &stored) {
        auto list = snippetsIn(stored);
        list.removeIf(Meant(list, snippet));
        return PreferenceValue(serialiseSnippets(list));
    });
}

void restoreSnippet(Preferences &preferences, const SnippetEntry &snippet, qsizetype place) {
    preferences.change(keys::snippets, [&](const std::optional<PreferenceValue> &stored) {
        auto list = snippetsIn(stored);
        if (std::none_of(list.begin(), list.end(), Meant(list, snippet)))
            list.insert(std::clamp<qsizetype>(place, 0, list.size()), snippet);
        return PreferenceValue(serialiseSnippets(list));
    });
}

} // namespace velmo
