#pragma once

#include <QJsonArray>
#include <QSet>
#include <QStringList>

/// How what this machine holds and what the account holds become one.
namespace velmo {

struct DictionaryMerge {
    QStringList words;        ///< In ascending order of their composed code points.
    qsizetype unionCount = 0; ///< Different words on both sides.
};

/// Every word of either side, compared letter by letter as written, without the account's deleted words and those
/// removed on this machine while the account's were on their way.
[[nodiscard]] DictionaryMerge mergeDictionary(const QStringList &local, const QStringList &server,
                                              const QSet<QString> &deleted,
                                              const QSet<QString> &removedMeanwhile);

/// The snippets of either side, one for each `snippetKey`: the last of this machine, else the first of
/// the account. Not those of the account whose trigger was removed on this machine while they were on their way.
/// @param local objects; one without a string "trigger" is left out, a missing "expansion" is an empty one.
/// @param server objects; one without both strings is left out.
/// @param removedMeanwhile keys.
/// @return objects of "id" (fresh), "trigger" and "expansion", in ascending order of their triggers.
[[nodiscard]] QJsonArray mergeSnippets(const QJsonArray &local, const QJsonArray &server,
                                       const QSet<QString> &removedMeanwhile);

struct UsageTotals {
    qint64 words = 0;
    qint64 sessions = 0;

    bool operator==(const UsageTotals &) const = default;
};

/// The larger of each.
[[nodiscard]] UsageTotals largerTotals(const UsageTotals &left, const UsageTotals &right);

/// Whether any of the totals is larger than the other's.
[[nodiscard]] bool isAhead(const UsageTotals &totals, const UsageTotals &others);

} // namespace velmo
