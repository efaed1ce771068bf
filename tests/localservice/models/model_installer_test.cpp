#include "localservice/models/model_installer.h"

#include "localservice/models/small_model.h"
#include "support/files.h"
#include "support/scripted_server.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using velmo::testing::Reaction;
using velmo::testing::ScriptedServer;

const QByteArray kPath = "/ggml-tiny.bin";

class Models : public ::testing::Test {
protected:
    /// What "tiny" comes to is the small model.
    Models() { m_tiny.checksum.hex = QCryptographicHash::hash(m_bytes, QCryptographicHash::Sha256).toHex(); }

    QString get() {
        const auto got = m_installer.get(m_tiny, m_server.origin() + QString::fromLatin1(kPath),
                                         [this](const DownloadProgress &progress) {
                                             m_last = progress;
                                             return !m_isCancelled;
                                         });
        return got ? QString() : got.error();
    }

    [[nodiscard]] QStringList files() const {
        return QDir(m_store.ownFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    Reaction reaction(const QByteArray &head, const QByteArray &body) {
        return {"HTTP/1.1 " + head + "\r\nContent-Length: " + QByteArray::number(m_bytes.size()) +
                    "\r\n\r\n" + body,
                Reaction::Then::Close};
    }

    const QTemporaryDir m_directory;
    const ModelStore m_store{m_directory.filePath(u"data/models"_s), {m_directory.filePath(u"others"_s)}};
    const ModelInstaller m_installer{m_store};
    const QByteArray m_bytes = testing::SmallModel().bytes();
    CatalogueModel m_tiny{u"tiny"_s, 0, {}, {}, {}};
    ScriptedServer m_server;
    DownloadProgress m_last;
    bool m_isCancelled = false;
};

} // namespace

TEST_F(Models, GoOnWhereADownloadWasCutOff) {
    const qsizetype half = m_bytes.size() / 2;
    m_server.react(kPath, {reaction("200 OK", m_bytes.first(half))});
    EXPECT_TRUE(get().contains(u"it goes on"));
    EXPECT_EQ(files(), QStringList(u"ggml-tiny.bin.part"_s));
    EXPECT_TRUE(m_store.installed().isEmpty());

    m_server.react(kPath, {{"HTTP/1.1 206 Partial Content\r\nContent-Length: " +
                                QByteArray::number(m_bytes.size() - half) + "\r\n\r\n" + m_bytes.sliced(half),
                            Reaction::Then::Close}});
    EXPECT_EQ(get(), QString());
    EXPECT_EQ(m_server.requests().back().header("Range"), "bytes=" + QByteArray::number(half) + '-');
    EXPECT_EQ(m_last.received, m_bytes.size());
    EXPECT_EQ(m_last.total, m_bytes.size());
    EXPECT_EQ(velmo::testing::contentOf(m_store.pathFor(u"tiny"_s)), m_bytes);
    EXPECT_EQ(files(), QStringList(u"ggml-tiny.bin"_s));

    struct stat facts {};
    ::stat(QFile::encodeName(m_store.pathFor(u"tiny"_s)).constData(), &facts);
    EXPECT_EQ(facts.st_mode & 0777, 0600U);
    ::stat(QFile::encodeName(m_store.ownFolder()).constData(), &facts);
    EXPECT_EQ(facts.st_mode & 0777, 0700U);
}

TEST_F(Models, KeepNothingThatIsNotWhatItShouldBe) {
    m_server.react(kPath, {reaction("200 OK", QByteArray(m_bytes.size(), 'x'))});
    EXPECT_TRUE(get().contains(u"another checksum"));
    m_server.answer(kPath, 404, "<html>");
    EXPECT_TRUE(get().contains(u"404"));
    m_server.react(kPath, {reaction("200 OK", "half")});
    m_isCancelled = true;
    EXPECT_TRUE(get().contains(u"cancelled"));
    m_isCancelled = false;
    m_tiny.checksum.hex = QCryptographicHash::hash("no model", QCryptographicHash::Sha256).toHex();
    QFile::remove(m_store.pathFor(u"tiny"_s) + u".part"_s);
    m_server.answer(kPath, 200, "no model");
    EXPECT_TRUE(get().contains(u"no speech model"));
    EXPECT_TRUE(m_store.installed().isEmpty());

    m_server.react(kPath,
                   {{"HTTP/1.1 200 OK\r\nContent-Length: 999999999999999\r\n\r\nx", Reaction::Then::Hold}});
    EXPECT_TRUE(get().contains(u"disk"));
    EXPECT_FALSE(m_installer.import(u"/proc/self/status"_s, u"mine"_s));
    EXPECT_TRUE(m_store.installed().isEmpty());
}

TEST_F(Models, AreUsedByLanguageAndSaidToBeGone) {
    EXPECT_TRUE(m_store.modelFor(u"sv"_s).error().contains(u"models get base"));
    const QString file = m_directory.filePath(u"mine"_s);
    velmo::testing::writeFile(file, m_bytes);
    for (const auto &name : {u"mine"_s, u"tiny"_s, u"base"_s})
        EXPECT_EQ(m_installer.import(file, name).value_or(QByteArray()), m_tiny.checksum.hex);

    EXPECT_EQ(m_store.modelFor(u"sv"_s)->name, u"base"_s);
    ASSERT_TRUE(m_store.use(u"tiny"_s, {}));
    ASSERT_TRUE(m_store.use(u"mine"_s, u"sv"_s));
    EXPECT_EQ(m_store.modelFor(u"sv"_s)->name, u"mine"_s);
    EXPECT_EQ(m_store.modelFor(u"fi"_s)->name, u"tiny"_s);

    ASSERT_TRUE(m_installer.remove(u"tiny"_s));
    EXPECT_TRUE(m_store.modelFor(u"fi"_s).error().contains(u"\"tiny\" is not there any more"));
    EXPECT_FALSE(m_installer.remove(u"tiny"_s));
}

} // namespace velmo::localservice
