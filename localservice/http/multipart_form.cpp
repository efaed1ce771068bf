#include "localservice/http/multipart_form.h"

#include "base/json.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using Fault = tl::unexpected<QString>;

constexpr QByteArrayView kLineEnd = "\r\n";

struct Part {
    QByteArrayView head; ///< Its header lines, the last one's line end left out.
    QByteArrayView content;
    QString name;
};

/// The names in their order; the prompt may be left out.
using Order = std::array<QLatin1StringView, 5>;
constexpr Order kOrder = {"audio"_L1, "prompt"_L1, "language"_L1, "languages"_L1, "source"_L1};
constexpr Order kLiveOrder = {"prompt"_L1, "language"_L1, "languages"_L1, "source"_L1, "audio"_L1};

auto fault(const QString &sentence) {
    return failed(sentence);
}

auto partFault(QStringView name, const QString &what) {
    return failed(u"The part \"%1\" %2."_s.arg(name, what));
}

Result<QByteArray, QString> boundaryOf(const QByteArray &contentType) {
    static const QRegularExpression form(
        u"\\Amultipart/form-data; boundary=(Boundary-[0-9A-F]{8}(?:-[0-9A-F]{4}){3}-[0-9A-F]{12})\\z"_s);
    const auto match = form.match(QString::fromLatin1(contentType));
    if (!match.hasMatch())
        return fault(u"The Content-Type header is not \"multipart/form-data; boundary=\" and a "
                     "boundary of the form \"Boundary-\" and an upper-case UUID."_s);
    return match.captured(1).toLatin1();
}

/// The name of a part from its header lines, or an empty one.
QString nameIn(QByteArrayView head) {
    static const QRegularExpression form(u"\\AContent-Disposition: form-data; name=\"([^\"\\r\\n]*)\""_s);
    return form.match(QString::fromUtf8(head)).captured(1);
}

Result<Part, QString> partFrom(QByteArrayView bytes) {
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return fault(u"A part has no empty line between its headers and its content."_s);
    Part part{bytes.first(headEnd), bytes.sliced(headEnd + 4), {}};
    part.name = nameIn(part.head);
    if (part.name.isEmpty())
        return fault(u"A part does not begin with a Content-Disposition header that names it."_s);
    return part;
}

/// Cuts the body at its boundary lines.
Result<std::vector<Part>, QString> partsOf(QByteArrayView body, const QByteArray &boundary) {
    const QByteArray opening = "--" + boundary + "\r\n";
    const QByteArray delimiter = "\r\n--" + boundary;
    if (!body.startsWith(opening))
        return fault(u"The body does not begin with the boundary of the Content-Type header."_s);

    std::vector<Part> parts;
    QByteArrayView rest = body.sliced(opening.size());
    for (;;) {
        const qsizetype end = rest.indexOf(delimiter);
        if (end < 0)
            return fault(u"The body does not end with the closing boundary."_s);
        auto part = partFrom(rest.first(end));
        if (!part)
            return fault(part.error());
        parts.push_back(*part);
        rest = rest.sliced(end + delimiter.size());
        if (rest == "--\r\n")
            return parts;
        if (!rest.startsWith(kLineEnd))
            return fault(u"A boundary line is not ended as it should be."_s);
        rest = rest.sliced(kLineEnd.size());
    }
}

qsizetype countOf(const std::vector<Part> &parts, QStringView name) {
    return std::count_if(parts.begin(), parts.end(), [name](const Part &part) { return part.name == name; });
}

QString inWords(const Order &order) {
    return QStringList(order.begin(), order.end()).join(u", "_s);
}

/// Says which part is unknown, there twice, missing or out of its order.
std::optional<QString> faultInOrder(const std::vector<Part> &parts, const Order &order) {
    for (const Part &part : parts) {
        if (std::find(order.begin(), order.end(), part.name) == order.end())
            return u"The part \"%1\" does not belong to an upload."_s.arg(part.name);
    }
    auto next = parts.begin();
    for (const QLatin1StringView name : order) {
        const qsizetype count = countOf(parts, QString(name));
        if (count > 1)
            return u"The part \"%1\" is there more than once."_s.arg(name);
        if (count == 0 && name != u"prompt")
            return u"The part \"%1\" is missing."_s.arg(name);
        if (count == 1 && (next++)->name != name)
            return u"The part \"%1\" is out of its order (%2)."_s.arg(name, inWords(order));
    }
    return std::nullopt;
}

