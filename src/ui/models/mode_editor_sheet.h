#pragma once

#include "text/modes/mode_settings.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace velmo {

/// The sheet in which a custom mode is written: its name, what the language model is told, and a symbol. It changes
/// nothing before the person confirms. Main thread.
class ModeEditorSheet final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString confirmText READ confirmText CONSTANT)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY draftChanged)
    Q_PROPERTY(QString prompt READ prompt WRITE setPrompt NOTIFY draftChanged)
    Q_PROPERTY(QString icon READ icon WRITE setIcon NOTIFY draftChanged)
    Q_PROPERTY(QStringList iconChoices READ iconChoices CONSTANT)
    Q_PROPERTY(bool canConfirm READ canConfirm NOTIFY draftChanged)

public:
    using OnConfirm = std::function<void(const ModeDraft &)>;

    /// @param draft the mode to edit; for a new one, nothing but its icon.
    ModeEditorSheet(ModeDraft draft, OnConfirm onConfirm);

    /// The draft of a mode that is not there yet, with the first symbol chosen.
    [[nodiscard]] static ModeDraft newDraft();

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString confirmText() const;

    [[nodiscard]] const QString &name() const { return m_draft.name; }
    void setName(const QString &name) { change(m_draft.name, name); }
    [[nodiscard]] const QString &prompt() const { return m_draft.systemPrompt; }
    void setPrompt(const QString &prompt) { change(m_draft.systemPrompt, prompt); }
    [[nodiscard]] const QString &icon() const { return m_draft.icon; }
    void setIcon(const QString &icon) { change(m_draft.icon, icon); }
    [[nodiscard]] static QStringList iconChoices();

    /// Whether name and prompt hold more than blanks: a mode without a prompt would do nothing.
    [[nodiscard]] bool canConfirm() const;

    /// Hands the draft to `onConfirm` and closes.
    Q_INVOKABLE void confirm();
    /// Closes without a change.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void draftChanged();
    void closed();

private:
    void change(QString &text, const QString &wanted);

    ModeDraft m_draft;
    OnConfirm m_onConfirm;
};

} // namespace velmo
