#include "localservice/models/model_store.h"

#include "base/json.h"
#include "store/private_files.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// When nothing is said: what understands most at a speed that suits every machine comes first.
constexpr std::array kOrder = {"base"_L1, "small"_L1, "tiny"_L1, "medium"_L1, "large-v3-turbo"_L1};

size_t rank(const InstalledModel &model) {
    const auto found = std::find(kOrder.begin(), kOrder.end(), model.name);
    return static_cast<size_t>(found - kOrder.begin());
}

} // namespace

bool isModelName(const QString &name) {
    static const QRegularExpression form(u"\\A[a-z0-9][a-z0-9._-]{0,63}\\z"_s);
    return form.match(name).hasMatch();
}

ModelStore::ModelStore(QString ownFolder, QStringList furtherFolders)
    : m_ownFolder(std::move(ownFolder)), m_furtherFolders(std::move(furtherFolders)) {}

QString ModelStore::pathFor(const QString &name) const {
    return u"%1/ggml-%2.bin"_s.arg(m_ownFolder, name);
}

void ModelStore::makeFolder() const {
    makePrivateDirectories(QFile::encodeName(m_ownFolder));
}

QList<InstalledModel> ModelStore::installed() const {
    static const QRegularExpression form(u"\\Aggml-(.+)\\.bin\\z"_s);
    QList<InstalledModel> models;
    for (const QString &folder : QStringList(m_ownFolder) + m_furtherFolders) {
        for (const QFileInfo &file : QDir(folder).entryInfoList({u"ggml-*.bin"_s}, QDir::Files, QDir::Name)) {
            const QString name = form.match(file.fileName()).captured(1);
            const auto isSame = [&](const InstalledModel &other) { return other.name == name; };
            if (isModelName(name) && std::none_of(models.begin(), models.end(), isSame))
                models.append({name, file.absoluteFilePath()});
        }
    }
    std::stable_sort(
        models.begin(), models.end(),
        [](const InstalledModel &one, const InstalledModel &other) { return rank(one) < rank(other); });
    return models;
}

std::optional<InstalledModel> ModelStore::find(const QString &name) const {
    for (const InstalledModel &model : installed()) {
        if (model.name == name)
            return model;
    }
    return std::nullopt;
}

Result<InstalledModel, QString> ModelStore::modelFor(const QString &language) const {
    const auto told = used();
    const QString name = told.value(language, told.value(QString()));
    const auto models = installed();
    if (name.isEmpty() && !models.isEmpty())
        return models.first();
    if (const auto model = find(name))
        return *model;
    const QString get = u"'velmo-local-service models get %1'"_s;
    if (name.isEmpty())
        return failed(u"There is no speech model any more. Get one with %1."_s.arg(get.arg(u"base"_s)));
    return failed(u"The speech model \"%1\" is not there any more. Get it again with %2, or use another with "
                  "'velmo-local-service models use'."_s.arg(name, get.arg(name)));
}

QMap<QString, QString> ModelStore::used() const {
    QFile file(m_ownFolder + u"/used.json"_s);
    QMap<QString, QString> names;
    if (!file.open(QIODevice::ReadOnly))
        return names;
    const QJsonObject object = json::object(file.readAll()).value_or(QJsonObject());
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        names.insert(entry.key(), entry.value().toString());
    return names;
}

Result<void, QString> ModelStore::use(const QString &name, const QString &language) const {
    makeFolder();
    QJsonObject object;
    const auto told = used();
    for (auto entry = told.begin(); entry != told.end(); ++entry)
        object.insert(entry.key(), entry.value());
    if (name.isEmpty())
        object.remove(language);
    else
        object.insert(language, name);
    QSaveFile file(m_ownFolder + u"/used.json"_s);
    file.open(QIODevice::WriteOnly);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(json::compact(object));
    if (!file.commit())
        return failed(u"%1 cannot be written: %2."_s.arg(file.fileName(), file.errorString()));
    return {};
}

} // namespace velmo::localservice
