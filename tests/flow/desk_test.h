#pragma once

#include "flow/running_velmo.h"
#include "support/real_editor.h"

#include <QDir>
#include <gtest/gtest.h>

namespace velmo::testing {

/// A test at a desk, which all tests of a suite share. None of them leaves a recording behind.
class DeskTest : public ::testing::Test {
public:
    static void SetUpTestSuite() { desk = std::make_unique<Desk>(); }
    static void TearDownTestSuite() { desk.reset(); }

    /// Runs a Velmo of the test's own with that service.
    void startVelmo(const QString &serviceOrigin) {
        velmo = std::make_unique<RunningVelmo>(*desk, serviceOrigin, m_temporary.path());
    }

    [[nodiscard]] QStringList recordingFiles() const {
        return QDir(m_temporary.path()).entryList(QDir::Files);
    }

    /// Waits until the editor has that text; nothing else may press keys by then.
    static void expectText(RealEditor &editor, const QString &text) {
        EXPECT_TRUE(waitUntil([&editor] { return editor.isChanged(); })) << "nothing has come";
        EXPECT_TRUE(waitUntil([&editor] { return !editor.savedText().isEmpty() && !editor.isChanged(); }));
        const QString saved = editor.savedText();
        EXPECT_TRUE(saved == text || saved == text + u'\n') // some end the last line when they save
            << saved.toStdString();
    }

    inline static std::unique_ptr<Desk> desk;
    std::unique_ptr<RunningVelmo> velmo;

protected:
    void TearDown() override {
        velmo.reset();
        EXPECT_TRUE(recordingFiles().isEmpty());
    }

private:
    QTemporaryDir m_temporary;
};

} // namespace velmo::testing
