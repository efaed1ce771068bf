#pragma once

#include "base/lifetime.h"
#include "store/preference_keys.h"
#include "store/snippet_form.h"
#include "ui/models/list_page.h"
#include "ui/models/row_model.h"
#include "ui/models/snippet_editor_sheet.h"

#include <QtQml/qqmlregistration.h>
#include <memory>
#include <utility>

namespace velmo {

/// A snippet in the list. It is known by its texts: a synchronisation renews the identifiers of all of them.
struct SnippetRow {
    Q_GADGET
    Q_PROPERTY(QString trigger READ trigger)
    Q_PROPERTY(QString preview READ preview)

public:
    SnippetEntry snippet;

    [[nodiscard]] const QString &trigger() const { return snippet.trigger; }
    /// The expansion in one line, with its line breaks as signs.
    [[nodiscard]] QString preview() const;

    [[nodiscard]] std::pair<QString, QString> key() const { return {snippet.trigger, snippet.expansion}; }
    bool operator==(const SnippetRow &) const = default;
};

/// The snippets page: a list that can be searched, added to, edited and removed from, and the sheet in which a snippet
/// is written. Every change applies to the list as it is stored at that moment and is then pushed to the account; what
/// another page, process or a synchronisation changes appears by itself. Main thread.
class SnippetsView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QString countText READ countText NOTIFY snippetsChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY searchTextChanged)
    Q_PROPERTY(QAbstractItemModel *filteredSnippets READ filteredSnippets CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(velmo::SnippetEditorSheet *sheet READ sheet NOTIFY sheetChanged)

public:
    static constexpr QLatin1StringView storageKey = keys::snippets;

    explicit SnippetsView(const ListPage &page);
    ~SnippetsView() override;

    /// In stored order.
    [[nodiscard]] const QList<SnippetEntry> &snippets() const { return m_snippets; }
    /// How many there are, also while a search shows fewer.
    [[nodiscard]] QString countText() const;
    /// What stands where no snippets are shown.
    [[nodiscard]] QString emptyText() const;

    /// The snippets whose trigger or expansion contains the search text, by their triggers in the order of the locale;
    /// those of equal triggers in stored order.
    [[nodiscard]] RowModel<SnippetRow> *filteredSnippets() { return &m_filteredSnippets; }

    [[nodiscard]] const QString &searchText() const { return m_searchText; }
    void setSearchText(const QString &text);

    /// The open sheet, or null.
    [[nodiscard]] SnippetEditorSheet *sheet() const { return m_sheet.get(); }

    Q_INVOKABLE void openAddSheet();
    /// Opens the sheet for the snippet in that row of the filtered list.
    Q_INVOKABLE void openEditSheet(qsizetype row);
    /// Removes the snippet in that row of the filtered list.
    Q_INVOKABLE void removeRow(qsizetype row);

    void add(const QString &trigger, const QString &expansion);
    void edit(const SnippetEntry &snippet, const QString &trigger, const QString &expansion);
    /// Also offers it back for a few seconds.
    void remove(const SnippetEntry &snippet);

Q_SIGNALS:
    void snippetsChanged();
    void searchTextChanged();
    void sheetChanged();

private:
    /// A view may still be in a handler of a sheet that closes.
    struct DeleteLater {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    void restore(const SnippetEntry &snippet, qsizetype place);
    void load();
    void filter();
    void push();
    void openSheet(const std::optional<SnippetEntry> &snippet);
    void closeSheet();
    void saveFromSheet(const QString &trigger, const QString &expansion);
    [[nodiscard]] QStringList triggers() const;

    ListPage m_page;
    QList<SnippetEntry> m_snippets;
    QList<SnippetEntry> m_snippetsInOrder;
    QString m_searchText;
    std::optional<SnippetEntry> m_editingSnippet; ///< None while one is added.
    std::unique_ptr<SnippetEditorSheet, DeleteLater> m_sheet;
    RowModel<SnippetRow> m_filteredSnippets;
    Lifetime m_lifetime;
};

} // namespace velmo
