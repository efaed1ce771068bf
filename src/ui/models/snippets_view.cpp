#include "ui/models/snippets_view.h"

#include "base/collation.h"
#include "service/sync/list_pushes.h"
#include "service/wire/session_interfaces.h"
#include "store/preference_watch.h"
#include "store/snippet_list.h"
#include "ui/models/undo_offer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// As much as the widest row can show.
constexpr qsizetype kPreviewLength = 400;

} // namespace

QString SnippetRow::preview() const {
    return snippet.expansion.left(kPreviewLength).replace(u'\n', u" ⏎ "_s);
}

SnippetsView::SnippetsView(const ListPage &page) : m_page(page) {
    m_page.watch.follow(storageKey, this, [this] { load(); });
    load();
}

SnippetsView::~SnippetsView() = default;

QString SnippetsView::countText() const {
    return tr("%1 snippets").arg(m_snippets.size());
}

QString SnippetsView::emptyText() const {
    return m_searchText.isEmpty() ? tr("No snippets yet") : tr("No matches");
}

void SnippetsView::setSearchText(const QString &text) {
    if (m_searchText == text)
        return;
    m_searchText = text;
    filter();
    Q_EMIT searchTextChanged();
}

void SnippetsView::openAddSheet() {
    openSheet(std::nullopt);
}

void SnippetsView::openEditSheet(qsizetype row) {
    if (row >= 0 && row < m_filteredSnippets.rows().size())
        openSheet(m_filteredSnippets.rows()[row].snippet);
}

void SnippetsView::removeRow(qsizetype row) {
    if (row >= 0 && row < m_filteredSnippets.rows().size())
        remove(SnippetEntry(m_filteredSnippets.rows()[row].snippet));
}

void SnippetsView::add(const QString &trigger, const QString &expansion) {
    addSnippet(m_page.preferences, trigger, expansion);
    load();
    push();
}

void SnippetsView::edit(const SnippetEntry &snippet, const QString &trigger, const QString &expansion) {
    if (!editSnippet(m_page.preferences, snippet, trigger, expansion))
        return;
    load();
    push();
}

void SnippetsView::remove(const SnippetEntry &snippet) {
    const qsizetype place = m_snippets.indexOf(snippet);
    removeSnippet(m_page.preferences, snippet);
    load();
    push();
    m_page.undoOffer.offer(tr("“%1” removed").arg(snippet.trigger),
                           m_lifetime.guard([this, snippet, place] { restore(snippet, place); }));
}

void SnippetsView::restore(const SnippetEntry &snippet, qsizetype place) {
    restoreSnippet(m_page.preferences, snippet, place);
    load();
    push();
}

void SnippetsView::load() {
    QList<SnippetEntry> stored = velmo::snippets(m_page.preferences);
    if (stored == m_snippets)
        return;
    m_snippets = std::move(stored);
    m_snippetsInOrder = m_snippets;
    std::stable_sort(m_snippetsInOrder.begin(), m_snippetsInOrder.end(),
                     [&](const SnippetEntry &left, const SnippetEntry &right) {
                         return m_page.collation.precedes(left.trigger, right.trigger);
                     });
    filter();
    if (m_sheet)
        m_sheet->setExistingTriggers(triggers());
    Q_EMIT snippetsChanged();
}

void SnippetsView::filter() {
    CollationSearch search(m_page.collation, m_searchText);
    QList<SnippetRow> found;
    for (const SnippetEntry &snippet : std::as_const(m_snippetsInOrder)) {
        if (search.isPartOf(snippet.trigger) || search.isPartOf(snippet.expansion))
            found.append({snippet});
    }
    m_filteredSnippets.setRows(found);
}

void SnippetsView::push() {
    if (m_page.account.isLoggedIn())
        m_page.pushes.pushSnippets();
}

void SnippetsView::openSheet(const std::optional<SnippetEntry> &snippet) {
    m_editingSnippet = snippet;
    m_sheet.reset(
        new SnippetEditorSheet(snippet, triggers(), [this](const QString &trigger, const QString &expansion) {
            saveFromSheet(trigger, expansion);
        }));
    connect(m_sheet.get(), &SnippetEditorSheet::closed, this, &SnippetsView::closeSheet);
    Q_EMIT sheetChanged();
}

void SnippetsView::closeSheet() {
    m_sheet.reset();
    m_editingSnippet.reset();
    Q_EMIT sheetChanged();
}

void SnippetsView::saveFromSheet(const QString &trigger, const QString &expansion) {
    if (m_editingSnippet)
        edit(SnippetEntry(*m_editingSnippet), trigger, expansion);
    else
        add(trigger, expansion);
}

QStringList SnippetsView::triggers() const {
    QStringList triggers;
    for (const SnippetEntry &snippet : m_snippets)
        triggers.append(snippet.trigger);
    return triggers;
}

} // namespace velmo
