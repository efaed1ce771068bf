#pragma once

#include <QQmlEngine>
#include <QString>
#include <functional>

class QQuickWindow;

namespace velmo::screenshots {

/// Where a scene is played and photographed.
class Stage {
public:
    /// Pictures go to that folder, which exists.
    explicit Stage(QString folder);

    [[nodiscard]] QQmlEngine &engine() { return m_engine; }

    /// Lets animations and bindings come to rest, then writes FOLDER/name.png in device pixels.
    void photograph(QQuickWindow &window, const QString &name);

    /// Runs the event loop for a while, for what takes time.
    static void wait(int milliseconds);

    [[nodiscard]] bool succeeded() const { return m_succeeded; }

private:
    QQmlEngine m_engine;
    QString m_folder;
    bool m_succeeded = true;
};

/// What is played on the stage: sets up a state of the interface and photographs it.
struct Scene {
    QString name;
    std::function<void(Stage &)> play;
};

// One function a file.
[[nodiscard]] QList<Scene> accountScenes();
[[nodiscard]] QList<Scene> controlScenes();
[[nodiscard]] QList<Scene> floatingScenes();
[[nodiscard]] QList<Scene> modeScenes();
[[nodiscard]] QList<Scene> onboardingScenes();
[[nodiscard]] QList<Scene> settingsScenes();
[[nodiscard]] QList<Scene> speechScenes();
[[nodiscard]] QList<Scene> windowScenes();

} // namespace velmo::screenshots
