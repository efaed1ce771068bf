#include "service/sync/sync_merge.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/json.h"
#include "base/uuid.h"

#include <QHash>
#include <algorithm>

namespace velmo {

namespace {

constexpr QLatin1StringView kId{"id"};
constexpr QLatin1StringView kTrigger{"trigger"};
constexpr QLatin1StringView kExpansion{"expansion"};

struct Snippet {
    QString trigger;
    QString expansion;
};

/// One snippet for each trigger in lower case.
class SnippetMap {
public:
    void addLocal(const QJsonObject &object) {
        const auto trigger = json::string(object, kTrigger);
        if (trigger)
            m_snippets.insert(lowerCased(*trigger),
                              {*trigger, json::string(object, kExpansion).value_or(QString())});
    }

    void addFromServer(const QJsonObject &object, const QSet<QString> &removedMeanwhile) {
        const auto trigger = json::string(object, kTrigger);
        const auto expansion = json::string(object, kExpansion);
        if (!trigger || !expansion)
            return;
        const QString key = lowerCased(*trigger);
        if (!m_snippets.contains(key) && !removedMeanwhile.contains(key))
            m_snippets.insert(key, {*trigger, *expansion});
    }

    [[nodiscard]] QList<Snippet> inOrder() const {
        QStringList triggers;
        for (const Snippet &snippet : m_snippets)
            triggers.append(snippet.trigger);
        QList<Snippet> snippets;
        for (const QString &trigger : velmo::inOrder(triggers))
            snippets.append(m_snippets.value(lowerCased(trigger)));
        return snippets;
    }

private:
    QHash<QString, Snippet> m_snippets;
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
    for (const Snippet &snippet : map.inOrder())
        merged.append(
            QJsonObject{{kId, newUpperUuid()}, {kTrigger, snippet.trigger}, {kExpansion, snippet.expansion}});
    return merged;
}

UsageTotals largerTotals(const UsageTotals &left, const UsageTotals &right) {
    return {std::max(left.words, right.words), std::max(left.sessions, right.sessions)};
}

bool isAhead(const UsageTotals &totals, const UsageTotals &others) {
    return totals.words > others.words || totals.sessions > others.sessions;
}

} // namespace velmo
