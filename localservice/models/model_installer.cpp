#include "localservice/models/model_installer.h"

#include "localservice/models/model_file.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QByteArray hashOf(const QString &path, QCryptographicHash::Algorithm algorithm) {
    QFile file(path);
    QCryptographicHash hash(algorithm);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}

/// Gives a file its name, in the place of another of that name.
Result<void, QString> rename(const QString &from, const QString &to) {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return failed(u"%1 cannot be written: %2."_s.arg(to, qt_error_string()));
    return {};
}

} // namespace

QString ModelInstaller::unfinishedPath(const QString &name) const {
    return m_store.pathFor(name) + u".part"_s;
}

Result<void, QString>
ModelInstaller::get(const CatalogueModel &model, const QString &address,
                    const std::function<bool(const DownloadProgress &)> &progress) const {
    m_store.makeFolder();
    const QString unfinished = unfinishedPath(model.name);
    if (auto fetched = download(address, unfinished, progress); !fetched)
        return fetched;
    if (hashOf(unfinished, model.checksum.algorithm) != model.checksum.hex) {
        QFile::remove(unfinished);
        return failed(
            u"What came from %1 is not the model \"%2\" (another checksum). It was thrown away."_s.arg(
                address, model.name));
    }
    if (const auto checked = checkModelFile(unfinished); !checked) {
        QFile::remove(unfinished);
        return failed(checked.error());
    }
    return rename(unfinished, m_store.pathFor(model.name));
}

Result<QByteArray, QString> ModelInstaller::import(const QString &file, const QString &name) const {
    if (const auto checked = checkModelFile(file); !checked)
        return failed(checked.error());
    m_store.makeFolder();
    const QString unfinished = unfinishedPath(name);
    QFile::remove(unfinished);
    QFile source(file);
    const bool isCopied = source.copy(unfinished) &&
                          QFile::setPermissions(unfinished, QFile::ReadOwner | QFile::WriteOwner) &&
                          QFileInfo(unfinished).size() == source.size();
    if (!isCopied) {
        QFile::remove(unfinished);
        return failed(u"%1 could not be copied to %2: %3."_s.arg(file, unfinished, source.errorString()));
    }
    const QByteArray sha256 = hashOf(unfinished, QCryptographicHash::Sha256);
    if (const auto renamed = rename(unfinished, m_store.pathFor(name)); !renamed)
        return failed(renamed.error());
    return sha256;
}

Result<void, QString> ModelInstaller::remove(const QString &name) const {
    QFile::remove(unfinishedPath(name));
    QFile file(m_store.pathFor(name));
    if (!file.exists())
        return failed(u"There is no model \"%1\" in %2."_s.arg(name, m_store.ownFolder()));
    if (!file.remove())
        return failed(u"%1 cannot be removed: %2."_s.arg(file.fileName(), file.errorString()));
    return {};
}

} // namespace velmo::localservice
