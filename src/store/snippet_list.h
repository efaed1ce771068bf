#pragma once

#include "store/preferences.h"
#include "store/snippet_form.h"

/// The list of snippets as a person keeps it.
namespace velmo {

/// The stored list; none when a record of it is at fault.
[[nodiscard]] QList<SnippetEntry> snippets(const Preferences &preferences);

/// Puts a snippet with a fresh identifier at the end of the stored list.
void addSnippet(Preferences &preferences, const QString &trigger, const QString &expansion);

/// Gives the first snippet of that identifier in the stored list another trigger and expansion; place and identifier
/// stay. A synchronisation may have renewed the identifiers since the snippet was read: where the one given is gone,
/// a snippet that still says the same is meant.
/// @return false when there is none; nothing is stored then.
bool editSnippet(Preferences &preferences, const SnippetEntry &snippet, const QString &trigger,
                 const QString &expansion);

/// Removes every snippet of that identifier from the stored list; where it is gone, those that say the same.
void removeSnippet(Preferences &preferences, const SnippetEntry &snippet);

/// Puts a removed snippet back to its place in the stored list, or to the end where that is shorter now. One that is
/// there already stays where it is.
void restoreSnippet(Preferences &preferences, const SnippetEntry &snippet, qsizetype place);

} // namespace velmo
