#include "ui/models/speech_view.h"

#include "base/calendar.h"
#include "service/status/service_status_client.h"
#include "ui/models/speech_texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

using Standing = ServiceWatch::Standing;

SpeechView::SpeechView(const Collaborators &collaborators)
    : m_with(collaborators), m_choice(m_with.preferences, m_with.watch) {
    connect(&m_with.service, &ServiceWatch::changed, this, &SpeechView::follow);
    connect(&m_with.service, &ServiceWatch::looked, this, &SpeechView::loadModels);
    for (const auto change :
         {&LanguageChoice::primaryLanguageChanged, &LanguageChoice::selectedLanguagesChanged})
        connect(&m_choice, change, this, &SpeechView::loadLanguages);
    loadLanguages();
}

void SpeechView::setShown(bool isShown) {
    if (isShown == this->isShown())
        return;
    m_look = isShown ? m_with.service.look() : nullptr;
    Q_EMIT isShownChanged();
}

void SpeechView::follow() {
    loadLanguages();
    if (!m_with.service.health())
        forgetModels();
    Q_EMIT serviceChanged();
}

// The service

QString SpeechView::address() const {
    return m_with.service.address();
}

bool SpeechView::isAsking() const {
    return m_with.service.standing() == Standing::Unknown;
}

bool SpeechView::isAnswering() const {
    return m_with.service.standing() == Standing::Answers && m_with.service.failure().isEmpty();
}

bool SpeechView::isSilent() const {
    return m_with.service.standing() == Standing::Silent;
}

QString SpeechView::standing() const {
    const ServiceWatch &service = m_with.service;
    const auto since = service.since();
    switch (service.standing()) {
    case Standing::Unknown:
        return tr("Asking…");
    case Standing::Silent:
        return since ? tr("Has not answered since %1").arg(timeOf(*since)) : service.failure();
    case Standing::Answers:
        break;
    }
    if (!service.failure().isEmpty())
        return service.failure();
    return since ? tr("Running since %1").arg(timeOf(*since)) : tr("Answers");
}

QString SpeechView::timeOf(Date moment) const {
    const QString time = m_with.calendar.timeOfDay(moment);
    const bool isToday = m_with.calendar.startOfDay(moment) == m_with.calendar.startOfDay(m_with.queue.now());
    return isToday ? time : tr("%1, %2").arg(m_with.calendar.mediumDate(moment), time);
}

QString SpeechView::remedy() const {
    return speech_texts::remedyForSilence(m_with.service);
}

// What it understands

QString SpeechView::engine() const {
    const auto &health = m_with.service.health();
    return health ? speech_texts::engine(*health) : QString();
}

QString SpeechView::understood() const {
    const auto &health = m_with.service.health();
    if (!health || health->engine.isEmpty())
        return {};
    return health->languages ? speech_texts::understood(*health->languages)
                             : tr("The service does not say which");
}

QString SpeechView::languagesProblem() const {
    const QString problem = speech_texts::languagesProblem(m_choice.selectedLanguages(), m_with.service);
    return problem.isEmpty()
               ? QString()
               : tr("%1 Use a model for more languages, or leave them out in Settings.").arg(problem);
}

void SpeechView::loadLanguages() {
    const auto &health = m_with.service.health();
    QList<SpokenLanguage> rows;
    if (health && health->languages) {
        const QStringList &selected = m_choice.selectedLanguages();
        const QStringList missing = speech_texts::notUnderstood(selected, m_with.service);
        for (const Language &language : LanguageChoice::languages()) {
            if (selected.contains(language.code))
                rows.append({language.code, language.name, !missing.contains(language.code)});
        }
    }
    m_languages.setRows(rows);
    Q_EMIT languagesChanged();
}

// Its models

/// An answer to what was asked before the last change made here would show the time before it.
template <class Take>
auto SpeechView::unlessOvertaken(Take take) {
    return onMain(m_with.queue, m_lifetime, [this, take, changes = m_changes](const auto &answer) {
        if (changes == m_changes)
            take(answer);
    });
}

/// Where the service tells nothing of them, there is nothing to show.
void SpeechView::loadModels() {
    if (!isShown() || !m_with.service.health())
        return;
    m_with.client.models(unlessOvertaken(
        [this](const StatusResult<SpeechModels> &answer) { showModels(answer.value_or(SpeechModels())); }));
    m_with.client.languageModels(unlessOvertaken([this](const StatusResult<LanguageModels> &answer) {
        showLanguageModels(answer ? std::optional(*answer) : std::nullopt);
    }));
}

