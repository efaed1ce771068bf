#include "localservice/models_command.h"

#include "base/json.h"
#include "localservice/download_display.h"
#include "localservice/models/model_installer.h"
#include "localservice/speech/language_names.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;
constexpr qint64 kMebibyte = 1024LL * 1024;

constexpr auto kUsage =
    "Usage: velmo-local-service models COMMAND\n"
    "\n"
    "  list [--json]                    speech models: those here, and those to be had\n"
    "  get NAME [--from ADDRESS]        download one, from its publisher or from elsewhere\n"
    "  import FILE [--as NAME]          take a file of your own\n"
    "  use NAME [--language CODE]       use it, for one language or for all\n"
    "  remove NAME                      throw it away\n"_L1;

void print(FILE *stream, const QString &line) {
    std::fputs((line + u'\n').toUtf8().constData(), stream);
    std::fflush(stream);
}

int failure(const QString &sentence) {
    print(stderr, sentence);
    return kFailure;
}

int wrongUsage(const QString &sentence) {
    print(stderr, sentence + u"\nTry 'velmo-local-service models --help'."_s);
    return kWrongUsage;
}

/// A line of the list.
struct Row {
    QString name;
    qint64 size = 0;
    QStringList languages;
    QString source;
    Checksum checksum;
    bool isInstalled = false;
    QStringList usedFor; ///< Languages; "" stands for all others.
};

QStringList usesOf(const QString &name, const ModelStore &store) {
    QStringList languages;
    for (const auto &[language, used] : store.used().toStdMap()) {
        if (used == name)
            languages.append(language);
    }
    const auto ordinary = store.modelFor({});
    if (ordinary && ordinary->name == name && !languages.contains(QString()))
        languages.prepend({});
    return languages;
}

std::vector<Row> rowsOf(const ModelStore &store) {
    std::vector<Row> rows;
    const auto installed = store.installed();
    for (const InstalledModel &model : installed) {
        Row row{model.name, QFileInfo(model.path).size(), {}, {}, {}, true, usesOf(model.name, store)};
        if (const auto known = catalogueModel(model.name)) {
            row.languages = known->languages;
            row.source = known->source;
            row.checksum = known->checksum;
        }
        rows.push_back(row);
    }
    for (const CatalogueModel &model : modelCatalogue()) {
        if (!store.find(model.name))
            rows.push_back(
                {model.name, model.size, model.languages, model.source, model.checksum, false, {}});
    }
    return rows;
}

QJsonObject objectOf(const Row &row) {
    const bool hasSha256 =
        row.checksum.algorithm == QCryptographicHash::Sha256 && !row.checksum.hex.isEmpty();
    return {{u"name"_s, row.name},
            {u"size"_s, row.size},
            {u"languages"_s, QJsonArray::fromStringList(row.languages)},
            {u"sha256"_s, hasSha256 ? QJsonValue(QString::fromLatin1(row.checksum.hex)) : QJsonValue()},
            {u"source"_s, row.source.isEmpty() ? QJsonValue() : QJsonValue(row.source)},
            {u"installed"_s, row.isInstalled},
            {u"used"_s, !row.usedFor.isEmpty()},
            {u"usedFor"_s, QJsonArray::fromStringList(row.usedFor)}};
}

QString stateOf(const Row &row) {
    if (!row.isInstalled)
        return row.checksum.hex.isEmpty() ? u"from "_s + row.source : u"to be had"_s;
    if (row.usedFor.isEmpty())
        return u"here"_s;
    QStringList languages = row.usedFor;
    languages.removeAll(QString());
    return languages.isEmpty() ? u"used"_s : u"used for "_s + languages.join(u", "_s);
}

int list(const ModelStore &store, bool asJson) {
    QJsonArray array;
    for (const Row &row : rowsOf(store)) {
        if (asJson)
            array.append(objectOf(row));
        else
            print(stdout, u"%1 %2 MiB  %3 %4"_s.arg(row.name, -20)
                              .arg(row.size / kMebibyte, 5)
                              .arg(row.languages.join(u' '), -18)
                              .arg(stateOf(row)));
    }
    if (asJson)
        print(stdout, QString::fromUtf8(json::compact(array)));
    return 0;
}

/// From an address: of the file itself, or of the folder in which it has its usual name.
QString addressFor(const CatalogueModel &model, const QString &from) {
    if (from.isEmpty())
        return model.source;
    return from.endsWith(u'/') ? u"%1ggml-%2.bin"_s.arg(from, model.name) : from;
}

