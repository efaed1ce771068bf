#include "ui/models/snippets_view.h"

#include "list_page_fixture.h"
#include "store/snippet_list.h"

#include <QCoreApplication>
#include <QEvent>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

class SnippetsViewTest : public testing::ListPageTest {
protected:
    void store(const QList<SnippetEntry> &snippets) {
        preferences.set(keys::snippets, serialiseSnippets(snippets));
    }

    /// What is stored, as "trigger=expansion".
    [[nodiscard]] QStringList stored() const { return texts(snippets(preferences)); }

    [[nodiscard]] static QStringList shown(SnippetsView &view) {
        QList<SnippetEntry> snippets;
        for (const SnippetRow &row : view.filteredSnippets()->rows())
            snippets.append(row.snippet);
        return texts(snippets);
    }

    static QStringList texts(const QList<SnippetEntry> &snippets) {
        QStringList texts;
        for (const SnippetEntry &snippet : snippets)
            texts.append(snippet.trigger + u'=' + snippet.expansion);
        return texts;
    }

    const SnippetEntry adr{u"1"_s, u"adr"_s, u"Storgata 1"_s};
    const SnippetEntry sig{u"2"_s, u"sig"_s, u"Vennlig hilsen"_s};
};

TEST_F(SnippetsViewTest, ShowsOnlyListsThatAreWhole) {
    const std::tuple<const char *, QString, QStringList> rows[] = {
        {"whole",
         uR"([ {"trigger":"adr", "expansion":"Storgata 1","id":"1","x":[]} ])"_s,
         {u"adr=Storgata 1"_s}},
        {"a member missing", uR"([{"id":"1","trigger":"a","expansion":"b"},{"id":"2","trigger":"c"}])"_s, {}},
        {"a member of another kind", uR"([{"id":1,"trigger":"a","expansion":"b"}])"_s, {}},
        {"no array", uR"({"id":"1","trigger":"a","expansion":"b"})"_s, {}},
        {"no JSON", u"["_s, {}},
    };
    for (const auto &[name, text, expected] : rows) {
        preferences.set(keys::snippets, text);
        EXPECT_EQ(texts(SnippetsView(page).snippets()), expected) << name;
        EXPECT_EQ(preferences.string(keys::snippets), text) << name;
    }
}

TEST_F(SnippetsViewTest, AddsEditsAndRemovesInTheListAsItIsStoredNow) {
    store({adr, sig});
    SnippetsView view(page);
    store({sig, adr, {u"3"_s, u"ny"_s, u"fra et annet sted"_s}});

    view.edit(adr, u"adresse"_s, u"Storgata 2"_s);
    EXPECT_EQ(snippets(preferences)[1].id, u"1"_s);
    view.add(u"mvh"_s, u"Med vennlig hilsen"_s);
    view.remove(sig);
    EXPECT_EQ(stored(),
              QStringList({u"adresse=Storgata 2"_s, u"ny=fra et annet sted"_s, u"mvh=Med vennlig hilsen"_s}));
    EXPECT_EQ(snippets(preferences).last().id.size(), 36);
    EXPECT_EQ(pushes.size(), 3);

    view.edit({u"9"_s, u"adr"_s, u"som ikke er der"_s}, u"x"_s, u"y"_s);
    EXPECT_EQ(pushes.size(), 3);
    EXPECT_EQ(texts(view.snippets()), stored());
}

TEST_F(SnippetsViewTest, KnowsASnippetWhoseIdentifierASynchronisationRenewed) {
    store({adr, sig});
    SnippetsView view(page);
    view.openEditSheet(0);
    store({{u"7"_s, adr.trigger, adr.expansion}, {u"8"_s, sig.trigger, sig.expansion}});
    view.sheet()->setExpansion(u"Storgata 3"_s);
    view.sheet()->save();
    EXPECT_EQ(stored(), QStringList({u"adr=Storgata 3"_s, u"sig=Vennlig hilsen"_s}));
    view.remove(sig);
    EXPECT_EQ(stored(), QStringList{u"adr=Storgata 3"_s});
}

TEST_F(SnippetsViewTest, OrdersByTheLocaleAndFindsInBothTexts) {
    store({{u"1"_s, u"ærlig"_s, u"E-mail"_s},
           {u"2"_s, u"zebra"_s, u"dyr"_s},
           {u"3"_s, u"MVH"_s, u"en"_s},
           {u"4"_s, u"mvh"_s, u"to"_s}});
    SnippetsView view(page);
    EXPECT_EQ(shown(view), QStringList({u"MVH=en"_s, u"mvh=to"_s, u"zebra=dyr"_s, u"ærlig=E-mail"_s}));
    view.setSearchText(u"MAIL"_s);
    EXPECT_EQ(shown(view), QStringList{u"ærlig=E-mail"_s});
    view.setSearchText(u"mail "_s);
    EXPECT_THAT(shown(view), IsEmpty());
}

