#include "localservice/http/multipart_form.h"

#include "localservice/speech/upload_form.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::textPart;
using testing::UploadForm;
using testing::uploadForm;

TEST(MultipartForm, ReadsWhatVelmoSends) {
    const QByteArray audio("RIFF\r\n\r\n--Boundary-\0\r\n", 21);
    UploadForm form = uploadForm(audio);
    form.parts.insert(1, textPart("prompt", "Tromsø, \"x\"\r\ny"));

    const auto upload = parseUpload(form.contentType, form.body());

    ASSERT_TRUE(upload) << upload.error().toStdString();
    EXPECT_EQ(upload->audio, audio);
    EXPECT_EQ(upload->fileName, u"recording.wav"_s);
    EXPECT_EQ(upload->contentType, "audio/wav");
    EXPECT_EQ(upload->prompt, u"Tromsø, \"x\"\r\ny"_s);
    EXPECT_EQ(upload->language, u"no"_s);
    EXPECT_EQ(upload->languages.join(u','), u"no,sv,da,fi,en"_s);
}

TEST(MultipartForm, TakesOtherExtensionsAndOddLanguages) {
    UploadForm form = uploadForm("x", R"(["no","","sv"])");
    form.parts[0].replace("recording.wav", "recording.").replace("audio/wav", "audio/m4a");
    form.parts[1] = textPart("language", "");

    const auto upload = parseUpload(form.contentType, form.body());

    ASSERT_TRUE(upload) << upload.error().toStdString();
    EXPECT_EQ(upload->fileName, u"recording."_s);
    EXPECT_EQ(upload->languages.join(u','), u"no,,sv"_s);
    EXPECT_TRUE(upload->language.isEmpty());
}

using F = UploadForm;
TEST(MultipartForm, NamesWhatIsAtFault) {
    const struct {
        const char *name;
        void (*spoil)(UploadForm &form);
        const char *atFault; ///< What the sentence names.
    } rows[] = {
        {"NoContentType", [](F &f) { f.contentType.clear(); }, "Content-Type"},
        {"OtherContentType", [](F &f) { f.contentType.replace("form-data", "mixed"); }, "Content-Type"},
        {"QuotedBoundary", [](F &f) { f.contentType.replace("=B", "=\"B").append('"'); }, "boundary"},
        {"LowerCaseBoundary", [](F &f) { f.contentType = f.contentType.toLower(); }, "boundary"},
        {"ShortBoundary", [](F &f) { f.contentType.chop(1); }, "boundary"},
        {"OtherBoundary", [](F &f) { f.contentType.replace("9F1C", "AAAA"); }, "boundary"},
        {"EmptyBody", [](F &f) { f.parts.clear(), f.end.clear(); }, "boundary"},
        {"Preamble", [](F &f) { f.parts[0].prepend("\r\n"); }, "boundary"},
        {"NoEnd", [](F &f) { f.end.clear(); }, "closing boundary"},
        {"EndWithoutLineEnd", [](F &f) { f.end.chop(2); }, "boundary line"},
        {"Epilogue", [](F &f) { f.end += "more"; }, "boundary line"},
        {"LineFeedsAlone", [](F &f) { f.parts[1].replace("\r\n\r\n", "\n\n"); }, "empty line"},
        {"NoAudio", [](F &f) { f.parts.removeAt(0); }, "\"audio\" is missing"},
        {"NoLanguage", [](F &f) { f.parts.removeAt(1); }, "\"language\" is missing"},
        {"NoLanguages", [](F &f) { f.parts.removeAt(2); }, "\"languages\" is missing"},
        {"NoSource", [](F &f) { f.parts.removeAt(3); }, "\"source\" is missing"},
        {"Twice", [](F &f) { f.parts.insert(2, f.parts[1]); }, "\"language\" is there more than once"},
        {"Misordered", [](F &f) { f.parts.swapItemsAt(1, 2); }, "\"language\" is out of its order"},
        {"PromptLast", [](F &f) { f.parts.append(textPart("prompt", "a, b, c")); }, "\"prompt\" is out"},
        {"Unknown", [](F &f) { f.parts.append(textPart("model", "x")); }, "\"model\" does not belong"},
        {"UnquotedName", [](F &f) { f.parts[1].replace("\"language\"", "language"); }, "names it"},
        {"ExtraHeader", [](F &f) { f.parts[1].replace("\r\n\r\n", "\r\nX: y\r\n\r\n"); }, "\"language\" has"},
        {"FileNameOfText", [](F &f) { f.parts[3].replace("source\"", "source\"; filename=\"a\""); },
         "\"source\" has"},
        {"NoFileName", [](F &f) { f.parts[0].replace("; filename=\"recording.wav\"", ""); }, "\"audio\" has"},
        {"OtherFileName", [](F &f) { f.parts[0].replace("recording.", "sound."); }, "filename"},
        {"UpperCaseExtension", [](F &f) { f.parts[0].replace(".wav", ".WAV"); }, "filename"},
        {"OtherType", [](F &f) { f.parts[0].replace("audio/wav", "audio/x-wav"); }, "Content-Type"},
        {"TypeOfOtherExtension", [](F &f) { f.parts[0].replace(".wav", ".m4a"); }, "audio/m4a"},
        {"EmptyPrompt", [](F &f) { f.parts.insert(1, textPart("prompt", "")); }, "\"prompt\" is empty"},
        {"NotUtf8", [](F &f) { f.parts.insert(1, textPart("prompt", "\xff")); }, "\"prompt\" is not UTF-8"},
        {"LanguagesText", [](F &f) { f.parts[2] = textPart("languages", "no,sv"); }, "\"languages\" is no"},
        {"LanguagesObject", [](F &f) { f.parts[2] = textPart("languages", "{}"); }, "\"languages\" is no"},
        {"LanguagesNumbers", [](F &f) { f.parts[2] = textPart("languages", R"(["no",1])"); },
         "\"languages\" is no"},
        {"OtherSource", [](F &f) { f.parts[3] = textPart("source", "linux"); }, "\"source\" is not"},
    };
    for (const auto &row : rows) {
        UploadForm form = uploadForm("some audio");
        const QByteArray whole = form.contentType + form.body();
        row.spoil(form);
        ASSERT_NE(form.contentType + form.body(), whole) << row.name;
        const auto upload = parseUpload(form.contentType, form.body());
        ASSERT_FALSE(upload) << row.name;
        EXPECT_TRUE(upload.error().contains(QLatin1StringView(row.atFault)))
            << row.name << upload.error().toStdString();
    }
}

} // namespace velmo::localservice
