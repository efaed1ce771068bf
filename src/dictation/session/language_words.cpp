#include "dictation/session/language_words.h"

#include <QHash>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr QStringView kDanish[] = {
    u"Søren",         u"Mærsk",        u"Bjørn",     u"Jørgen",      u"Kjeld",
    u"Svend",         u"Ørsted",       u"Grundtvig", u"Thøger",      u"Åse",
    u"Røde",          u"København",    u"Aarhus",    u"Helsingør",   u"Roskilde",
    u"Odense",        u"Nørrebro",     u"Vesterbro", u"Østerbro",    u"Amager",
    u"Frederiksberg", u"fedt",         u"sindssygt", u"skidegodt",   u"pisseirriterende",
    u"pissehamrende", u"sej",          u"lækker",    u"klaphat",     u"hygge",
    u"hyggelig",      u"smørrebrød",   u"rødgrød",   u"drømmekage",  u"skål",
    u"pissecool",     u"skidegod",     u"hamrende",  u"vanvittig",   u"capper",
    u"ghostede",      u"delulu",       u"wallah",    u"Carlsberg",   u"Vestas",
    u"Coloplast",     u"Novo Nordisk", u"Pandora",   u"Danske Bank",
};

constexpr QStringView kBokmal[] = {
    u"Bjørg",        u"Sjur",       u"Kjell",     u"Sigbjørn",  u"Geirr",     u"Øyvind",  u"Sæther",
    u"Mjøs",         u"Tveit",      u"Kjærgaard", u"Søgaard",   u"Trondheim", u"Tromsø",  u"Stavanger",
    u"Kristiansand", u"Bodø",       u"Lofoten",   u"Trysil",    u"Geilo",     u"Ålesund", u"Røros",
    u"digg",         u"fett",       u"kult",      u"kjip",      u"gira",      u"dritbra", u"dritkul",
    u"dritgøy",      u"dritdårlig", u"sykt",      u"chillern",  u"skulke",    u"stæsj",   u"knallbra",
    u"kjempebra",    u"tøffing",    u"dritkult",  u"skikkelig", u"jævlig",    u"helvete", u"faen",
    u"hooket",       u"stalka",     u"ghostet",   u"paye",      u"jette",     u"Equinor", u"Telenor",
    u"Kongsberg",    u"Statkraft",  u"Yara",
};

constexpr QStringView kSwedish[] = {
    u"Göran",     u"Björn",      u"Kjell",     u"Sköld",      u"Ångström",   u"Sjöberg",     u"Lindqvist",
    u"Eklöf",     u"Nyström",    u"Göteborg",  u"Malmö",      u"Linköping",  u"Norrköping",  u"Jönköping",
    u"Södermalm", u"Djurgården", u"Östermalm", u"Söderström", u"fett",       u"soft",        u"schysst",
    u"najs",      u"gött",       u"skitbra",   u"skitkul",    u"skitsnyggt", u"skitjobbigt", u"asball",
    u"grymt",     u"fika",       u"lagom",     u"mysa",       u"tjena",      u"hejdå",       u"orka",
    u"jättebra",  u"jättekul",   u"jättefin",  u"skitcool",   u"chilla",     u"bonda",       u"digga",
    u"flexa",     u"cringe",     u"Ericsson",  u"Klarna",     u"Spotify",    u"Volvo",       u"IKEA",
};

constexpr QStringView kFinnish[] = {
    u"Väinämöinen", u"Päivi",  u"Mäkinen",   u"Häkkinen",  u"Räikkönen",   u"Helsinki", u"Tampere",
    u"Oulu",        u"Kuopio", u"Rovaniemi", u"Jyväskylä", u"Hämeenlinna", u"Joensuu",  u"Turku",
    u"tsygä",       u"hima",   u"dösä",      u"safka",     u"skidi",       u"jepa",     u"jätkä",
    u"gimma",       u"dorka",  u"spämmää",   u"sähly",     u"tsekkailla",  u"röökii",
};

constexpr QStringView kIcelandic[] = {
    u"Sigríður",       u"Þórður",        u"Guðmundur", u"Björk",      u"Hákon",    u"Ísak",
    u"Ólafur",         u"Jónína",        u"Halldóra",  u"Reykjavík",  u"Akureyri", u"Þingvellir",
    u"Vestmannaeyjar", u"Hafnarfjörður", u"Kópavogur", u"Ísafjörður", u"æði",      u"geggjað",
    u"rosalega",       u"geðveikt",      u"nælansen",  u"fokk",       u"helvítis",
};

constexpr QStringView kNynorsk[] = {
    u"Bjørg",        u"Sjur",       u"Kjell",     u"Sigbjørn",  u"Geirr",     u"Øyvind",   u"Sæther",
    u"Mjøs",         u"Tveit",      u"Kjærgaard", u"Søgaard",   u"Trondheim", u"Tromsø",   u"Stavanger",
    u"Kristiansand", u"Bodø",       u"Lofoten",   u"Trysil",    u"Geilo",     u"Ålesund",  u"Røros",
    u"digg",         u"fett",       u"kult",      u"kjip",      u"gira",      u"dritbra",  u"dritkul",
    u"dritgøy",      u"dritdårleg", u"sykt",      u"skikkeleg", u"jævleg",    u"knallbra", u"kjempebra",
    u"tøffing",      u"Equinor",    u"Telenor",   u"Kongsberg", u"Statkraft", u"Yara",
};

using WordSet = QSet<QString>;

template <std::size_t Count>
WordSet setOf(const QStringView (&words)[Count]) {
    WordSet set;
    for (const QStringView word : words)
        set.insert(word.toString());
    return set;
}

/// Built once, at first use. "no" and "nb" name the same list.
const QHash<QString, WordSet> &lists() {
    static const QHash<QString, WordSet> lists = {
        {u"da"_s, setOf(kDanish)},  {u"nb"_s, setOf(kBokmal)},  {u"no"_s, setOf(kBokmal)},
        {u"sv"_s, setOf(kSwedish)}, {u"fi"_s, setOf(kFinnish)}, {u"is"_s, setOf(kIcelandic)},
        {u"nn"_s, setOf(kNynorsk)},
    };
    return lists;
}

/// Most words of a dictionary are in none of the lists, which one look-up tells.
const WordSet &allWords() {
    static const WordSet words = [] {
        WordSet all;
        for (const WordSet &list : lists())
            all.unite(list);
        return all;
    }();
    return words;
}

} // namespace

bool isListedWord(const QString &composedWord) {
    return allWords().contains(composedWord);
}

bool isListedWord(const QString &composedWord, const QStringList &languages) {
    const auto &all = lists();
    return std::any_of(languages.begin(), languages.end(), [&](const QString &language) {
        const auto list = all.find(language);
        return list != all.end() && list->contains(composedWord);
    });
}

} // namespace velmo