TEST_F(SnippetsViewTest, KeepsRowsInPlaceWhenOnlyIdentifiersChange) {
    store({adr, sig});
    SnippetsView view(page);
    testing::RowLog log(*view.filteredSnippets());
    storeElsewhere(keys::snippets, serialiseSnippets({{u"8"_s, adr.trigger, adr.expansion},
                                                      {u"9"_s, u"mvh"_s, u"hei"_s},
                                                      {u"7"_s, sig.trigger, sig.expansion}}));
    EXPECT_THAT(log.take(), ElementsAre(u"+1..1"_s));
    view.removeRow(0);
    EXPECT_EQ(stored(), QStringList({u"mvh=hei"_s, u"sig=Vennlig hilsen"_s}));
}

TEST_F(SnippetsViewTest, SavesFromTheSheetUnlessTheTriggerIsTaken) {
    struct Row {
        const char *name;
        std::optional<qsizetype> edited; // a row of the list below; none: adding
        QString trigger;
        QString expansion;
        QString alert; // about which trigger; null: saved
    };
    const Row rows[] = {
        {"a new one", std::nullopt, u"mvh"_s, u"hei"_s, QString()},
        {"a new one that is there in another case", std::nullopt, u"Adr "_s, u"x"_s, u"Adr"_s},
        {"its own in another case", 0, u"ADR"_s, u"x"_s, QString()},
        {"another's", 0, u"SIG"_s, u"x"_s, u"SIG"_s},
    };
    for (const Row &row : rows) {
        store({adr, sig});
        const QStringList before = stored();
        SnippetsView view(page);
        if (row.edited)
            view.openEditSheet(*row.edited);
        else
            view.openAddSheet();
        SnippetEditorSheet *sheet = view.sheet();
        sheet->setTrigger(row.trigger);
        sheet->setExpansion(row.expansion);
        sheet->save();

        const bool isSaved = row.alert.isNull();
        EXPECT_EQ(view.sheet() == nullptr, isSaved) << row.name;
        EXPECT_EQ(stored() != before, isSaved) << row.name;
        if (!isSaved) {
            EXPECT_EQ(sheet->duplicateMessage(),
                      u"A snippet with trigger \"%1\" already exists."_s.arg(row.alert))
                << row.name;
            EXPECT_EQ(sheet->trigger(), row.trigger) << row.name;
            sheet->dismissDuplicateAlert();
            EXPECT_FALSE(sheet->showDuplicateAlert()) << row.name;
        }
    }
}

TEST_F(SnippetsViewTest, TrimsBlanksFromTheTextsOfTheSheet) {
    SnippetsView view(page);
    view.openAddSheet();
    view.sheet()->setTrigger(u" \tmvh "_s);
    view.sheet()->setExpansion(u" hei\n\u00a0"_s);
    view.sheet()->save();
    EXPECT_EQ(stored(), QStringList{u"mvh=hei\n"_s});
}

TEST_F(SnippetsViewTest, RefusesATriggerThatCameWhileTheSheetWasOpen) {
    SnippetsView view(page);
    view.openAddSheet();
    storeElsewhere(keys::snippets, serialiseSnippets({adr}));
    view.sheet()->setTrigger(u"ADR"_s);
    view.sheet()->setExpansion(u"x"_s);
    view.sheet()->save();
    EXPECT_TRUE(view.sheet()->showDuplicateAlert());
    view.sheet()->cancel();
    EXPECT_EQ(view.sheet(), nullptr);
    EXPECT_EQ(stored(), QStringList{u"adr=Storgata 1"_s});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(SnippetsViewTest, SavesOnlyTextsThatHoldSomething) {
    SnippetEditorSheet sheet(std::nullopt, {}, [](const QString &, const QString &) { FAIL(); });
    for (const auto &[trigger, expansion] : {std::pair(u" \u2003"_s, u"x"_s), std::pair(u"x"_s, u"\t"_s)}) {
        sheet.setTrigger(trigger);
        sheet.setExpansion(expansion);
        EXPECT_FALSE(sheet.canSave());
        sheet.save();
    }
    sheet.setExpansion(u"\n"_s); // a line break is text
    EXPECT_TRUE(sheet.canSave());
}

} // namespace velmo
