#include "store/custom_modes.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/qt_printing.h"
#include "text/modes/mode_settings.h"
#include "text/modes/system_prompt.h"

#include <QCryptographicHash>
#include <gmock/gmock.h>

namespace velmo {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

TEST(SystemPrompt, IsPutTogetherByteForByte) {
    const QString prompt = buildSystemPrompt(u"<mode>"_s, u"sv"_s, vocabularyInstruction({u"a"_s, u"B c"_s}));
    const qsizetype mode = prompt.indexOf(u"<mode>");
    EXPECT_TRUE(prompt.first(mode).endsWith(u"processed version of the user's original words.\n\n"));
    EXPECT_EQ(
        prompt.sliced(mode),
        u"<mode>\n\nThe user's primary language is Swedish. Keep the output in the same language as the "
        u"input.\n\nIMPORTANT: The user's personal vocabulary includes these terms that must be preserved "
        u"exactly as written (do not correct, rephrase, or alter their spelling): a, B c\n\nIf the text "
        u"contains the word \"emoji\" followed by a description in any language, and it has not already been "
        u"converted to an emoji character, replace the entire phrase with the most appropriate Unicode emoji "
        u"character. Remove the word \"emoji\" and the description, leaving only the emoji character."_s);
    EXPECT_EQ(vocabularyInstruction({}), QString());
    EXPECT_EQ(languageDisplayName(u"de"_s), u"de"_s);
    EXPECT_EQ(languageDisplayName(u"NO"_s), u"NO"_s);
}

// The service's answers were tuned to these words, so a changed letter must be meant.
TEST(BuiltInModes, SayWhatTheyAlwaysSaid) {
    const MemoryPreferences preferences;
    QCryptographicHash words(QCryptographicHash::Sha256);
    QStringList ids;
    for (const Mode &mode : allModes(preferences)) {
        ids.append(mode.id);
        for (const QString &text : {mode.id, mode.name, mode.icon, mode.description, mode.systemPrompt})
            words.addData(text.toUtf8() + '\n');
    }
    EXPECT_EQ(ids.join(u' '), u"accurate fix-grammar professional casual summarize bullet-points"_s);
    EXPECT_EQ(words.result().toHex(), "15f703939e0a125c53bcb75822216e4c4c8efdcdee4a6b6c4f29231c36f50707");
}

class ModeSettingsTest : public ::testing::Test {
protected:
    ModeSettingsTest() { preferences.set(keys::customModes, serialiseCustomModes({letter, poem})); }

    [[nodiscard]] QStringList names() const {
        QStringList names;
        for (const CustomMode &mode : customModes(preferences))
            names.append(mode.name);
        return names;
    }

    const CustomMode letter{u"1"_s, u"Letter"_s, u"Write a letter."_s, u"envelope"_s};
    const CustomMode poem{u"2"_s, u"Poem"_s, u"Write a poem."_s, u"lightbulb"_s};
    MemoryPreferences preferences;
    ModeSettings settings{preferences};
};

TEST_F(ModeSettingsTest, ReadsWhatItCanUse) {
    preferences.set(keys::customModes, uR"([{"id":"1","name":"A","systemPrompt":"a"},{"id":"2","name":"B"},
                                           {"id":"3","name":"C","systemPrompt":"c","icon":5}])"_s);
    EXPECT_THAT(customModes(preferences), ElementsAre(CustomMode{u"1"_s, u"A"_s, u"a"_s, u"sparkles"_s},
                                                      CustomMode{u"3"_s, u"C"_s, u"c"_s, u"sparkles"_s}));
    EXPECT_EQ(allModes(preferences).last().name, u"C"_s);
    for (const QString &stored :
         {u"[{\"id\":\"1\",\"name\":\"A\",\"systemPrompt\":\"a\"},3]"_s, u"{}"_s, u"["_s}) {
        preferences.set(keys::customModes, stored);
        EXPECT_TRUE(customModes(preferences).isEmpty());
    }
}

TEST_F(ModeSettingsTest, AddsEditsAndRemovesInTheListAsItIsStoredNow) {
    settings.confirm({std::nullopt, u" \tNote "_s, u" Note it.\t"_s, u"globe"_s});
    EXPECT_THAT(names(), ElementsAre(u"Letter"_s, u"Poem"_s, u"Note"_s));
    EXPECT_EQ(customModes(preferences).last().systemPrompt, u"Note it."_s);
    EXPECT_EQ(customModes(preferences).last().id.size(), 36);

    settings.confirm({u"1"_s, u"Mail"_s, u"x"_s, u"globe"_s});
    settings.confirm({u"9"_s, u"Nobody"_s, u"x"_s, u"globe"_s});
    EXPECT_THAT(names(), ElementsAre(u"Mail"_s, u"Poem"_s, u"Note"_s));

    settings.choose(u"2"_s);
    settings.remove(u"1"_s);
    EXPECT_THAT(names(), ElementsAre(u"Poem"_s, u"Note"_s));
    EXPECT_EQ(selectedModeId(preferences), u"2"_s);
    settings.remove(u"2"_s);
    EXPECT_EQ(preferences.string(keys::selectedMode), u"accurate"_s);
}

TEST_F(ModeSettingsTest, ReplacesOnlyTheRetiredSelection) {
    settings.replaceRetiredSelection();
    EXPECT_EQ(preferences.string(keys::selectedMode), std::nullopt);
    settings.choose(u"fast"_s);
    settings.replaceRetiredSelection();
    EXPECT_EQ(preferences.string(keys::selectedMode), u"accurate"_s);
    settings.setSmartFormatting(false);
    EXPECT_FALSE(smartFormatting(preferences));
}

} // namespace velmo