int get(const ModelStore &store, const QString &name, const QString &from) {
    const auto model = catalogueModel(name);
    if (!model)
        return failure(u"There is no model \"%1\" in the catalogue. 'models list' names those there are; a "
                       u"file of your own is "
                       "taken by 'models import'."_s.arg(name));
    if (!model->canBeDownloaded())
        return failure(u"The checksum of \"%1\" is not known here, so it is not fetched for you. Its "
                       u"publisher has it at %2; "
                       "download its \"ggml\" file there, and take it by 'models import FILE --as %1'."_s.arg(
                           name, model->source));
    DownloadDisplay display(name);
    const auto got = ModelInstaller(store).get(*model, addressFor(*model, from),
                                               [&display](const DownloadProgress &progress) {
                                                   display.show(progress);
                                                   return true;
                                               });
    display.end();
    if (!got)
        return failure(got.error());
    print(stdout, u"The model \"%1\" is there."_s.arg(name));
    return 0;
}

/// "ggml-mine.bin": "mine".
QString nameOfFile(const QString &file) {
    QString name = QFileInfo(file).completeBaseName().toLower();
    if (name.startsWith(u"ggml-"))
        name.remove(0, 5);
    return name;
}

int import(const ModelStore &store, const QString &file, const QString &as) {
    const QString name = as.isEmpty() ? nameOfFile(file) : as;
    if (!isModelName(name))
        return wrongUsage(
            u"'%1' is no name for a model: small letters, digits, points and hyphens. Choose one with --as."_s
                .arg(name));
    const auto sha256 = ModelInstaller(store).import(file, name);
    if (!sha256)
        return failure(sha256.error());
    print(stdout, u"The model \"%1\" is there (not in the catalogue; SHA-256 %2)."_s.arg(
                      name, QString::fromLatin1(*sha256)));
    return 0;
}

int use(const ModelStore &store, const QString &name, const QString &written) {
    const QString language = languageCode(written).value_or(QString());
    if (language.isEmpty() && !written.isEmpty())
        return wrongUsage(u"'%1' is no language."_s.arg(written));
    if (!store.find(name))
        return failure(u"There is no model \"%1\" here. Get it with 'models get %1'."_s.arg(name));
    if (const auto used = store.use(name, language); !used)
        return failure(used.error());
    print(stdout, language.isEmpty() ? u"\"%1\" is used."_s.arg(name)
                                     : u"\"%1\" is used for the language %2."_s.arg(name, language));
    return 0;
}

int remove(const ModelStore &store, const QString &name) {
    if (const auto removed = ModelInstaller(store).remove(name); !removed)
        return failure(removed.error());
    for (const auto &[language, used] : store.used().toStdMap()) {
        if (used == name)
            static_cast<void>(store.use({}, language));
    }
    print(stdout, u"The model \"%1\" is removed."_s.arg(name));
    return 0;
}

/// The words of a command: its options, and what they apply to.
struct Words {
    QCommandLineParser line;
    QCommandLineOption help{{u"help"_s, u"h"_s}};
    QCommandLineOption json{u"json"_s};
    QCommandLineOption from{u"from"_s, {}, u"address"_s};
    QCommandLineOption as{u"as"_s, {}, u"name"_s};
    QCommandLineOption language{u"language"_s, {}, u"code"_s};

    Words() { line.addOptions({help, json, from, as, language}); }
};

} // namespace

int runModelsCommand(const QStringList &arguments, const ModelStore &store) {
    Words words;
    if (!words.line.parse(QStringList(QString()) + arguments))
        return wrongUsage(words.line.errorText());
    const QStringList positional = words.line.positionalArguments();
    if (words.line.isSet(words.help)) {
        print(stdout, QString(kUsage).trimmed());
        return 0;
    }
    const QString command = positional.value(0);
    if (command == u"list" && positional.size() == 1)
        return list(store, words.line.isSet(words.json));
    if (positional.size() != 2)
        return wrongUsage(command.isEmpty() ? u"A command is missing."_s
                                            : u"'models %1' takes one name."_s.arg(command));
    if (command == u"get")
        return get(store, positional[1], words.line.value(words.from));
    if (command == u"import")
        return import(store, positional[1], words.line.value(words.as));
    if (command == u"use")
        return use(store, positional[1], words.line.value(words.language));
    if (command == u"remove")
        return remove(store, positional[1]);
    return wrongUsage(u"There is no command '%1'."_s.arg(command));
}

} // namespace velmo::localservice
