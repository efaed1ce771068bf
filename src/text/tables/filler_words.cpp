#include "text/tables/filler_words.h"

#include <array>

namespace velmo {

namespace {

constexpr std::array kUniversalHesitations = {QStringView(u"hm"), QStringView(u"hmm"), QStringView(u"mm")};

constexpr QStringView kEnglish[] = {
    u"um", u"uh", u"umm", u"uhh", u"er", u"err", u"ah", u"ahh", u"hmm", u"hm",
};

constexpr QStringView kSwedish[] = {
    u"öh",      u"öhm",      u"äh",          u"ähm",           u"eh",          u"ehm",
    u"liksom",  u"typ",      u"asså",        u"alltså",        u"ba",          u"liksom ba",
    u"typ som", u"asså typ", u"så att säga", u"på något sätt", u"på nåt sätt",
};

constexpr QStringView kNorwegian[] = {
    u"øh", u"øhm", u"eh", u"ehm", u"liksom", u"altså", u"ass", u"ba", u"lissom", u"holdt jeg på å si",
};

constexpr QStringView kNynorsk[] = {
    u"øh", u"øhm", u"eh", u"ehm", u"liksom", u"altså", u"ass", u"ba", u"lissom", u"heldt eg på å seie",
};

constexpr QStringView kDanish[] = {
    u"øh", u"øhm", u"eh", u"ehm", u"ups", u"ligesom", u"altså", u"sådan", u"på en måde",
};

constexpr QStringView kFinnish[] = {
    u"öö",        u"ää",          u"mm",       u"tota",      u"totanoin", u"tuota",
    u"niinku",    u"silleen",     u"jotenkin", u"tavallaan", u"siis",     u"niinku silleen",
    u"tota noin", u"siis niinku", u"tai siis", u"no siis",   u"joo siis",
};

constexpr QStringView kIcelandic[] = {
    u"öö",    u"ææ",         u"eh",         u"ehm",      u"úff",    u"eins og", u"alveg eins og",
    u"svona", u"nákvæmlega", u"bara svona", u"þú veist", u"veistu", u"sko",     u"jæja",
};

// "nb" has no row: a Norwegian who dictates in Bokmål is offered "no".
constexpr LanguageFillers kFillersByLang[] = {
    {u"en", kEnglish}, {u"sv", kSwedish}, {u"no", kNorwegian}, {u"nn", kNynorsk},
    {u"da", kDanish},  {u"fi", kFinnish}, {u"is", kIcelandic},
};

} // namespace

std::span<const QStringView> universalHesitations() {
    return kUniversalHesitations;
}

std::span<const LanguageFillers> fillersByLang() {
    return kFillersByLang;
}

} // namespace velmo
