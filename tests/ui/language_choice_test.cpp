#include "ui/models/language_choice.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class LanguageChoiceTest : public ::testing::Test {
protected:
    /// The texts stored under both keys, "primary|selected", "-" for an absent one.
    [[nodiscard]] QString stored() const {
        return preferences.string(keys::primaryLanguage).value_or(u"-"_s) + u'|' +
               preferences.string(keys::selectedLanguages).value_or(u"-"_s);
    }

    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
};

TEST_F(LanguageChoiceTest, OffersTheDefaultsAndStoresNothingByItself) {
    const LanguageChoice choice(preferences, watch);
    EXPECT_EQ(choice.primaryLanguage(), u"no"_s);
    EXPECT_EQ(choice.selectedLanguages().join(u','), u"da,en,fi,no,sv"_s);
    EXPECT_EQ(stored(), u"-|-"_s);
    QStringList offered;
    for (const Language &language : LanguageChoice::languages())
        offered.append(language.code + u' ' + language.name);
    EXPECT_EQ(offered.join(u','), u"no Norwegian,sv Swedish,da Danish,fi Finnish,en English"_s);
}

TEST_F(LanguageChoiceTest, KeepsThePrimaryLanguageSelected) {
    const struct {
        const char *name;
        PreferenceValue primary;
        PreferenceValue selected;
        QString toggled; ///< Else made primary:
        QString madePrimary;
        QString expected;
    } rows[] = {
        {"switches off", u"no"_s, u"no,sv,en"_s, u"sv"_s, {}, u"no|en,no"_s},
        {"switches on", u"no"_s, u"no,sv"_s, u"en"_s, {}, u"no|en,no,sv"_s},
        {"the primary one stays, sorted", u"no"_s, u"sv,no,en"_s, u"no"_s, {}, u"no|en,no,sv"_s},
        {"the primary one is not put in either", u"no"_s, u"sv,en"_s, u"no"_s, {}, u"no|en,sv"_s},
        {"a new primary that was off", u"no"_s, u"no,en"_s, {}, u"fi"_s, u"fi|en,fi,no"_s},
        {"a new primary that was on", u"no"_s, u"no,en"_s, {}, u"en"_s, u"en|no,en"_s},
        {"commas at will", u"sv"_s, u",sv,,en,"_s, u"da"_s, {}, u"sv|da,en,sv"_s},
        {"codes of no offer, untouched", u"no"_s, u"nn,no, EN,no"_s, u"da"_s, {}, u"no| EN,da,nn,no"_s},
        {"another kind", u"no"_s, true, u"no"_s, {}, u"no|da,en,fi,no,sv"_s},
    };
    for (const auto &row : rows) {
        preferences.set(keys::primaryLanguage, row.primary);
        preferences.set(keys::selectedLanguages, row.selected);
        LanguageChoice choice(preferences, watch);
        if (row.madePrimary.isEmpty())
            choice.toggleLanguage(row.toggled);
        else
            choice.setPrimaryLanguage(row.madePrimary);
        EXPECT_EQ(stored(), row.expected) << row.name;
    }
}

TEST_F(LanguageChoiceTest, BeginsWithTheLanguageOfTheDesktop) {
    const struct {
        QStringList desktop;
        QString expected;
    } rows[] = {
        {{u"nn-NO"_s, u"en"_s}, u"no|-"_s},
        {{u"nb"_s}, u"no|-"_s},
        {{u"de-DE"_s, u"fi-FI"_s, u"sv"_s}, u"fi|-"_s},
        {{u"C"_s}, u"-|-"_s},
    };
    for (const auto &row : rows) {
        preferences.remove(keys::primaryLanguage);
        choosePrimaryLanguage(preferences, row.desktop);
        EXPECT_EQ(stored(), row.expected) << row.desktop.first().toStdString();
    }
    preferences.set(keys::primaryLanguage, u"is"_s);
    choosePrimaryLanguage(preferences, {u"sv"_s});
    EXPECT_EQ(stored(), u"is|-"_s) << "chosen before";
}

TEST_F(LanguageChoiceTest, FollowsAndKeepsWhatAnotherProcessChose) {
    LanguageChoice choice(preferences, watch);
    int changes = 0;
    QObject::connect(&choice, &LanguageChoice::selectedLanguagesChanged, [&] { ++changes; });
    preferences.set(keys::selectedLanguages, u"no,is"_s); // not seen yet
    choice.toggleLanguage(u"sv"_s);
    EXPECT_EQ(stored(), u"-|is,no"_s) << "switching off stays switching off";
    EXPECT_EQ(changes, 1);

    preferences.set(keys::primaryLanguage, u"is"_s);
    watch.noteWrite();
    queue.runPosted();
    EXPECT_EQ(choice.primaryLanguage(), u"is"_s);
    EXPECT_EQ(changes, 1);
}

} // namespace velmo
