#pragma once

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A line of the main window's sidebar.
struct SidebarItem {
    Q_GADGET
    QML_VALUE_TYPE(sidebarItem)
    Q_PROPERTY(int page MEMBER page)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbolName MEMBER symbolName)

public:
    int page = 0; ///< A MainWindowView::SidebarPage.
    QString title;
    QString symbolName;
};

/// The main window's frame: which pages there are and which one is shown. Main thread.
class MainWindowView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(int selectedPage READ selectedPage WRITE selectPage NOTIFY selectedPageChanged)
    Q_PROPERTY(QList<velmo::SidebarItem> mainPages READ mainPages CONSTANT)
    Q_PROPERTY(QList<velmo::SidebarItem> lowerPages READ lowerPages CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    Q_PROPERTY(bool showClosingNotice READ showClosingNotice NOTIFY showClosingNoticeChanged)

public:
    enum SidebarPage { Home, Dictionary, Snippets, Mode, Notes, Account, Settings, Speech };
    Q_ENUM(SidebarPage)

    /// @param version the application's, "1.0.0".
    explicit MainWindowView(QString version);

    [[nodiscard]] int selectedPage() const { return m_selectedPage; }
    /// Numbers that are no page are passed over.
    void selectPage(int page);

    /// The upper and the lower group of the sidebar.
    [[nodiscard]] static QList<SidebarItem> mainPages();
    [[nodiscard]] static QList<SidebarItem> lowerPages();

    [[nodiscard]] QString versionText() const { return u'v' + m_version; }

    /// Whether the person is being told how to come back, before the window closes.
    [[nodiscard]] bool showClosingNotice() const { return m_showClosingNotice; }
    void openClosingNotice();
    /// The person has read it.
    Q_INVOKABLE void dismissClosingNotice();

Q_SIGNALS:
    void selectedPageChanged();
    void showClosingNoticeChanged();
    void closingNoticeRead();

private:
    QString m_version;
    int m_selectedPage = Home;
    bool m_showClosingNotice = false;
};

} // namespace velmo
