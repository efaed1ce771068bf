#pragma once

#include "service/status/service_watch.h"
#include "ui/models/language_choice.h"
#include "ui/models/row_model.h"
#include "ui/models/speech_trial.h"

#include <QtQml/qqmlregistration.h>

namespace velmo {

class Calendar;
class ServiceStatusClient;

/// A selected language, and whether the engine understands it.
struct SpokenLanguage {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(bool understood MEMBER isUnderstood)

public:
    QString code;
    QString name;
    bool isUnderstood = false;

    [[nodiscard]] const QString &key() const { return code; }
    bool operator==(const SpokenLanguage &) const = default;
};

/// A model of the engine as its row shows it.
struct SpeechModelRow {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString details MEMBER details)
    Q_PROPERTY(bool installed MEMBER isInstalled)
    Q_PROPERTY(bool inUse MEMBER isInUse)
    Q_PROPERTY(QString page MEMBER page)
    Q_PROPERTY(bool arriving MEMBER isArriving)
    Q_PROPERTY(double arrived MEMBER arrived)

public:
    QString name;
    QString details; ///< Size, languages and source; while it arrives, how far it is.
    bool isInstalled = false;
    bool isInUse = false;
    QString page; ///< Of its publisher, for a model that a person fetches by hand; null for the others.
    bool isArriving = false;
    double arrived = 0; ///< 0 to 1.

    [[nodiscard]] const QString &key() const { return name; }
    bool operator==(const SpeechModelRow &) const = default;
};

/// The speech page: which service recognises speech, whether it runs and since when, what it understands, its models, the
/// language model that modes go through, and dictation to try out. While it is shown it follows the service. Of a service
/// elsewhere only the address and whether it answers are known. Main thread.
class SpeechView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged)
    Q_PROPERTY(QString address READ address CONSTANT)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY serviceChanged)
    Q_PROPERTY(bool isAnswering READ isAnswering NOTIFY serviceChanged)
    Q_PROPERTY(bool isSilent READ isSilent NOTIFY serviceChanged)
    Q_PROPERTY(QString standing READ standing NOTIFY serviceChanged)
    Q_PROPERTY(QString remedy READ remedy NOTIFY serviceChanged)
    Q_PROPERTY(QString engine READ engine NOTIFY serviceChanged)
    Q_PROPERTY(QString understood READ understood NOTIFY serviceChanged)
    Q_PROPERTY(QAbstractItemModel *languages READ languages CONSTANT)
    Q_PROPERTY(QString languagesProblem READ languagesProblem NOTIFY languagesChanged)
    Q_PROPERTY(QAbstractItemModel *models READ models CONSTANT)
    Q_PROPERTY(bool hasModels READ hasModels NOTIFY modelsChanged)
    Q_PROPERTY(bool isModelArriving READ isModelArriving NOTIFY modelsChanged)
    Q_PROPERTY(QString modelsProblem READ modelsProblem NOTIFY modelsChanged)
    Q_PROPERTY(bool hasLanguageModels READ hasLanguageModels NOTIFY languageModelsChanged)
    Q_PROPERTY(QStringList languageModelNames READ languageModelNames NOTIFY languageModelsChanged)
    Q_PROPERTY(int languageModelRow READ languageModelRow NOTIFY languageModelsChanged)
    Q_PROPERTY(QString languageModelNote READ languageModelNote NOTIFY languageModelsChanged)
    Q_PROPERTY(bool isAddressAsked READ isAddressAsked NOTIFY languageModelsChanged)
    Q_PROPERTY(QString languageModelProblem READ languageModelProblem NOTIFY languageModelsChanged)
    Q_PROPERTY(velmo::SpeechTrial *trial READ trial CONSTANT)