void SpeechView::forgetModels() {
    ++m_changes;
    showModels({});
    showLanguageModels(std::nullopt);
}

void SpeechView::changeModel(ModelWish wish, const QString &name) {
    ++m_changes;
    m_with.client.change(wish, name, unlessOvertaken([this](const StatusResult<SpeechModels> &answer) {
                             m_modelsProblem = answer ? QString() : answer.error().description;
                             showModels(answer.value_or(m_speechModels));
                         }));
}

void SpeechView::showModels(const SpeechModels &models) {
    m_speechModels = models;
    QList<SpeechModelRow> rows;
    for (const SpeechModel &model : m_speechModels.models)
        rows.append(rowOf(model));
    m_models.setRows(rows);
    Q_EMIT modelsChanged();
}

SpeechModelRow SpeechView::rowOf(const SpeechModel &model) const {
    SpeechModelRow row = {model.name, {}, model.isInstalled, model.isInUse, model.page};
    const auto &download = m_speechModels.download;
    row.isArriving = download && download->name == model.name;
    if (row.isArriving) {
        row.details = speech_texts::progress(*download);
        row.arrived = download->bytes > 0
                          ? static_cast<double>(download->received) / static_cast<double>(download->bytes)
                          : 0;
        return row;
    }
    QStringList details = {speech_texts::size(model.bytes), model.languages, model.source};
    if (!model.isInstalled && !model.page.isNull())
        details.append(tr("download its “ggml” file there, then velmo-local-service models import"));
    details.removeAll(QString());
    row.details = details.join(u" · "_s);
    return row;
}

QString SpeechView::modelsProblem() const {
    return m_modelsProblem.isEmpty() ? m_speechModels.failure : m_modelsProblem;
}

// The language model

QList<SpeechView::LanguageModelRow> SpeechView::languageModelRows() const {
    QList<LanguageModelRow> rows = {{tr("None"), {}}};
    if (!m_languageModels)
        return rows;
    for (const LanguageModelHost &host : m_languageModels->found) {
        for (const QString &model : host.models)
            rows.append({tr("%1 by %2").arg(model, host.name), {host.address, model}});
    }
    const LanguageModel &chosen = m_languageModels->chosen;
    if (std::ranges::find(rows, chosen, &LanguageModelRow::model) == rows.end())
        rows.append(
            {chosen.model.isEmpty() ? chosen.address : tr("%1 at %2").arg(chosen.model, chosen.address),
             chosen});
    return rows;
}

QStringList SpeechView::languageModelNames() const {
    QStringList names;
    for (const LanguageModelRow &row : languageModelRows())
        names.append(row.name);
    names.append(tr("Another Address…"));
    return names;
}

int SpeechView::languageModelRow() const {
    const QList<LanguageModelRow> rows = languageModelRows();
    if (m_isAddressAsked)
        return static_cast<int>(rows.size());
    const LanguageModel chosen = m_languageModels ? m_languageModels->chosen : LanguageModel();
    return static_cast<int>(std::ranges::find(rows, chosen, &LanguageModelRow::model) - rows.begin());
}

QString SpeechView::languageModelNote() const {
    if (!m_languageModels || !m_languageModels->chosen.address.isEmpty())
        return tr("Modes send your text to it");
    QStringList found;
    for (const LanguageModelHost &host : m_languageModels->found)
        found.append(host.name);
    return found.isEmpty() ? tr("Without one, modes are not applied")
                           : tr("Without one, modes are not applied. Found on this machine: %1")
                                 .arg(speech_texts::listed(found));
}

void SpeechView::chooseLanguageModel(qsizetype row) {
    const QList<LanguageModelRow> rows = languageModelRows();
    m_isAddressAsked = row == rows.size();
    if (row >= 0 && row < rows.size())
        use(rows[row].model);
    Q_EMIT languageModelsChanged();
}

void SpeechView::useLanguageModelAt(const QString &address, const QString &model) {
    if (!address.trimmed().isEmpty())
        use({address.trimmed(), model.trimmed()});
}

void SpeechView::use(const LanguageModel &model) {
    ++m_changes;
    m_with.client.use(model, unlessOvertaken([this](const StatusResult<LanguageModels> &answer) {
                          m_languageModelProblem = answer ? QString() : answer.error().description;
                          m_isAddressAsked = m_isAddressAsked && !answer;
                          showLanguageModels(answer ? std::optional(*answer) : m_languageModels);
                      }));
}

void SpeechView::showLanguageModels(const std::optional<LanguageModels> &models) {
    m_languageModels = models;
    Q_EMIT languageModelsChanged();
}

} // namespace velmo
