#include "store/snippet_entries.h"

#include "base/json.h"

using namespace Qt::StringLiterals;

namespace velmo {

std::vector<SnippetEntry> parseUsableSnippets(const QString &stored) {
    const auto objects = json::arrayOfObjects(stored.toUtf8());
    if (!objects)
        return {};
    std::vector<SnippetEntry> snippets;
    for (const QJsonValueConstRef element : *objects) {
        const QJsonObject object = element.toObject();
        auto trigger = json::string(object, "trigger"_L1);
        auto expansion = json::string(object, "expansion"_L1);
        if (trigger && expansion)
            snippets.push_back({json::string(object, "id"_L1).value_or(QString()), std::move(*trigger),
                                std::move(*expansion)});
    }
    return snippets;
}

} // namespace velmo
