#include "store/snippet_form.h"

#include "base/case_mapping.h"
#include "base/json.h"
#include "base/utf8.h"

namespace velmo {

namespace {

QJsonArray recordsIn(const QString &stored) {
    return json::arrayOfObjects(stored.toUtf8()).value_or(QJsonArray());
}

} // namespace

std::vector<SnippetEntry> parseUsableSnippets(const QString &stored) {
    std::vector<SnippetEntry> snippets;
    for (const QJsonValueConstRef element : recordsIn(stored)) {
        const QJsonObject object = element.toObject();
        auto trigger = json::string(object, snippet_members::trigger);
        auto expansion = json::string(object, snippet_members::expansion);
        if (trigger && expansion)
            snippets.push_back({json::string(object, snippet_members::id).value_or(QString()),
                                std::move(*trigger), std::move(*expansion)});
    }
    return snippets;
}

QList<SnippetEntry> parseSoundSnippets(const QString &stored) {
    QList<SnippetEntry> snippets;
    for (const QJsonValueConstRef element : recordsIn(stored)) {
        const QJsonObject object = element.toObject();
        auto id = json::string(object, snippet_members::id);
        auto trigger = json::string(object, snippet_members::trigger);
        auto expansion = json::string(object, snippet_members::expansion);
        if (!id || !trigger || !expansion)
            return {};
        snippets.append({std::move(*id), std::move(*trigger), std::move(*expansion)});
    }
    return snippets;
}

QJsonArray parseSnippetRecords(const QString &stored) {
    QJsonArray records;
    for (const QJsonValueConstRef element : recordsIn(stored))
        records.append(snippetRecord(element.toObject()));
    return records;
}

QJsonObject snippetRecord(const QJsonObject &object) {
    QJsonObject strings;
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (member.value().isString())
            strings.insert(member.key(), wellFormed(member.value().toString()));
    }
    return strings;
}

QJsonObject toJson(const SnippetEntry &snippet) {
    return {{snippet_members::id, snippet.id},
            {snippet_members::trigger, snippet.trigger},
            {snippet_members::expansion, snippet.expansion}};
}

QString serialiseSnippets(const QList<SnippetEntry> &snippets) {
    QJsonArray objects;
    for (const SnippetEntry &snippet : snippets)
        objects.append(toJson(snippet));
    return QString::fromUtf8(json::compact(objects));
}

QString snippetKey(const QString &trigger) {
    return lowerCased(trigger);
}

} // namespace velmo
