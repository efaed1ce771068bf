#pragma once

#include "store/snippet_form.h"
#include "text/passes/phrase.h"

#include <deque>

namespace velmo {

/// A snippet made ready to be looked for.
struct Snippet {
    explicit Snippet(const SnippetEntry &entry) : trigger(entry.trigger), expansion(entry.expansion) {}

    Phrase trigger;
    QString expansion;
};

using Snippets = std::deque<Snippet>;

/// All but those with an empty trigger, which would be found everywhere.
[[nodiscard]] Snippets compiledSnippets(const std::vector<SnippetEntry> &entries);

/// Replaces every trigger, whatever its case and also inside longer words, by its expansion as it stands. The
/// snippets go one after the other, so a later one sees what earlier ones typed.
[[nodiscard]] QString expandSnippets(const QString &text, const Snippets &snippets);

} // namespace velmo
