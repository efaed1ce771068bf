#pragma once

#include "store/snippet_form.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <optional>

namespace velmo {

/// The sheet in which a snippet is written. It stays open until its texts are saved or it is cancelled; a trigger that
/// another snippet has, whatever its case, is refused with an alert. Main thread.
class SnippetEditorSheet final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString trigger READ trigger WRITE setTrigger NOTIFY textsChanged)
    Q_PROPERTY(QString expansion READ expansion WRITE setExpansion NOTIFY textsChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY textsChanged)
    Q_PROPERTY(bool showDuplicateAlert READ showDuplicateAlert NOTIFY showDuplicateAlertChanged)
    Q_PROPERTY(QString duplicateMessage READ duplicateMessage NOTIFY showDuplicateAlertChanged)

public:
    using OnSave = std::function<void(const QString &trigger, const QString &expansion)>;

    /// @param snippet the snippet to edit; none to add one.
    /// @param existingTriggers those of all snippets, the edited one among them.
    SnippetEditorSheet(std::optional<SnippetEntry> snippet, QStringList existingTriggers, OnSave onSave);

    [[nodiscard]] QString title() const;

    [[nodiscard]] const QString &trigger() const { return m_trigger; }
    void setTrigger(const QString &text);
    [[nodiscard]] const QString &expansion() const { return m_expansion; }
    void setExpansion(const QString &text);

    /// Whether both texts hold more than blanks.
    [[nodiscard]] bool canSave() const;

    [[nodiscard]] bool showDuplicateAlert() const { return !m_duplicate.isNull(); }
    [[nodiscard]] QString duplicateMessage() const;

    /// The list behind the sheet changed.
    void setExistingTriggers(QStringList triggers) { m_existingTriggers = std::move(triggers); }

    /// Hands the trimmed texts to `onSave` and closes, or shows the alert.
    Q_INVOKABLE void save();
    /// The person has read the alert.
    Q_INVOKABLE void dismissDuplicateAlert();
    /// Closes without saving.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void textsChanged();
    void showDuplicateAlertChanged();
    void closed();

private:
    [[nodiscard]] bool isDuplicate(const QString &trigger) const;
    void setDuplicate(const QString &trigger);

    std::optional<SnippetEntry> m_snippet;
    QStringList m_existingTriggers;
    OnSave m_onSave;
    QString m_trigger;
    QString m_expansion;
    QString m_duplicate; ///< The trigger the alert speaks of; null while it is not shown.
};

} // namespace velmo