/// The text of a part that has nothing but its name in its headers.
Result<QString, QString> textOf(const Part &part) {
    if (part.head != "Content-Disposition: form-data; name=\"" + part.name.toUtf8() + '"')
        return partFault(part.name, u"has headers other than its name"_s);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(part.content);
    if (decoder.hasError())
        return partFault(part.name, u"is not UTF-8"_s);
    return text;
}

Result<QStringList, QString> languagesFrom(const QString &text) {
    const auto array = json::array(text.toUtf8());
    QStringList codes;
    for (const auto &element : array.value_or(QJsonArray())) {
        if (!element.isString())
            return partFault(u"languages", u"is no JSON array of strings"_s);
        codes.append(element.toString());
    }
    if (codes.isEmpty())
        return partFault(u"languages", u"is no JSON array of strings"_s);
    return codes;
}

/// Reads the headers of the audio part: file name and type, which both follow from the extension.
std::optional<QString> readAudio(const Part &part, Upload &upload) {
    static const QRegularExpression form(
        u"\\AContent-Disposition: form-data; name=\"audio\"; filename=\"([^\"\\r\\n]*)\"\\r\\n"
        "Content-Type: ([^\\r\\n]*)\\z"_s);
    const auto match = form.match(QString::fromUtf8(part.head));
    if (!match.hasMatch())
        return u"The part \"audio\" has headers other than its name, its filename and its "
               "Content-Type."_s;
    upload.fileName = match.captured(1);
    upload.contentType = match.captured(2).toUtf8();
    upload.audio = part.content.toByteArray();

    if (!upload.fileName.startsWith(u"recording.") || upload.fileName != upload.fileName.toLower())
        return u"The filename of the part \"audio\" is not \"recording.\" and an extension in "
               "lower case."_s;
    const QByteArray expected = upload.fileName == u"recording.wav" ? "audio/wav" : "audio/m4a";
    if (upload.contentType != expected)
        return u"The Content-Type of the part \"audio\" is not \"%1\", as its filename asks for."_s.arg(
            QString::fromLatin1(expected));
    return std::nullopt;
}

/// Reads one text part into its place.
std::optional<QString> readText(const Part &part, Upload &upload) {
    const auto text = textOf(part);
    if (!text)
        return text.error();
    if (part.name == u"prompt") {
        if (text->isEmpty())
            return u"The part \"prompt\" is empty; without hint words it is left out."_s;
        upload.prompt = *text;
    } else if (part.name == u"language") {
        upload.language = *text;
    } else if (part.name == u"languages") {
        auto codes = languagesFrom(*text);
        if (!codes)
            return codes.error();
        upload.languages = *codes;
    } else if (*text != u"mac") {
        return u"The part \"source\" is not \"mac\"."_s;
    }
    return std::nullopt;
}

Result<Upload, QString> uploadFrom(QByteArrayView body, const QByteArray &boundary, const Order &order) {
    const auto parts = partsOf(body, boundary);
    if (!parts)
        return fault(parts.error());
    if (const auto wrong = faultInOrder(*parts, order))
        return fault(*wrong);

    Upload upload;
    for (const Part &part : *parts) {
        const auto wrong = part.name == u"audio" ? readAudio(part, upload) : readText(part, upload);
        if (wrong)
            return fault(*wrong);
    }
    return upload;
}

} // namespace

Result<Upload, QString> parseUpload(const QByteArray &contentType, const QByteArray &body) {
    return boundaryOf(contentType).and_then([&body](const QByteArray &boundary) {
        return uploadFrom(body, boundary, kOrder);
    });
}

qsizetype live::startOfAudio(QByteArrayView body) {
    const qsizetype audio = body.indexOf("name=\"audio\"");
    const qsizetype end = audio < 0 ? -1 : body.indexOf("\r\n\r\n", audio);
    return end < 0 ? -1 : end + 4;
}

Result<Upload, QString> live::parseStart(const QByteArray &contentType, QByteArrayView start) {
    return boundaryOf(contentType).and_then([&](const QByteArray &boundary) {
        return uploadFrom(start.toByteArray() + endOfBody(contentType), boundary, kLiveOrder);
    });
}

QByteArray live::endOfBody(const QByteArray &contentType) {
    const auto boundary = boundaryOf(contentType);
    return boundary ? "\r\n--" + *boundary + "--\r\n" : QByteArray();
}

} // namespace velmo::localservice
