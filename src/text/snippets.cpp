#include "text/snippets.h"

namespace velmo {

Snippets compiledSnippets(const std::vector<SnippetEntry> &entries) {
    Snippets snippets;
    for (const SnippetEntry &entry : entries) {
        if (!entry.trigger.isEmpty())
            snippets.emplace_back(entry);
    }
    return snippets;
}

QString expandSnippets(const QString &text, const Snippets &snippets) {
    PhraseText expanded(text);
    for (const Snippet &snippet : snippets)
        expanded.replaceAll(snippet.trigger, snippet.expansion);
    return expanded.text();
}

} // namespace velmo
