#include "ui/models/dictionary_view.h"

#include "list_page_fixture.h"

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

namespace velmo {

class DictionaryViewTest : public testing::ListPageTest {
protected:
    void store(const char *text) { preferences.set(keys::dictionary, QString::fromUtf8(text)); }
    [[nodiscard]] static QStringList shown(DictionaryView &view) {
        QStringList words;
        for (const WordRow &row : view.filteredWords()->rows())
            words.append(row.word);
        return words;
    }
    [[nodiscard]] QString stored() const { return preferences.string(keys::dictionary).value_or(QString()); }
};

TEST_F(DictionaryViewTest, ShowsWhatIsStoredAndPassesOverWhatIsNoWord) {
    const std::tuple<const char *, const char *, QStringList> rows[] = {
        {"in stored order", R"([{"word":"Sjur"},{"word":"Equinor","seen":3}])", {u"Sjur"_s, u"Equinor"_s}},
        {"a word that is a number", R"([{"word":4},{},{"word":"fjord"}])", {u"fjord"_s}},
        {"an element that is no object", R"([{"word":"fjord"},"Oslo"])", {}},
        {"an object", R"({"word":"fjord"})", {}},
        {"no JSON", R"([{"word":"fjord")", {}},
    };
    for (const auto &[name, text, expected] : rows) {
        store(text);
        EXPECT_EQ(DictionaryView(page).words(), expected) << name;
        EXPECT_EQ(stored(), QString::fromUtf8(text)) << name;
    }
}

TEST_F(DictionaryViewTest, AddsTrimmedWordsOnceAndPushesThem) {
    DictionaryView view(page);
    const std::tuple<const char *, QString, QString, QStringList> rows[] = {
        {"with blanks around", u" \t\u00a0Bodø "_s, QString(), {u"Bodø"_s}},
        {"again", u"Bodø"_s, u"Bodø"_s, {u"Bodø"_s}},
        {"in another case", u"bodø"_s, QString(), {u"Bodø"_s, u"bodø"_s}},
        {"nothing", QString(), QString(), {u"Bodø"_s, u"bodø"_s}},
        {"blanks", u" \t"_s, u" \t"_s, {u"Bodø"_s, u"bodø"_s}},
    };
    for (const auto &[name, typed, left, expected] : rows) {
        view.setNewWord(typed);
        view.addWord();
        EXPECT_EQ(view.words(), expected) << name;
        EXPECT_EQ(view.newWord(), left) << name;
    }
    EXPECT_EQ(stored(), uR"([{"word":"Bodø"},{"word":"bodø"}])"_s);
    EXPECT_EQ(pushes, QStringList({u"dictionary"_s, u"dictionary"_s}));
}

TEST_F(DictionaryViewTest, RemovesEveryCopyAndPushesOnlyForAnAccount) {
    store(R"([{"word":"Oslo"},{"word":"fjord"},{"word":"oslo"},{"word":"Oslo"}])");
    loggedIn = false;
    DictionaryView view(page);
    view.removeWord(u"Oslo"_s);
    EXPECT_EQ(stored(), uR"([{"word":"fjord"},{"word":"oslo"}])"_s);
    EXPECT_TRUE(pushes.isEmpty());
}

TEST_F(DictionaryViewTest, GivesARemovedWordBackAtItsPlace) {
    store(R"([{"word":"Oslo"},{"word":"fjord"},{"word":"Bodø"}])");
    DictionaryView view(page);
    view.removeWord(u"fjord"_s);
    view.setNewWord(u"ny"_s);
    view.addWord();
    undoOffer.undo();
    EXPECT_EQ(stored(), uR"([{"word":"Oslo"},{"word":"fjord"},{"word":"Bodø"},{"word":"ny"}])"_s);
    EXPECT_EQ(pushes.size(), 3);

    view.removeWord(u"ny"_s);
    store(R"([{"word":"ny"}])"); // elsewhere
    undoOffer.undo();
    EXPECT_EQ(stored(), uR"([{"word":"ny"}])"_s);
}

TEST_F(DictionaryViewTest, ChangesTheListAsItIsStoredNow) {
    store(R"([{"word":"Oslo"},{"word":"fjord"}])");
    DictionaryView view(page);
    store(R"([{"word":"Oslo"},{"word":"Bergen"}])"); // elsewhere, and the page has not heard of it yet
    view.setNewWord(u"Bodø"_s);
    view.addWord();
    view.removeWord(u"Oslo"_s);
    EXPECT_EQ(stored(), uR"([{"word":"Bergen"},{"word":"Bodø"}])"_s);
    EXPECT_EQ(view.words(), QStringList({u"Bergen"_s, u"Bodø"_s}));
}

TEST_F(DictionaryViewTest, FindsWithoutRegardToCaseAndSortsByCodePoints) {
    store(R"([{"word":"oslo"},{"word":"Åsgård"},{"word":"Oslo"},{"word":"bro"}])");
    DictionaryView view(page);
    EXPECT_EQ(shown(view), QStringList({u"Oslo"_s, u"bro"_s, u"oslo"_s, u"Åsgård"_s}));
    testing::RowLog log(*view.filteredWords());

    view.setSearchText(u"OSL"_s);
    EXPECT_EQ(shown(view), QStringList({u"Oslo"_s, u"oslo"_s}));
    EXPECT_THAT(log.take(), ElementsAre(u"-1..1"_s, u"-2..2"_s));
    view.setSearchText(u" "_s);
    EXPECT_EQ(view.filteredWords()->rowCount(), 0);
    view.setSearchText(QString());
    EXPECT_THAT(log.take(), ElementsAre(u"-0..1"_s, u"+0..3"_s));
    EXPECT_EQ(view.countText(), u"4 words"_s);
}

TEST_F(DictionaryViewTest, FollowsChangesMadeElsewhere) {
    DictionaryView view(page);
    int changes = 0;
    QObject::connect(&view, &DictionaryView::wordsChanged, [&] { ++changes; });
    testing::RowLog log(*view.filteredWords());
    storeElsewhere(keys::dictionary, uR"([{"word":"Oslo"},{"word":"fjord"}])"_s);
    storeElsewhere(keys::dictionary, uR"([{"word":"Bergen"},{"word":"Oslo"},{"word":"fjord"}])"_s);
    storeElsewhere(keys::dictionary, uR"([{"word":"Bergen"}, {"word":"Oslo"}, {"word":"fjord"}])"_s);
    EXPECT_THAT(log.take(), ElementsAre(u"+0..1"_s, u"+0..0"_s));
    EXPECT_EQ(changes, 2);
}

TEST_F(DictionaryViewTest, GroupsLearnedWordsByLanguage) {
    preferences.set(keys::learnedWords, uR"({"is":["hæ"],"da":["hygge","øl"]})"_s);
    DictionaryView view(page);
    EXPECT_THAT(view.learnedWords(), ElementsAre(LearnedWordGroup{u"DANISH"_s, {u"hygge"_s, u"øl"_s}},
                                                 LearnedWordGroup{u"IS"_s, {u"hæ"_s}}));
    storeElsewhere(keys::learnedWords, uR"({"da":["hygge"],"sv":"fika"})"_s);
    EXPECT_TRUE(view.learnedWords().isEmpty());
}

} // namespace velmo
