#pragma once

#include "base/interface.h"

#include <QFlags>
#include <QString>
#include <QStringView>
#include <functional>
#include <memory>

namespace velmo {

/// A regular expression in ICU's syntax and with ICU's meaning: `\s` is Unicode white space, `\w` letters,
/// marks, digits and connectors, `\b` the border between `\w` and anything else; case is folded in full
/// ("straße" finds "STRASSE"); code points are compared as they are, so "é" does not find "e" + accent.
///
/// Compiled once. A Pattern never changes and serves any number of threads. Nothing here fails toward the
/// caller: where the expression does not compile or ICU gives up on a text, the text comes back as it was.
class Pattern {
public:
    enum Option {
        CaseInsensitive = 1,
        Multiline = 2, ///< `^` and `$` also match at line breaks inside the text.
    };
    Q_DECLARE_FLAGS(Options, Option)

    /// One match, as long as the call lasts that hands it out.
    class Match : public Interface {
    public:
        /// What a capture group matched, 0 being the whole match; empty when it took no part.
        [[nodiscard]] virtual QStringView group(int number) const = 0;
    };
    using Replacement = std::function<QString(const Match &)>;

    explicit Pattern(const QString &expression, Options options = {});

    /// The expression that matches the text itself, whatever signs it holds.
    [[nodiscard]] static QString escaped(QStringView text);

    [[nodiscard]] bool occursIn(QStringView text) const;

    /// Replaces every match, from left to right and without overlap, by the template; "$1" in it stands for
    /// the first capture group. Without a match the answer shares its data with `text`.
    [[nodiscard]] QString replaced(const QString &text, QStringView replacementTemplate) const;

    /// The same with a replacement made for each match, taken as it stands.
    [[nodiscard]] QString replaced(const QString &text, const Replacement &replacement) const;

private:
    struct Compiled;
    std::shared_ptr<const Compiled> m_compiled;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Pattern::Options)

} // namespace velmo
