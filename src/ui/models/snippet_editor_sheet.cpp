#include "ui/models/snippet_editor_sheet.h"

#include "base/case_mapping.h"
#include "base/characters.h"

#include <algorithm>

namespace velmo {

SnippetEditorSheet::SnippetEditorSheet(std::optional<SnippetEntry> snippet, QStringList existingTriggers,
                                       OnSave onSave)
    : m_snippet(std::move(snippet)),
      m_existingTriggers(std::move(existingTriggers)),
      m_onSave(std::move(onSave)),
      m_trigger(m_snippet ? m_snippet->trigger : QString()),
      m_expansion(m_snippet ? m_snippet->expansion : QString()) {}

QString SnippetEditorSheet::title() const {
    return m_snippet ? tr("Edit Snippet") : tr("Add Snippet");
}

void SnippetEditorSheet::setTrigger(const QString &text) {
    if (m_trigger == text)
        return;
    m_trigger = text;
    Q_EMIT textsChanged();
}

void SnippetEditorSheet::setExpansion(const QString &text) {
    if (m_expansion == text)
        return;
    m_expansion = text;
    Q_EMIT textsChanged();
}

bool SnippetEditorSheet::canSave() const {
    return !trimmedOfBlanks(m_trigger).isEmpty() && !trimmedOfBlanks(m_expansion).isEmpty();
}

QString SnippetEditorSheet::duplicateMessage() const {
    return showDuplicateAlert() ? tr("A snippet with trigger \"%1\" already exists.").arg(m_duplicate)
                                : QString();
}

void SnippetEditorSheet::save() {
    if (!canSave())
        return;
    const QString trigger = trimmedOfBlanks(m_trigger).toString();
    if (isDuplicate(trigger)) {
        setDuplicate(trigger);
        return;
    }
    m_onSave(trigger, trimmedOfBlanks(m_expansion).toString());
    Q_EMIT closed();
}

void SnippetEditorSheet::dismissDuplicateAlert() {
    setDuplicate(QString());
}

void SnippetEditorSheet::cancel() {
    Q_EMIT closed();
}

/// The edited snippet's own trigger never counts against it, also in another case.
bool SnippetEditorSheet::isDuplicate(const QString &trigger) const {
    const QString wanted = lowerCased(trigger);
    const QString own = m_snippet ? lowerCased(m_snippet->trigger) : QString();
    return wanted != own &&
           std::any_of(m_existingTriggers.begin(), m_existingTriggers.end(),
                       [&](const QString &existing) { return lowerCased(existing) == wanted; });
}

void SnippetEditorSheet::setDuplicate(const QString &trigger) {
    if (m_duplicate == trigger && m_duplicate.isNull() == trigger.isNull())
        return;
    m_duplicate = trigger;
    Q_EMIT showDuplicateAlertChanged();
}

} // namespace velmo
