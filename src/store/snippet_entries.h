#pragma once

#include "store/preferences.h"

#include <vector>

namespace velmo {

/// A spoken phrase and the text that is typed in its place.
struct SnippetEntry {
    QString id; ///< A UUID in upper case; stable between two synchronisations only.
    QString trigger;
    QString expansion;

    bool operator==(const SnippetEntry &) const = default;
};

/// The snippets of a stored list, [{"id":"…","trigger":"…","expansion":"…"}], that text processing can use, in
/// list order. Objects without a string trigger and a string expansion are passed over; a text that is no
/// array of objects holds none.
[[nodiscard]] std::vector<SnippetEntry> parseUsableSnippets(const QString &stored);

} // namespace velmo
