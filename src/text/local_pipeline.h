#pragma once

#include "text/passes/cleanup_context.h"
#include "text/personal_words.h"
#include "text/text_pass.h"

namespace velmo {

/// The first look at a raw transcript: stutters, phrases of the speech model, a capital at the start. A
/// transcript nobody said becomes empty.
[[nodiscard]] QString preClean(const QString &transcript, const CleanupContext &context,
                               const TextTrace &trace = {});

/// From what was said to how it is written: spoken marks and breaks, fillers, emoji, Norwegian words, spacing
/// and capitals. A blank text comes back unchanged.
[[nodiscard]] QString cleanup(const QString &text, const CleanupContext &context,
                              const TextTrace &trace = {});

/// The last steps of a text that no mode rewrites: corrections from the vocabulary, then snippets.
[[nodiscard]] QString applyPersonalWords(const QString &text, const PersonalContext &context,
                                         const TextTrace &trace = {});

/// The way of a transcript through all local passes, no service asked. Any thread; `preferences` must outlive
/// it.
class LocalTextPath {
public:
    explicit LocalTextPath(const Preferences &preferences)
        : m_preferences(preferences), m_personalWords(preferences) {}

    /// The text to type. Preferences are read as they are now.
    [[nodiscard]] QString process(const QString &transcript, const std::optional<QString> &detectedLanguage,
                                  const TextTrace &trace = {}) const;

private:
    const Preferences &m_preferences;
    PersonalWords m_personalWords;
};

} // namespace velmo
