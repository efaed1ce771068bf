#include "store/snippet_entries.h"

#include "base/json.h"

namespace velmo {

std::vector<SnippetEntry> parseUsableSnippets(const QString &stored) {
    const auto objects = json::arrayOfObjects(stored.toUtf8());
    if (!objects)
        return {};
    std::vector<SnippetEntry> snippets;
    for (const QJsonValueConstRef element : *objects) {
        const QJsonObject object = element.toObject();
        auto trigger = json::string(object, QLatin1StringView("trigger"));
        auto expansion = json::string(object, QLatin1StringView("expansion"));
        if (trigger && expansion)
            snippets.push_back({json::string(object, QLatin1StringView("id")).value_or(QString()),
                                std::move(*trigger), std::move(*expansion)});
    }
    return snippets;
}

} // namespace velmo
