#include "text/tables/language_sets.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

constexpr std::array<QStringView, 5> kScandinavian = {u"no", u"nb", u"nn", u"da", u"sv"};
constexpr std::array<QStringView, 3> kNorwegian = {u"no", u"nb", u"nn"};
constexpr std::array<QStringView, 4> kNormalisationTriggers = {u"no", u"nb", u"nn", u"sv"};

template <class Set>
bool contains(const Set &set, QStringView code) {
    return std::find(set.begin(), set.end(), code) != set.end();
}

} // namespace

bool isScandinavian(QStringView code) {
    return contains(kScandinavian, code);
}

bool isNorwegian(QStringView code) {
    return contains(kNorwegian, code);
}

bool mayBeNorwegian(QStringView code) {
    return contains(kNormalisationTriggers, code);
}

} // namespace velmo
