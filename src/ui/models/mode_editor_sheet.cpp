#include "ui/models/mode_editor_sheet.h"

#include "base/characters.h"
#include "text/tables/built_in_modes.h"

namespace velmo {

ModeEditorSheet::ModeEditorSheet(ModeDraft draft, OnConfirm onConfirm)
    : m_draft(std::move(draft)), m_onConfirm(std::move(onConfirm)) {}

ModeDraft ModeEditorSheet::newDraft() {
    return {std::nullopt, QString(), QString(), iconOptions().front().toString()};
}

QString ModeEditorSheet::title() const {
    return m_draft.editedId ? tr("Edit Mode") : tr("New Mode");
}

QString ModeEditorSheet::confirmText() const {
    return m_draft.editedId ? tr("Save") : tr("Create");
}

QStringList ModeEditorSheet::iconChoices() {
    QStringList names;
    for (const QStringView name : iconOptions())
        names.append(name.toString());
    return names;
}

bool ModeEditorSheet::canConfirm() const {
    return !trimmed(m_draft.name).isEmpty() && !trimmed(m_draft.systemPrompt).isEmpty();
}

void ModeEditorSheet::confirm() {
    if (!canConfirm())
        return;
    m_onConfirm(m_draft);
    Q_EMIT closed();
}

void ModeEditorSheet::cancel() {
    Q_EMIT closed();
}

void ModeEditorSheet::change(QString &text, const QString &wanted) {
    if (text == wanted)
        return;
    text = wanted;
    Q_EMIT draftChanged();
}

} // namespace velmo
