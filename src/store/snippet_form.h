#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <vector>

/// The form in which snippets are stored and sent: [{"id":"…","trigger":"…","expansion":"…"}]. Three read the stored
/// list, and each forgives what it can do without:
///
/// | reader | for | forgives |
/// |---|---|---|
/// | `parseUsableSnippets` | typing | records without a trigger or an expansion: they are passed over |
/// | `parseSoundSnippets` | the page, which writes the list anew | nothing: one record at fault, and it is no list |
/// | `parseSnippetRecords` | synchronising | members that are missing or no strings: the records are kept |
///
/// A text that is no array of objects holds no snippets, to all of them. Pure; any thread.
namespace velmo {

/// A spoken phrase and the text that is typed in its place.
struct SnippetEntry {
    QString id; ///< A UUID in upper case; stable between two synchronisations only.
    QString trigger;
    QString expansion;

    bool operator==(const SnippetEntry &) const = default;
};

/// The names of a record's members.
namespace snippet_members {
inline constexpr QLatin1StringView id{"id"};
inline constexpr QLatin1StringView trigger{"trigger"};
inline constexpr QLatin1StringView expansion{"expansion"};
} // namespace snippet_members

[[nodiscard]] std::vector<SnippetEntry> parseUsableSnippets(const QString &stored);
[[nodiscard]] QList<SnippetEntry> parseSoundSnippets(const QString &stored);

/// Each record as `snippetRecord` leaves it.
[[nodiscard]] QJsonArray parseSnippetRecords(const QString &stored);

/// The members that are strings, others than a snippet's too. Half a surrogate pair, which can be neither stored nor
/// sent on, is replaced.
[[nodiscard]] QJsonObject snippetRecord(const QJsonObject &object);

[[nodiscard]] QJsonObject toJson(const SnippetEntry &snippet);

/// The stored form of a list.
[[nodiscard]] QString serialiseSnippets(const QList<SnippetEntry> &snippets);

/// What tells snippets apart where devices bring theirs together: triggers that differ in case alone are one.
[[nodiscard]] QString snippetKey(const QString &trigger);

} // namespace velmo
