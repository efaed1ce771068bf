#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <httplib.h>

namespace velmo::localservice::testing {

/// An upload as Velmo sends it, in pieces that a test can spoil.
struct UploadForm {
    QByteArray contentType;
    QByteArrayList parts; ///< Each with its boundary line and the line end after its content.
    QByteArray end;

    [[nodiscard]] QByteArray body() const { return parts.join() + end; }
};

/// audio, language ("no"), languages and source, in this order.
[[nodiscard]] UploadForm uploadForm(const QByteArray &audio,
                                    const QByteArray &languages = R"(["no","sv","da","fi","en"])");

/// A part of the form: its name in the header, and its content.
[[nodiscard]] QByteArray textPart(const QByteArray &name, const QByteArray &content);

/// The headers beside the content type.
[[nodiscard]] httplib::Headers uploadHeaders();

} // namespace velmo::localservice::testing
