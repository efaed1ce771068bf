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

struct Fault {
    const char *name;
    void (*spoil)(UploadForm &form);
    const char *atFault; ///< What the sentence names.
};

// So that a failing row shows its name.
void PrintTo(const Fault &fault, std::ostream *stream) {
    *stream << fault.name;
}

class MultipartFormFault : public ::testing::TestWithParam<Fault> {};

TEST_P(MultipartFormFault, IsNamed) {
    UploadForm form = uploadForm("some audio");
    const QByteArray whole = form.contentType + form.body();
    GetParam().spoil(form);
    ASSERT_NE(form.contentType + form.body(), whole);

    const auto upload = parseUpload(form.contentType, form.body());

    ASSERT_FALSE(upload);
    EXPECT_TRUE(upload.error().contains(QLatin1StringView(GetParam().atFault)))
        << upload.error().toStdString();
}

using F = UploadForm;
INSTANTIATE_TEST_SUITE_P(
    Table, MultipartFormFault,
    ::testing::Values(
        Fault{"NoContentType", [](F &f) { f.contentType.clear(); }, "Content-Type"},
        Fault{"OtherContentType", [](F &f) { f.contentType.replace("form-data", "mixed"); }, "Content-Type"},
        Fault{"QuotedBoundary", [](F &f) { f.contentType.replace("=B", "=\"B").append('"'); }, "boundary"},
        Fault{"LowerCaseBoundary", [](F &f) { f.contentType = f.contentType.toLower(); }, "boundary"},
        Fault{"ShortBoundary", [](F &f) { f.contentType.chop(1); }, "boundary"},
        Fault{"OtherBoundary", [](F &f) { f.contentType.replace("9F1C", "AAAA"); }, "boundary"},
        Fault{"EmptyBody", [](F &f) { f.parts.clear(), f.end.clear(); }, "boundary"},
        Fault{"Preamble", [](F &f) { f.parts[0].prepend("\r\n"); }, "boundary"},
        Fault{"NoEnd", [](F &f) { f.end.clear(); }, "closing boundary"},
        Fault{"EndWithoutLineEnd", [](F &f) { f.end.chop(2); }, "boundary line"},
        Fault{"Epilogue", [](F &f) { f.end += "more"; }, "boundary line"},
        Fault{"LineFeedsAlone", [](F &f) { f.parts[1].replace("\r\n\r\n", "\n\n"); }, "empty line"},
        Fault{"NoAudio", [](F &f) { f.parts.removeAt(0); }, "\"audio\" is missing"},
        Fault{"NoLanguage", [](F &f) { f.parts.removeAt(1); }, "\"language\" is missing"},
        Fault{"NoLanguages", [](F &f) { f.parts.removeAt(2); }, "\"languages\" is missing"},
        Fault{"NoSource", [](F &f) { f.parts.removeAt(3); }, "\"source\" is missing"},
        Fault{"Twice", [](F &f) { f.parts.insert(2, f.parts[1]); }, "\"language\" is there more than once"},
        Fault{"Misordered", [](F &f) { f.parts.swapItemsAt(1, 2); }, "\"language\" is out of its order"},
        Fault{"PromptLast", [](F &f) { f.parts.append(textPart("prompt", "a, b, c")); }, "\"prompt\" is out"},
        Fault{"Unknown", [](F &f) { f.parts.append(textPart("model", "x")); }, "\"model\" does not belong"},
        Fault{"UnquotedName", [](F &f) { f.parts[1].replace("\"language\"", "language"); }, "names it"},
        Fault{"ExtraHeader", [](F &f) { f.parts[1].replace("\r\n\r\n", "\r\nX: y\r\n\r\n"); },
              "\"language\" has"},
        Fault{"FileNameOfText", [](F &f) { f.parts[3].replace("source\"", "source\"; filename=\"a\""); },
              "\"source\" has"},
        Fault{"NoFileName", [](F &f) { f.parts[0].replace("; filename=\"recording.wav\"", ""); },
              "\"audio\" has"},
        Fault{"OtherFileName", [](F &f) { f.parts[0].replace("recording.", "sound."); }, "filename"},
        Fault{"UpperCaseExtension", [](F &f) { f.parts[0].replace(".wav", ".WAV"); }, "filename"},
        Fault{"OtherType", [](F &f) { f.parts[0].replace("audio/wav", "audio/x-wav"); }, "Content-Type"},
        Fault{"TypeOfOtherExtension", [](F &f) { f.parts[0].replace(".wav", ".m4a"); }, "audio/m4a"},
        Fault{"EmptyPrompt", [](F &f) { f.parts.insert(1, textPart("prompt", "")); }, "\"prompt\" is empty"},
        Fault{"NotUtf8", [](F &f) { f.parts.insert(1, textPart("prompt", "\xff")); },
              "\"prompt\" is not UTF-8"},
        Fault{"LanguagesText", [](F &f) { f.parts[2] = textPart("languages", "no,sv"); },
              "\"languages\" is no"},
        Fault{"LanguagesObject", [](F &f) { f.parts[2] = textPart("languages", "{}"); },
              "\"languages\" is no"},
        Fault{"LanguagesNumbers", [](F &f) { f.parts[2] = textPart("languages", R"(["no",1])"); },
              "\"languages\" is no"},
        Fault{"OtherSource", [](F &f) { f.parts[3] = textPart("source", "linux"); }, "\"source\" is not"}),
    [](const auto &row) { return row.param.name; });

} // namespace velmo::localservice
