#pragma once

#include "base/lifetime.h"
#include "service/status/service_watch.h"
#include "text/modes/mode_settings.h"
#include "ui/models/mode_editor_sheet.h"
#include "ui/models/row_model.h"

#include <QtQml/qqmlregistration.h>
#include <memory>

namespace velmo {

class PreferenceWatch;
class UndoOffer;
struct CustomMode;

/// A mode as its card shows it.
struct ModeCard {
    Q_GADGET
    Q_PROPERTY(QString modeId MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(bool chosen MEMBER isChosen)

public:
    QString id;
    QString name;
    QString symbol;
    QString description; ///< In one line; of a custom mode, its prompt.
    bool isChosen = false;

    [[nodiscard]] const QString &key() const { return id; }
    bool operator==(const ModeCard &) const = default;
};

/// The mode page: which mode dictated text goes through, whether it is sent to a language model at all, and the modes a
/// person has made. Every change is stored at once; what another process changes appears by itself. Main thread.
class ModeView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool smartFormatting READ smartFormatting WRITE setSmartFormatting NOTIFY modesChanged)
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY modesChanged)
    Q_PROPERTY(QString caption READ caption NOTIFY modesChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY modesChanged)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged)
    Q_PROPERTY(QAbstractItemModel *builtInModes READ builtInModes CONSTANT)
    Q_PROPERTY(QAbstractItemModel *customModes READ customModes CONSTANT)
    Q_PROPERTY(bool hasCustomModes READ hasCustomModes NOTIFY modesChanged)
    Q_PROPERTY(velmo::ModeEditorSheet *sheet READ sheet NOTIFY sheetChanged)

public:
    /// All of them outlive the view.
    ModeView(Preferences &preferences, PreferenceWatch &watch, ServiceWatch &service, UndoOffer &undoOffer);
    ~ModeView() override;

    [[nodiscard]] bool smartFormatting() const { return m_smartFormatting; }
    void setSmartFormatting(bool isOn);
    /// Whether texts go through the selected mode, as far as is known.
    [[nodiscard]] bool isProcessing() const;
    [[nodiscard]] QString caption() const;
    /// Why no text goes through the selected mode although it should; empty where nothing is known to keep it.
    [[nodiscard]] QString problem() const;

    /// While it is shown the page follows what the service has.
    [[nodiscard]] bool isShown() const { return m_look != nullptr; }
    void setShown(bool isShown);

    [[nodiscard]] RowModel<ModeCard> *builtInModes() { return &m_builtInModes; }
    [[nodiscard]] RowModel<ModeCard> *customModes() { return &m_customModes; }
    [[nodiscard]] bool hasCustomModes() const { return !m_customModes.rows().isEmpty(); }

    /// The open sheet, or null.
    [[nodiscard]] ModeEditorSheet *sheet() const { return m_sheet.get(); }

    /// The page appears.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void choose(const QString &id);
    Q_INVOKABLE void openNewSheet();
    /// Opens the sheet for the custom mode in that row.
    Q_INVOKABLE void openEditSheet(qsizetype row);
    /// Removes the custom mode in that row; offers it back for a few seconds.
    Q_INVOKABLE void removeRow(qsizetype row);

Q_SIGNALS:
    void modesChanged();
    void isShownChanged();
    void sheetChanged();

private:
    /// A view may still be in a handler of a sheet that closes.
    struct DeleteLater {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    void load();
    [[nodiscard]] std::optional<CustomMode> customModeIn(qsizetype row) const;
    void restore(const CustomMode &mode, qsizetype place, bool wasChosen);
    void openSheet(const ModeDraft &draft);
    void closeSheet();

    Preferences &m_preferences;
    ServiceWatch &m_service;
    UndoOffer &m_undoOffer;
    ModeSettings m_settings;
    bool m_smartFormatting = true;
    RowModel<ModeCard> m_builtInModes;
    RowModel<ModeCard> m_customModes;
    std::unique_ptr<ModeEditorSheet, DeleteLater> m_sheet;
    std::unique_ptr<ModeEditorSheet, DeleteLater> m_closedSheet; ///< Can still be seen while it fades.
    std::unique_ptr<ServiceWatch::Look> m_look;
    Lifetime m_lifetime;
};

} // namespace velmo
