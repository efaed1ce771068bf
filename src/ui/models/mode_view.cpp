#include "ui/models/mode_view.h"

#include "store/custom_modes.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "ui/models/undo_offer.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

/// Of the modes the one that is used: a custom mode goes before a built-in one of the same identifier, and an
/// identifier of no mode works as the default does.
qsizetype chosenAmong(const QList<Mode> &modes, const QString &id) {
    const auto places = [&](bool isBuiltIn, QStringView wanted) {
        return std::ranges::find_if(
            modes, [&](const Mode &mode) { return mode.id == wanted && mode.isBuiltIn == isBuiltIn; });
    };
    auto chosen = places(false, id);
    if (chosen == modes.end())
        chosen = places(true, id);
    return chosen == modes.end() ? 0 : chosen - modes.begin();
}

ModeCard cardOf(const Mode &mode, bool isChosen) {
    return {mode.id, mode.name, mode.icon, mode.isBuiltIn ? mode.description : mode.systemPrompt.simplified(),
            isChosen};
}

} // namespace

ModeView::ModeView(Preferences &preferences, PreferenceWatch &watch, ServiceWatch &service,
                   UndoOffer &undoOffer)
    : m_preferences(preferences), m_service(service), m_undoOffer(undoOffer), m_settings(preferences) {
    connect(&m_service, &ServiceWatch::changed, this, &ModeView::modesChanged);
    for (const QLatin1StringView key : {keys::selectedMode, keys::smartFormatting, keys::customModes})
        watch.follow(key, this, [this] { load(); });
    load();
}

ModeView::~ModeView() = default;

void ModeView::setSmartFormatting(bool isOn) {
    m_settings.setSmartFormatting(isOn);
    load();
}

bool ModeView::isProcessing() const {
    return m_smartFormatting && !m_service.lacksLanguageModel();
}

QString ModeView::caption() const {
    return isProcessing() ? tr("AI processing enabled") : tr("Base cleanup only");
}

QString ModeView::problem() const {
    return m_smartFormatting && m_service.lacksLanguageModel()
               ? tr("The speech service has no language model, so no mode is applied.")
               : QString();
}

void ModeView::setShown(bool isShown) {
    if (isShown == this->isShown())
        return;
    m_look = isShown ? m_service.look() : nullptr;
    Q_EMIT isShownChanged();
}

void ModeView::appear() {
    m_settings.replaceRetiredSelection();
    load();
}

void ModeView::choose(const QString &id) {
    m_settings.choose(id);
    load();
}

void ModeView::openNewSheet() {
    openSheet(ModeEditorSheet::newDraft());
}

void ModeView::openEditSheet(qsizetype row) {
    if (const auto mode = customModeIn(row))
        openSheet({mode->id, mode->name, mode->systemPrompt, mode->icon});
}

void ModeView::removeRow(qsizetype row) {
    const auto mode = customModeIn(row);
    if (!mode)
        return;
    const bool wasChosen = m_customModes.rows()[row].isChosen;
    m_settings.remove(mode->id);
    load();
    m_undoOffer.offer(
        tr("“%1” removed").arg(mode->name),
        m_lifetime.guard([this, mode = *mode, row, wasChosen] { restore(mode, row, wasChosen); }));
}

void ModeView::restore(const CustomMode &mode, qsizetype place, bool wasChosen) {
    restoreCustomMode(m_preferences, mode, place);
    if (wasChosen)
        m_settings.choose(mode.id);
    load();
}

/// As it is stored; nothing when it is not any more.
std::optional<CustomMode> ModeView::customModeIn(qsizetype row) const {
    if (row < 0 || row >= m_customModes.rows().size())
        return std::nullopt;
    const QList<CustomMode> stored = velmo::customModes(m_preferences);
    const auto mode = std::ranges::find(stored, m_customModes.rows()[row].id, &CustomMode::id);
    return mode == stored.end() ? std::nullopt : std::optional(*mode);
}

void ModeView::load() {
    const QList<Mode> modes = allModes(m_preferences);
    const qsizetype chosen = chosenAmong(modes, selectedModeId(m_preferences));
    QList<ModeCard> builtIn;
    QList<ModeCard> custom;
    for (qsizetype at = 0; at < modes.size(); ++at)
        (modes[at].isBuiltIn ? builtIn : custom).append(cardOf(modes[at], at == chosen));
    const bool isOn = velmo::smartFormatting(m_preferences);
    if (isOn == m_smartFormatting && builtIn == m_builtInModes.rows() && custom == m_customModes.rows())
        return;
    m_smartFormatting = isOn;
    m_builtInModes.setRows(builtIn);
    m_customModes.setRows(custom);
    Q_EMIT modesChanged();
}

void ModeView::openSheet(const ModeDraft &draft) {
    m_sheet.reset(new ModeEditorSheet(draft, [this](const ModeDraft &confirmed) {
        m_settings.confirm(confirmed);
        load();
    }));
    connect(m_sheet.get(), &ModeEditorSheet::closed, this, &ModeView::closeSheet);
    Q_EMIT sheetChanged();
}

void ModeView::closeSheet() {
    m_closedSheet = std::move(m_sheet);
    Q_EMIT sheetChanged();
}

} // namespace velmo
