#include "app/command_line/command_options.h"

#include "app/process/exit_status.h"
#include "app/process/output.h"

using namespace Qt::StringLiterals;

namespace velmo {

CommandOptions::CommandOptions(const CommandWords &words) : m_words(words) {
    m_parser.setApplicationDescription(QString(words.summary));
    // A file whose name begins with a dash is one wrong option, not one for each of its letters.
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOption({{u"h"_s, u"help"_s}, u"Show this help."_s});
}

std::optional<int> CommandOptions::read(const QStringList &arguments) {
    const QString program = u"velmo "_s + m_words.name;
    if (!m_parser.parse(QStringList{program} + arguments))
        return usageError(complaintAbout(arguments));
    if (!m_parser.isSet(u"help"_s))
        return std::nullopt;
    // Without declared operands Qt writes a usage line of its own; the command's is put in its place.
    QString help = m_parser.helpText();
    help.replace(0, help.indexOf(u'\n'), u"Usage: %1 %2"_s.arg(program, QString(m_words.usage)).trimmed());
    print(help);
    return exit_status::success;
}

/// Names an unknown option as it was typed; the parser knows it without its dashes.
QString CommandOptions::complaintAbout(const QStringList &arguments) const {
    const QString unknown = m_parser.unknownOptionNames().value(0);
    if (unknown.isEmpty())
        return m_parser.errorText();
    for (const QString &argument : arguments) {
        const QString name = argument.section(u'=', 0, 0);
        if (name == u"--"_s + unknown || name == u'-' + unknown)
            return u"unknown option '%1'"_s.arg(argument);
    }
    return m_parser.errorText();
}

std::optional<int> CommandOptions::readOptionsAlone(const QStringList &arguments) {
    const auto status = read(arguments);
    if (status || operands().isEmpty())
        return status;
    return usageError(u"unexpected argument '%1'"_s.arg(operands().first()));
}

int CommandOptions::usageError(const QString &message) const {
    printError(u"velmo %1: %2\nTry 'velmo %1 --help'."_s.arg(QString(m_words.name), message));
    return exit_status::usage;
}

} // namespace velmo
