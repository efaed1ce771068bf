#include "localservice/models/model_catalogue.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr qint64 kMebibyte = 1024LL * 1024;

CatalogueModel general(const QString &name, qint64 mebibytes, const Checksum &checksum) {
    return {name, mebibytes * kMebibyte, velmoLanguages(),
            u"https://huggingface.co/ggerganov/whisper.cpp/resolve/main/ggml-%1.bin"_s.arg(name), checksum};
}

/// Of the national libraries of Norway and Sweden, who have trained them on their own collections.
CatalogueModel norwegian(const QString &size, qint64 mebibytes) {
    return {u"nb-whisper-"_s + size,
            mebibytes * kMebibyte,
            {u"no"_s, u"nn"_s, u"en"_s},
            u"https://huggingface.co/NbAiLab/nb-whisper-"_s + size,
            {},
            u"the National Library of Norway"_s};
}

CatalogueModel swedish(const QString &size, qint64 mebibytes) {
    return {u"kb-whisper-"_s + size,
            mebibytes * kMebibyte,
            {u"sv"_s},
            u"https://huggingface.co/KBLab/kb-whisper-"_s + size,
            {},
            u"the National Library of Sweden"_s};
}

Checksum sha1(const char *hex) {
    return {QCryptographicHash::Sha1, hex};
}

} // namespace

const QStringList &velmoLanguages() {
    static const QStringList languages = {u"no"_s, u"nn"_s, u"sv"_s, u"da"_s, u"fi"_s, u"en"_s};
    return languages;
}

const std::vector<CatalogueModel> &modelCatalogue() {
    static const std::vector<CatalogueModel> models = {
        general(u"tiny"_s, 75, sha1("bd577a113a864445d4c299885e0cb97d4ba92b5f")),
        general(
            u"base"_s, 142,
            {QCryptographicHash::Sha256, "60ed5bc3dd14eea856493d334349b405782ddcaf0028d4b5df4088345fba2efe"}),
        general(u"small"_s, 466, sha1("55356645c2b361a969dfd0ef2c5a50d530afd8d5")),
        general(u"large-v3-turbo-q5_0"_s, 547, sha1("e050f7970618a659205450ad97eb95a18d69c9ee")),
        general(u"medium"_s, 1530, sha1("fd9727b6e1217c2f614f9b698455c4ffd82463b4")),
        general(u"large-v3-turbo"_s, 1550, sha1("4af2b29d7ec73d781377bfd1758ca957a807e941")),
        norwegian(u"tiny"_s, 75),
        norwegian(u"base"_s, 142),
        norwegian(u"small"_s, 466),
        norwegian(u"medium"_s, 1530),
        norwegian(u"large"_s, 2950),
        swedish(u"tiny"_s, 75),
        swedish(u"base"_s, 142),
        swedish(u"small"_s, 466),
        swedish(u"medium"_s, 1530),
        swedish(u"large"_s, 2950),
    };
    return models;
}

std::optional<CatalogueModel> catalogueModel(const QString &name) {
    const auto &models = modelCatalogue();
    const auto found = std::find_if(models.begin(), models.end(),
                                    [&name](const CatalogueModel &model) { return model.name == name; });
    return found == models.end() ? std::nullopt : std::optional(*found);
}

} // namespace velmo::localservice