public:
    /// Whom the view works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        Preferences &preferences;
        PreferenceWatch &watch;
        ServiceStatusClient &client;
        ServiceWatch &service;
        SpeechTrial &trial;
        const Calendar &calendar;
    };

    explicit SpeechView(const Collaborators &collaborators);

    [[nodiscard]] bool isShown() const { return m_look != nullptr; }
    void setShown(bool isShown);

    // The service

    [[nodiscard]] QString address() const;
    /// Nothing is known yet.
    [[nodiscard]] bool isAsking() const;
    [[nodiscard]] bool isAnswering() const;
    [[nodiscard]] bool isSilent() const;
    /// "Running since 20:18"
    [[nodiscard]] QString standing() const;
    /// How to start it, as styled text; empty where there is nothing to do about it.
    [[nodiscard]] QString remedy() const;

    // What it understands; empty where that is not known.

    [[nodiscard]] QString engine() const;
    [[nodiscard]] QString understood() const;
    /// The selected ones.
    [[nodiscard]] RowModel<SpokenLanguage> *languages() { return &m_languages; }
    /// Names those that are not understood, and what to do.
    [[nodiscard]] QString languagesProblem() const;

    // Its models

    [[nodiscard]] RowModel<SpeechModelRow> *models() { return &m_models; }
    [[nodiscard]] bool hasModels() const { return !m_models.rows().isEmpty(); }
    /// One at a time.
    [[nodiscard]] bool isModelArriving() const { return m_speechModels.download.has_value(); }
    [[nodiscard]] QString modelsProblem() const;
    Q_INVOKABLE void getModel(const QString &name) { changeModel(ModelWish::Get, name); }
    Q_INVOKABLE void cancelModel(const QString &name) { changeModel(ModelWish::Cancel, name); }
    Q_INVOKABLE void useModel(const QString &name) { changeModel(ModelWish::Use, name); }

    // The language model

    [[nodiscard]] bool hasLanguageModels() const { return m_languageModels.has_value(); }
    /// None, those found on this machine, the one in use where it is another, and "Another Address…".
    [[nodiscard]] QStringList languageModelNames() const;
    [[nodiscard]] int languageModelRow() const;
    [[nodiscard]] QString languageModelNote() const;
    /// Whether the person is about to give an address.
    [[nodiscard]] bool isAddressAsked() const { return m_isAddressAsked; }
    [[nodiscard]] const QString &languageModelProblem() const { return m_languageModelProblem; }
    Q_INVOKABLE void chooseLanguageModel(qsizetype row);
    /// What the person typed; without a model the first one there is used.
    Q_INVOKABLE void useLanguageModelAt(const QString &address, const QString &model);

    [[nodiscard]] SpeechTrial *trial() { return &m_with.trial; }

Q_SIGNALS:
    void isShownChanged();
    void serviceChanged();
    void languagesChanged();
    void modelsChanged();
    void languageModelsChanged();

private:
    /// A choice of the picker.
    struct LanguageModelRow {
        QString name;
        LanguageModel model;
    };

    void follow();
    void loadLanguages();
    void loadModels();
    void forgetModels();
    void changeModel(ModelWish wish, const QString &name);
    void showModels(const SpeechModels &models);
    void showLanguageModels(const std::optional<LanguageModels> &models);
    void use(const LanguageModel &model);
    [[nodiscard]] SpeechModelRow rowOf(const SpeechModel &model) const;
    [[nodiscard]] QList<LanguageModelRow> languageModelRows() const;
    [[nodiscard]] QString timeOf(Date moment) const;
    template <class Take>
    [[nodiscard]] auto unlessOvertaken(Take take);

    Collaborators m_with;
    LanguageChoice m_choice;
    RowModel<SpokenLanguage> m_languages;
    SpeechModels m_speechModels;
    RowModel<SpeechModelRow> m_models;
    QString m_modelsProblem; ///< Of the last change.
    std::optional<LanguageModels> m_languageModels;
    QString m_languageModelProblem;
    bool m_isAddressAsked = false;
    int m_changes = 0; ///< Made here; what was asked before the last one is old.
    std::unique_ptr<ServiceWatch::Look> m_look;
    Lifetime m_lifetime;
};

} // namespace velmo
