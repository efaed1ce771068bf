#include "platform/linux/sndfile/sndfile_recording_files.h"

#include "support/small_disk.h"
#include "support/wave_file.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const std::vector<float> kTenthOfASecond(1600, 0.25F);

class SndfileRecordingFilesTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path() const { return directory.filePath(u"recording.wav"_s); }

    QTemporaryDir directory;
    std::unique_ptr<RecordingFiles> files = makeSndfileRecordingFiles();
};

TEST_F(SndfileRecordingFilesTest, WritesWaveThatOnlyItsOwnerReads) {
    {
        auto file = files->create(path());
        ASSERT_TRUE(file);
        EXPECT_TRUE((*file)->write(std::vector<float>{0.5F, -0.5F, 1.7F, -1.7F}));
    }
    const auto wave = testing::readWave(path());
    EXPECT_TRUE(wave.is16BitWave);
    EXPECT_EQ(wave.sampleRate, 16000);
    EXPECT_EQ(wave.channels, 1);
    ASSERT_EQ(wave.samples.size(), 4U);
    EXPECT_NEAR(wave.samples[1], -0.5F, 1e-4);
    EXPECT_NEAR(wave.samples[2], 1.0F, 1e-4) << "too loud is clipped, not wrapped";
    EXPECT_NEAR(wave.samples[3], -1.0F, 1e-4);
    EXPECT_EQ(QFile::permissions(path()),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
    EXPECT_EQ(QFileInfo(path()).size(), 44 + 8) << "a plain header";
}

/// Runs the work in a process of its own, up to the moment the system kills it.
template <class Work>
void inKilledProcess(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
}

TEST_F(SndfileRecordingFilesTest, LeavesAReadableFileWhenKilled) {
    inKilledProcess([this] {
        auto file = files->create(path());
        for (int i = 0; i < 5; ++i)
            (*file)->write(kTenthOfASecond);
    });
    EXPECT_EQ(testing::readWave(path()).samples.size(), 8000U);
    EXPECT_TRUE(files->removeIfAbandoned(path()));
    EXPECT_FALSE(QFileInfo::exists(path()));
}

TEST_F(SndfileRecordingFilesTest, SparesARecordingUntilItsProcessIsDoneWithIt) {
    const auto other = makeSndfileRecordingFiles();
    auto file = files->create(path());
    EXPECT_FALSE(other->removeIfAbandoned(path())) << "being written";
    file->reset();
    EXPECT_FALSE(other->removeIfAbandoned(path())) << "being uploaded";
    files->remove(path());
    EXPECT_FALSE(QFileInfo::exists(path()));
    EXPECT_TRUE(files->create(path())) << "the name is free again";
}

TEST_F(SndfileRecordingFilesTest, TakesNothingForARecordingThatIsNoFile) {
    const QString target = directory.filePath(u"target"_s);
    QFile(target).open(QIODevice::WriteOnly);
    const QString link = directory.filePath(u"link.wav"_s);
    ASSERT_TRUE(QFile::link(target, link));
    const QString pipe = directory.filePath(u"pipe.wav"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {link, pipe, directory.filePath(u"absent.wav"_s)})
        EXPECT_FALSE(files->removeIfAbandoned(path)) << path.toStdString();
    EXPECT_TRUE(QFileInfo::exists(target));
}

TEST_F(SndfileRecordingFilesTest, SaysWhyAFileCannotBeMade) {
    EXPECT_FALSE(files->create(directory.filePath(u"absent/recording.wav"_s)));
    ASSERT_TRUE(files->create(path()));
    EXPECT_FALSE(files->create(path())) << "no file is used twice";
}

TEST_F(SndfileRecordingFilesTest, LosesOnlyWhatDoesNotFitOnAFullDisk) {
    const testing::SmallDisk disk;
    if (!disk.isMounted())
        GTEST_SKIP() << "mounting takes root or user namespaces";
    const QString path = disk.path(u"recording.wav"_s);
    auto file = files->create(path);
    ASSERT_TRUE(file);
    EXPECT_TRUE((*file)->write(kTenthOfASecond));
    disk.fill();
    Result<void, RecordingFileFailure> written;
    for (int i = 0; i < 2 && written; ++i) // the first may fit into the last page
        written = (*file)->write(kTenthOfASecond);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().description, u"The disk is full."_s);

    const QString second = disk.path(u"second.wav"_s);
    const auto refused = files->create(second);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description, u"The disk is full."_s);
    EXPECT_FALSE(QFileInfo::exists(second));

    const auto before = testing::readWave(path).samples.size();
    EXPECT_GT(before, kTenthOfASecond.size());
    disk.empty();
    EXPECT_TRUE((*file)->write(kTenthOfASecond)) << "there is room again";
    file->reset();
    const auto after = testing::readWave(path).samples;
    EXPECT_EQ(after.size(), before + kTenthOfASecond.size());
    EXPECT_NEAR(testing::loudness(after), 0.25, 1e-3);
}

} // namespace

} // namespace velmo
