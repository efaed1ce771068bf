// The pages of one device, without windows: reads one command a line from standard input, its words between tabs, and
// answers "<command> ok" or "<command> failed" when it is done. For tests that need a person at the pages.

#include "app/command_line/command_account.h"
#include "app/composition/core_parts.h"
#include "base/calendar.h"
#include "base/collation.h"
#include "base/log.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"
#include "service/wire/service_origin.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/undo_offer.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <unistd.h>

namespace velmo {

namespace {

class Pages {
public:
    explicit Pages(CoreParts &parts)
        : m_parts(parts), m_page{parts.preferences(), parts.preferenceWatch(), m_collation,
                                 parts.authManager(), parts.syncManager(),     m_undoOffer} {
        QObject::connect(&m_input, &QSocketNotifier::activated, &m_input, [this] { readCommand(); });
    }

private:
    void readCommand() {
        std::string line;
        if (std::getline(std::cin, line))
            run(QString::fromStdString(line).split(u'\t'));
        else
            QCoreApplication::quit();
    }

    void run(const QStringList &words) {
        const QString &command = words[0];
        if (command == u"add-word") {
            m_dictionary.setNewWord(words.value(1));
            m_dictionary.addWord();
        } else if (command == u"remove-word") {
            m_dictionary.removeWord(words.value(1));
        } else if (command == u"add-snippet") {
            m_snippets.add(words.value(1), words.value(2));
        } else if (command == u"sync") {
            m_parts.syncManager().syncAll([command](bool succeeded) { answer(command, succeeded); });
            return;
        } else if (command == u"idle") {
            m_parts.syncManager().whenIdle([command] { answer(command, true); });
            return;
        }
        answer(command, true);
    }

    static void answer(const QString &command, bool succeeded) {
        std::cout << command.toStdString() << (succeeded ? " ok" : " failed") << '\n' << std::flush;
    }

    CoreParts &m_parts;
    UndoOffer m_undoOffer{m_parts.mainQueue()};
    const Collation m_collation{Region::ofSession().locale};
    const ListPage m_page;
    DictionaryView m_dictionary{m_page};
    SnippetsView m_snippets{m_page};
    QSocketNotifier m_input{STDIN_FILENO, QSocketNotifier::Read};
};

} // namespace

} // namespace velmo

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    std::setvbuf(stdin, nullptr, _IONBF, 0); // what is read ahead would not wake the notifier
    velmo::setLogSink(velmo::descriptorLogSink(STDERR_FILENO));
    const auto origin = velmo::ServiceOrigin::ofThisRun();
    if (!origin)
        return 2;
    velmo::CoreParts parts(*origin);
    const velmo::CommandAccount account = parts.commandAccount();
    account.waitForSession();
    const velmo::Pages pages(parts);
    const int status = QCoreApplication::exec();
    account.waitForRequests();
    return status;
}
