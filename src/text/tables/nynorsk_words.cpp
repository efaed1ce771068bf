#include "text/tables/nynorsk_words.h"

namespace velmo {

namespace {

constexpr NynorskWord kNynorskWords[] = {
    {u"ikkje", u"ikke"},
    {u"kvifor", u"hvorfor"},
    {u"noko", u"noe"},
    {u"nokon", u"noen"},
    {u"meir", u"mer"},
    {u"korleis", u"hvordan"},
    {u"kvar", u"hvor"},
    {u"kvart", u"hvert"},
    {u"deira", u"deres"},
    {u"sjølv", u"selv"},
    {u"framleis", u"fremdeles"},
    {u"eg", u"jeg"},
    {u"kome", u"komme"},
    {u"vore", u"vært"},
    {u"kyrkja", u"kirken"},
    {u"hoppar", u"hopper"},
    {u"kva", u"hva"},
    {u"kjøtkaker", u"kjøttkaker"},
    {u"kjøtkake", u"kjøttkake"},
    {u"heiter", u"heter"},
    {u"fekk", u"fikk"},
    {u"gjekk", u"gikk"},
    {u"snakka", u"snakket"},
    {u"hugsar", u"husker"},
    {u"ynskjer", u"ønsker"},
    {u"vert", u"blir"},
    {u"byrjar", u"begynner"},
};

} // namespace

std::span<const NynorskWord> nynorskWords() {
    return kNynorskWords;
}

} // namespace velmo
