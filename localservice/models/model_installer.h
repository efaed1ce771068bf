#pragma once

#include "base/result.h"
#include "localservice/models/download.h"
#include "localservice/models/model_catalogue.h"
#include "localservice/models/model_store.h"

namespace velmo::localservice {

/// Puts speech models into the store's own folder. A file gets its name only when it is whole, what it should be, and a model.
/// Sentences say what went wrong.
class ModelInstaller {
public:
    explicit ModelInstaller(const ModelStore &store) : m_store(store) {}

    /// From its source, or from another address. Going on where an earlier attempt has left off.
    [[nodiscard]] Result<void, QString>
    get(const CatalogueModel &model, const QString &address,
        const std::function<bool(const DownloadProgress &)> &progress) const;

    /// A copy of a file; answers its SHA-256.
    [[nodiscard]] Result<QByteArray, QString> import(const QString &file, const QString &name) const;

    /// Only from the own folder: other folders are somebody else's.
    [[nodiscard]] Result<void, QString> remove(const QString &name) const;

private:
    [[nodiscard]] QString unfinishedPath(const QString &name) const;

    ModelStore m_store;
};

} // namespace velmo::localservice
