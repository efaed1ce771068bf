#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace velmo::localservice {

/// What a file has to come to. Empty: nobody has told.
struct Checksum {
    QCryptographicHash::Algorithm algorithm = QCryptographicHash::Sha256;
    QByteArray hex = {};
};

/// A speech model that others publish.
struct CatalogueModel {
    QString name;
    qint64 size;           ///< In bytes, about.
    QStringList languages; ///< Of those Velmo is made for.
    QString source;        ///< Of the file when the checksum is known, else of a page for people.
    Checksum checksum;
    QString publisher = {}; ///< For people; empty: the one of the general models.

    /// Without a checksum it is named only, and imported by whoever has fetched it.
    [[nodiscard]] bool canBeDownloaded() const { return !checksum.hex.isEmpty(); }
};

/// The codes of the languages Velmo is made for, all of which a general model understands.
[[nodiscard]] const QStringList &velmoLanguages();

/// What the publishers' own lists name, the smallest first.
[[nodiscard]] const std::vector<CatalogueModel> &modelCatalogue();
[[nodiscard]] std::optional<CatalogueModel> catalogueModel(const QString &name);

} // namespace velmo::localservice
