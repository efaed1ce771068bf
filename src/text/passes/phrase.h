#pragma once

#include "base/pattern.h"

#include <QString>
#include <mutex>
#include <optional>

namespace velmo {

/// A literal phrase, found whatever its case, between two regular expressions that say what stands around it.
/// Compiled when it is first needed: of hundreds of phrases a dictation holds few. Safe on any thread.
class Phrase {
public:
    explicit Phrase(QStringView phrase, QStringView before = {}, QStringView after = {});

    [[nodiscard]] const QString &caseFolded() const { return m_caseFolded; }
    [[nodiscard]] const Pattern &pattern() const;

private:
    QString m_caseFolded;
    QString m_expression;
    mutable std::once_flag m_compileOnce;
    mutable std::optional<Pattern> m_pattern;
};

/// A text in which many phrases are replaced one after the other. A phrase can only match where its folded
/// form is part of the text's, which is far cheaper to ask than to run its pattern.
class PhraseText {
public:
    explicit PhraseText(const QString &text);

    /// Replaces every match by `replacement` as it stands.
    void replaceAll(const Phrase &phrase, const QString &replacement);
    void replaceAll(const Phrase &phrase, const Pattern::Replacement &replacement);

    [[nodiscard]] const QString &text() const { return m_text; }

private:
    QString m_text;
    QString m_caseFolded;
};

} // namespace velmo
