#include "text/tables/built_in_modes.h"

namespace velmo {

namespace {

constexpr BuiltInMode kBuiltInModes[] = {
    {u"accurate", u"Accurate", u"scope", u"Clean transcription with filler words removed", u""},
    {u"fix-grammar", u"Fix Grammar", u"pencil.line", u"Corrects grammar and punctuation",
     u"You are a multilingual grammar assistant specializing in Nordic languages (Swedish, "
     u"Norwegian, Danish, Finnish) and English. Fix any grammar, spelling, and punctuation errors "
     u"in the following text. The text may be in any of these languages or contain code-switching "
     u"between them. Keep the original language, meaning and style. Preserve Nordic characters "
     u"(å, ä, ö, ø, æ) correctly. Only output the corrected text, nothing else."},
    {u"professional", u"Professional", u"briefcase", u"Direct Nordic professional tone",
     u"Rewrite the following text in a professional tone. Use a direct, clear Nordic "
     u"communication style — avoid overly formal or flowery American business language. Be "
     u"concise and straightforward. The text may be in Swedish, Norwegian, Danish, Finnish, or "
     u"English. Keep the original language. Preserve Nordic characters (å, ä, ö, ø, æ). Only "
     u"output the rewritten text, nothing else."},
    {u"casual", u"Casual", u"face.smiling", u"Natural and friendly Nordic tone",
     u"Rewrite the following text in a casual, friendly, conversational tone. Make it sound "
     u"natural and relaxed, like a Nordic person texting a friend. The text may be in Swedish, "
     u"Norwegian, Danish, Finnish, or English. Keep the original language. Code-switching between "
     u"English and Nordic is fine if it feels natural. Preserve Nordic characters (å, ä, ö, ø, "
     u"æ). Only output the rewritten text, nothing else."},
    {u"summarize", u"Summarize", u"doc.text", u"Creates a concise summary",
     u"Summarize the following text concisely while keeping the key points. The text may be in "
     u"Swedish, Norwegian, Danish, Finnish, or English. Keep the original language. Preserve "
     u"Nordic characters (å, ä, ö, ø, æ). Only output the summary, nothing else."},
    {u"bullet-points", u"Bullet Points", u"list.bullet", u"Converts text to bullet points",
     u"Convert the following text into clear, organized bullet points. The text may be in "
     u"Swedish, Norwegian, Danish, Finnish, or English. Keep the original language. Preserve "
     u"Nordic characters (å, ä, ö, ø, æ). Only output the bullet points, nothing else."},
};

constexpr QStringView kIconOptions[] = {
    u"sparkles",           u"wand.and.stars",     u"text.bubble",   u"character.textbox",
    u"pencil.and.outline", u"brain.head.profile", u"globe",         u"envelope",
    u"bubble.left",        u"quote.bubble",       u"doc.plaintext", u"lightbulb",
};

} // namespace

std::span<const BuiltInMode> builtInModes() {
    return kBuiltInModes;
}

std::span<const QStringView> iconOptions() {
    return kIconOptions;
}

} // namespace velmo
