#pragma once

#include "base/result.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

namespace velmo::localservice {

/// A speech model on this machine.
struct InstalledModel {
    QString name; ///< Of "ggml-base.bin": "base".
    QString path;
};

/// The speech models on this machine, and which of them is used for which language. What is found is what lies in the folders
/// at that moment. Any thread.
class ModelStore {
public:
    /// Models are put into `ownFolder`; the further ones are only looked into.
    ModelStore(QString ownFolder, QStringList furtherFolders);

    /// In the order in which they would be used: those of one name only once.
    [[nodiscard]] QList<InstalledModel> installed() const;
    [[nodiscard]] std::optional<InstalledModel> find(const QString &name) const;

    /// The model to use for a language (a code; empty: any), or a sentence why there is none.
    [[nodiscard]] Result<InstalledModel, QString> modelFor(const QString &language) const;

    /// The names told to use: by language, under the empty code for all others.
    [[nodiscard]] QMap<QString, QString> used() const;

    /// An empty name forgets. A sentence when that cannot be written down.
    [[nodiscard]] Result<void, QString> use(const QString &name, const QString &language) const;

    [[nodiscard]] const QString &ownFolder() const { return m_ownFolder; }
    /// Where a model of that name lies or would lie in the own folder.
    [[nodiscard]] QString pathFor(const QString &name) const;

    /// Makes the own folder, which only its owner can look into.
    void makeFolder() const;

private:
    QString m_ownFolder;
    QStringList m_furtherFolders;
};

/// Whether a model may have that name: small letters, digits, points and hyphens.
[[nodiscard]] bool isModelName(const QString &name);

} // namespace velmo::localservice
