#include "localservice/speech/upload_form.h"

namespace velmo::localservice::testing {

namespace {

const QByteArray kBoundary = "Boundary-9F1C2B9E-8D47-4A0E-9B51-6C2D7E8F9A10";

} // namespace

QByteArray textPart(const QByteArray &name, const QByteArray &content) {
    return "--" + kBoundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + content +
           "\r\n";
}

UploadForm uploadForm(const QByteArray &audio, const QByteArray &languages) {
    UploadForm form;
    form.contentType = "multipart/form-data; boundary=" + kBoundary;
    form.parts = {"--" + kBoundary +
                      "\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"recording.wav\"\r\n"
                      "Content-Type: audio/wav\r\n\r\n" +
                      audio + "\r\n",
                  textPart("language", "no"), textPart("languages", languages), textPart("source", "mac")};
    form.end = "--" + kBoundary + "--\r\n";
    return form;
}

httplib::Headers uploadHeaders() {
    return {{"X-Device-Id", "3f1c2b9e-8d47-4a0e-9b51-6c2d7e8f9a10"},
            {"X-Mode", "accurate"},
            {"X-App-Version", "1.0.0"},
            {"X-Source", "mac"}};
}

} // namespace velmo::localservice::testing
