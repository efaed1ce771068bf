#include "text/tables/spoken_punctuation.h"

namespace velmo {

namespace {

constexpr QStringView kLine = u"\u2028";
constexpr QStringView kParagraph = u"\u2029";

constexpr SpokenRule kEnglish[] = {
    {u"comma", u","},
    {u"period", u"."},
    {u"full stop", u"."},
    {u"question mark", u"?"},
    {u"exclamation mark", u"!"},
    {u"exclamation point", u"!"},
    {u"colon", u":"},
    {u"semicolon", u";"},
    {u"new line", kLine},
    {u"new paragraph", kParagraph},
    {u"etc", u"etc."},
    {u"etcetera", u"etc."},
};

constexpr SpokenRule kSwedish[] = {
    {u"komma", u","},       {u"punkt", u"."},
    {u"frågetecken", u"?"}, {u"utropstecken", u"!"},
    {u"kolon", u":"},       {u"semikolon", u";"},
    {u"ny rad", kLine},     {u"nytt stycke", kParagraph},
    {u"osv", u"osv."},      {u"och så vidare", u"osv."},
};

constexpr SpokenRule kNorwegian[] = {
    {u"komma", u","},      {u"punktum", u"."},   {u"spørsmålstegn", u"?"},
    {u"utropstegn", u"!"}, {u"ny linje", kLine}, {u"nytt avsnitt", kParagraph},
};

constexpr SpokenRule kNynorsk[] = {
    {u"komma", u","},       {u"punktum", u"."},   {u"spørsmålsteikn", u"?"},
    {u"utropsteikn", u"!"}, {u"ny linje", kLine}, {u"nytt avsnitt", kParagraph},
};

constexpr SpokenRule kDanish[] = {
    {u"komma", u","},      {u"punktum", u"."},   {u"spørgsmålstegn", u"?"},
    {u"udråbstegn", u"!"}, {u"ny linje", kLine}, {u"nyt afsnit", kParagraph},
};

constexpr SpokenRule kFinnish[] = {
    {u"pilkku", u","},      {u"piste", u"."},      {u"kysymysmerkki", u"?"},
    {u"huutomerkki", u"!"}, {u"uusi rivi", kLine}, {u"uusi kappale", kParagraph},
};

constexpr SpokenRule kIcelandic[] = {
    {u"komma", u","},           {u"punktur", u"."},
    {u"spurningarmerki", u"?"}, {u"upphrópunarmerki", u"!"},
    {u"ný lína", kLine},        {u"ný málsgrein", kParagraph},
};

constexpr LanguageRules kSpokenToWrittenRules[] = {
    {u"en", kEnglish}, {u"sv", kSwedish}, {u"no", kNorwegian}, {u"nn", kNynorsk},
    {u"da", kDanish},  {u"fi", kFinnish}, {u"is", kIcelandic},
};

} // namespace

std::span<const LanguageRules> spokenToWrittenRules() {
    return kSpokenToWrittenRules;
}

} // namespace velmo
