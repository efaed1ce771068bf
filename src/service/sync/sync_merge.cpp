#include "service/sync/sync_merge.h"

#include "base/characters.h"
#include "base/json.h"
#include "base/uuid.h"
#include "store/snippet_form.h"

#include <QHash>
#include <algorithm>

namespace velmo {

namespace {

/// One snippet for each key.
class SnippetMap {
public:
    void addLocal(const QJsonObject &record) {
        const auto trigger = json::string(record, snippet_members::trigger);
        if (trigger)
            m_snippets.insert(
                snippetKey(*trigger),
                {{}, *trigger, json::string(record, snippet_members::expansion).value_or(QString())});
    }

    void addFromServer(const QJsonObject &record, const QSet<QString> &removedMeanwhile) {
        const auto trigger = json::string(record, snippet_members::trigger);
        const auto expansion = json::string(record, snippet_members::expansion);
        if (!trigger || !expansion)
            return;
        const QString key = snippetKey(*trigger);
        if (!m_snippets.contains(key) && !removedMeanwhile.contains(key))
            m_snippets.insert(key, {{}, *trigger, *expansion});
    }

    /// In the order of their triggers, each with a fresh identifier.
    [[nodiscard]] QList<SnippetEntry> inOrder() const {
        QStringList triggers;
        for (const SnippetEntry &snippet : m_snippets)
            triggers.append(snippet.trigger);
        QList<SnippetEntry> snippets;
        for (const QString &trigger : velmo::inOrder(triggers)) {
            snippets.append(m_snippets.value(snippetKey(trigger)));
            snippets.last().id = newUpperUuid();
        }
        return snippets;
    }

private:
    QHash<QString, SnippetEntry> m_snippets;
};

} // namespace

DictionaryMerge mergeDictionary(const QStringList &local, const QStringList &server,
                                const QSet<QString> &deleted, const QSet<QString> &removedMeanwhile) {
    QSet<QString> words(local.begin(), local.end());
    words.unite(QSet<QString>(server.begin(), server.end()));
    const qsizetype unionCount = words.size();
    words.subtract(deleted);
    words.subtract(removedMeanwhile);
    return {inOrder(words.values()), unionCount};
}

QJsonArray mergeSnippets(const QJsonArray &local, const QJsonArray &server,
                         const QSet<QString> &removedMeanwhile) {
    SnippetMap map;
    for (const QJsonValueConstRef element : local)
        map.addLocal(element.toObject());
    for (const QJsonValueConstRef element : server)
        map.addFromServer(element.toObject(), removedMeanwhile);
    QJsonArray merged;
    for (const SnippetEntry &snippet : map.inOrder())
        merged.append(toJson(snippet));
    return merged;
}

UsageTotals largerTotals(const UsageTotals &left, const UsageTotals &right) {
    return {std::max(left.words, right.words), std::max(left.sessions, right.sessions)};
}

bool isAhead(const UsageTotals &totals, const UsageTotals &others) {
    return totals.words > others.words || totals.sessions > others.sessions;
}

} // namespace velmo
